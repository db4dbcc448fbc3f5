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

}  // namespace

DiskCache::DiskCache(QString folder, qint64 mostBytes, QObject* parent)
    : QObject(parent),
      folder_(std::move(folder)),
      mostBytes_(mostBytes),
      worker_(std::make_unique<QThreadPool>()) {
  worker_->setMaxThreadCount(1);
}

DiskCache::~DiskCache() {
  LetGo(worker_);
}

void DiskCache::Read(const QString& link, std::function<void(QByteArray)> deliver) {
  RunOnWorker(
      *worker_, this, [folder = CacheFolder(folder_), link] { return folder.Read(link); },
      std::move(deliver));
}

void DiskCache::Keep(const QString& link, const QByteArray& bytes, std::function<void(bool)> deliver) {
  RunOnWorker(
      *worker_, this,
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
  Run([folder = CacheFolder(folder_)] { return folder.Shrink(0); });
}

void DiskCache::Count() {
  Run([folder = CacheFolder(folder_), most = mostBytes_] { return folder.Shrink(most); });
}

QByteArray DiskCache::ReadNow(const QString& link) const {
  return HasFolder() ? CacheFolder(folder_).Read(link) : QByteArray();
}

void DiskCache::Run(std::function<qint64()> work) {
  if (!HasFolder()) return;
  RunOnWorker(*worker_, this, std::move(work), [this](qint64 bytes) { emit Counted(bytes); });
}

}  // namespace quillet
