#include "app/page/background_picture.h"

#include <mutex>
#include <new>
#include <utility>

namespace quillet {
namespace {

constexpr int kPatienceMs = 2000;
// A second one works for the newer source while the first is held by a slow disk.
constexpr int kWorkers = 2;

// For the user, in his language; empty where the file is there.
QString ReasonOf(const FetchedFile& file, const FetchLimits& limits) {
  switch (file.fault) {
    case PictureFault::kNone:
      return file.IsPage() ? u"這是網頁的網址，不是圖片的網址。"_qs : QString();
    case PictureFault::kHostNotFound:
      return u"找不到主機 %1。"_qs.arg(file.address.host());
    case PictureFault::kRefused:
      return u"主機拒絕連線。"_qs;
    case PictureFault::kNotSecure:
      return u"無法和主機建立安全的連線。"_qs;
    case PictureFault::kLessSecure:
      return u"網址轉到不安全的地方。"_qs;
    case PictureFault::kTooManyRedirects:
      return u"網址一再轉到別的地方。"_qs;
    case PictureFault::kTooSlow:
      return u"等太久了，圖片沒有送完。"_qs;
    case PictureFault::kCutShort:
      return u"連線在圖片送完以前就斷了。"_qs;
    case PictureFault::kAnsweredWithError:
      return u"主機回應 %1，沒有圖片。"_qs.arg(file.status);
    case PictureFault::kEmpty:
      return u"主機沒有送來圖片。"_qs;
    case PictureFault::kTooManyBytes:
      return u"圖片超過 %1 MB。"_qs.arg(limits.bytes >> 20);
    default:
      return u"下載失敗：%1"_qs.arg(file.detail);
  }
}

}  // namespace

// What a worker and the object share: a result is delivered only while there is somebody to take it.
struct BackgroundPicture::Task {
  std::mutex mutex;
  BackgroundPicture* owner = nullptr;
  std::atomic<bool> dropped{false};
};

BackgroundPicture::BackgroundPicture(QObject* parent, const FetchLimits& limits)
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
  if (!web_) web_ = std::make_unique<WebClient>(Reach::kAnyHost);
  download_ = std::make_unique<FileFetch>(*web_, url, FileNeeds{limits_, 0, {}});
  connect(download_.get(), &FileFetch::Done, this, [this](const FetchedFile& file) {
    const QString reason = ReasonOf(file, limits_);
    if (!reason.isEmpty()) return Deliver(task_, {{}, reason});
    Decode([bytes = file.bytes](const std::atomic<bool>& dropped) {
      return DecodePictureBytes(bytes, dropped);
    });
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
