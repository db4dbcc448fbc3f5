#include "media/fetch/disk_cache.h"

#include <utility>

#include "media/fetch/cache_folder.h"
#include "media/fetch/worker_run.h"

namespace quillet {
namespace {

struct Kept {
  bool isKept = false;
  qint64 total = 0;
};

std::unique_ptr<QThreadPool> OneWorker() {
  auto pool = std::make_unique<QThreadPool>();
  pool->setMaxThreadCount(1);
  return pool;
}

}  // namespace

DiskCache::DiskCache(QString folder, qint64 mostBytes, QObject* parent)
    : QObject(parent),
      folder_(std::move(folder)),
      mostBytes_(mostBytes),
      reader_(OneWorker()),
      writer_(OneWorker()) {}

DiskCache::~DiskCache() {
  LetGo(reader_);
  LetGo(writer_);
}

void DiskCache::Read(const QString& link, std::function<void(QByteArray)> deliver) {
  RunOnWorker(
      *reader_, this, [folder = CacheFolder(folder_), link] { return folder.Read(link); },
      std::move(deliver));
}

void DiskCache::Keep(const QString& link, const QByteArray& bytes, std::function<void(bool)> deliver) {
  RunOnWorker(
      *writer_, this,
      [folder = CacheFolder(folder_), most = mostBytes_, link, bytes] {
        const bool isKept = bytes.size() < most && folder.Write(link, bytes);
        return Kept{isKept, isKept ? folder.Shrink(most) : 0};
      },
      [this, deliver = std::move(deliver)](const Kept& kept) {
        hasFailed_ = !kept.isKept;
        if (kept.isKept) emit Counted(kept.total);
        deliver(kept.isKept);
      });
}

void DiskCache::Empty() {
  Change([folder = CacheFolder(folder_)] { return folder.Shrink(0); });
}

void DiskCache::Count() {
  Change([folder = CacheFolder(folder_), most = mostBytes_] { return folder.Shrink(most); });
}

QByteArray DiskCache::ReadNow(const QString& link) const {
  return HasFolder() ? CacheFolder(folder_).Read(link) : QByteArray();
}

void DiskCache::Change(std::function<qint64()> work) {
  if (!HasFolder()) return;
  RunOnWorker(*writer_, this, std::move(work), [this](qint64 bytes) { emit Counted(bytes); });
}

}  // namespace quillet
