#include "app/page/background_picture.h"

#include <mutex>
#include <new>
#include <utility>

namespace quillet {
namespace {

constexpr int kPatienceMs = 2000;
// A second one works for the newer source while the first is held by a slow disk.
constexpr int kWorkers = 2;

}  // namespace

// What a worker and the object share: a result is delivered only while there is somebody to take it.
struct BackgroundPicture::Task {
  std::mutex mutex;
  BackgroundPicture* owner = nullptr;
  std::atomic<bool> dropped{false};
};

BackgroundPicture::BackgroundPicture(QObject* parent, const DownloadLimits& limits)
    : QObject(parent), limits_(limits), workers_(std::make_unique<QThreadPool>()) {
  workers_->setMaxThreadCount(kWorkers);
}

BackgroundPicture::~BackgroundPicture() {
  Drop();
  if (!workers_->waitForDone(kPatienceMs)) static_cast<void>(workers_.release());
}

void BackgroundPicture::SetSource(const QString& source) {
  if (source == source_) return;
  Drop();
  source_ = source;
  picture_ = {};
  if (source.isEmpty()) return;
  task_ = std::make_shared<Task>();
  task_->owner = this;
  const QString address = source.trimmed();
  if (address.startsWith(u"http://", Qt::CaseInsensitive) ||
      address.startsWith(u"https://", Qt::CaseInsensitive))
    Download(address);
  else
    Decode([source](const std::atomic<bool>& dropped) { return DecodePictureFile(source, dropped); });
}

void BackgroundPicture::Drop() {
  download_.reset();
  if (!task_) return;
  task_->dropped = true;
  const std::lock_guard lock(task_->mutex);
  task_->owner = nullptr;
}

void BackgroundPicture::Download(const QString& address) {
  const QUrl url(address);
  if (!url.isValid() || url.host().isEmpty()) {
    Deliver(task_, {{}, u"網址寫得不對。"_qs});
    return;
  }
  if (!network_) network_ = std::make_unique<QNetworkAccessManager>();
  download_ = std::make_unique<PictureDownload>(*network_, url, limits_);
  connect(
      download_.get(), &PictureDownload::Done, this, [this](const QByteArray& bytes, const QString& problem) {
        if (!problem.isEmpty())
          Deliver(task_, {{}, problem});
        else
          Decode([bytes](const std::atomic<bool>& dropped) { return DecodePictureBytes(bytes, dropped); });
      });
}

void BackgroundPicture::Decode(Work work) {
  workers_->start([task = task_, work = std::move(work)] {
    if (task->dropped) return;
    try {
      Deliver(task, work(task->dropped));
    } catch (const std::bad_alloc&) {
      Deliver(task, {{}, u"記憶體不夠。"_qs});
    }
  });
}

void BackgroundPicture::Deliver(const std::shared_ptr<Task>& task, const DecodedPicture& result) {
  const std::lock_guard lock(task->mutex);
  if (task->owner == nullptr) return;
  QMetaObject::invokeMethod(
      task->owner, [owner = task->owner, task, result] { owner->Accept(task, result); },
      Qt::QueuedConnection);
}

void BackgroundPicture::Accept(const std::shared_ptr<Task>& task, const DecodedPicture& result) {
  if (task != task_) return;
  task_.reset();
  picture_ = result.image;
  if (picture_.isNull())
    emit Failed(QString(source_), result.problem);
  else
    emit Loaded();
}

}  // namespace quillet
