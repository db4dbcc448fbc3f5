#include "media/fetch/file_fetch.h"

#include <algorithm>
#include <utility>

#include "media/fetch/picture_header.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

constexpr qint64 kReadBuffer = 1 << 20;
constexpr int kFirstStatusWithoutFile = 300;

bool IsAsSafe(const QUrl& from, const QUrl& target) {
  return target.scheme() == u"https" || (target.scheme() == u"http" && from.scheme() == u"http");
}

// Where the peer closes in the middle, the toolkit may say that all is well. What comes in chunks has no
// length to hold it against; nothing unpacks itself, see WebClient.
bool IsCutShort(const QNetworkReply& reply, qint64 count) {
  if (reply.hasRawHeader("Transfer-Encoding")) return false;
  const QVariant announced = reply.header(QNetworkRequest::ContentLengthHeader);
  return announced.isValid() && count < announced.toLongLong();
}

PictureFault FaultOf(const QNetworkReply& reply, int status) {
  switch (reply.error()) {
    case QNetworkReply::HostNotFoundError:
      return PictureFault::kHostNotFound;
    case QNetworkReply::ConnectionRefusedError:
      return PictureFault::kRefused;
    case QNetworkReply::RemoteHostClosedError:
      return PictureFault::kCutShort;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError:
      return PictureFault::kTooSlow;
    case QNetworkReply::SslHandshakeFailedError:
      return PictureFault::kNotSecure;
    default:
      return status >= kFirstStatusWithoutFile ? PictureFault::kAnsweredWithError : PictureFault::kNetwork;
  }
}

}  // namespace

QUrl OpenableUrl(std::u16string_view address) {
  const std::string openable = OpenableAddress(address);
  return openable.empty() ? QUrl() : QUrl(QString::fromStdString(openable), QUrl::StrictMode);
}

bool FetchedFile::IsPage() const {
  return type.startsWith("text/html") || type.startsWith("application/xhtml+xml");
}

FileFetch::FileFetch(WebClient& web, const QUrl& address, FileNeeds needs, QObject* parent)
    : QObject(parent), web_(web), needs_(std::move(needs)) {
  deadline_.setSingleShot(true);
  connect(&deadline_, &QTimer::timeout, this, [this] { Stop(PictureFault::kTooSlow); });
  deadline_.start(needs_.limits.totalMs);
  Get(address);
}

FileFetch::~FileFetch() {
  reply_->disconnect(this);
  reply_->abort();
}

void FileFetch::Get(const QUrl& address) {
  file_ = {};
  file_.address = address;
  expected_ = 0;
  reply_ = web_.Get(address, needs_.limits.silenceMs);
  reply_->setParent(this);
  reply_->setReadBufferSize(kReadBuffer);
  connect(reply_, &QNetworkReply::readyRead, this, &FileFetch::Collect);
  connect(reply_, &QNetworkReply::finished, this, &FileFetch::Finish);
}

void FileFetch::Collect() {
  file_.status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  file_.type = reply_->header(QNetworkRequest::ContentTypeHeader).toByteArray().toLower();
  const qint64 announced = reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong();
  if (file_.bytes.isEmpty() && announced > 0 && announced <= needs_.limits.bytes)
    file_.bytes.reserve(announced);
  file_.bytes += reply_->readAll();
  if (IsCutAsPage()) {
    if (file_.bytes.size() < needs_.pageBytes) return;
    file_.bytes.truncate(needs_.pageBytes);
    return Stop(PictureFault::kNone);
  }
  if (std::max<qint64>(announced, file_.bytes.size()) > needs_.limits.bytes)
    return Stop(PictureFault::kTooManyBytes);
  expected_ = announced;
  if (file_.status < kFirstStatusWithoutFile) emit Came();
}

// Some hosts call everything a page.
bool FileFetch::IsCutAsPage() const {
  return needs_.pageBytes > 0 && file_.status < kFirstStatusWithoutFile && file_.IsPage() &&
         ReadPictureHeader({file_.bytes.constData(), static_cast<std::size_t>(file_.bytes.size())}).format ==
             PictureFormat::kUnknown;
}

void FileFetch::Finish() {
  if (reply_->isOpen()) Collect();
  if (done_) return;
  file_.status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  const QUrl target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
  if (!target.isEmpty())
    Follow(file_.address.resolved(target));
  else if (reply_->error() != QNetworkReply::NoError || file_.status >= kFirstStatusWithoutFile)
    Stop(web_.IsPrivate(file_.address) ? PictureFault::kPrivateAddress : FaultOf(*reply_, file_.status));
  else if (IsCutShort(*reply_, file_.bytes.size()))
    Stop(PictureFault::kCutShort);
  else
    Stop(file_.bytes.isEmpty() ? PictureFault::kEmpty : PictureFault::kNone);
}

void FileFetch::Follow(const QUrl& target) {
  const QUrl openable = OpenableUrl(target.toString(QUrl::FullyEncoded).toStdU16String());
  if (!openable.isValid() || !IsAsSafe(file_.address, openable)) return Stop(PictureFault::kLessSecure);
  if (++redirects_ > needs_.limits.redirects) return Stop(PictureFault::kTooManyRedirects);
  const QUrl other = needs_.instead ? needs_.instead(openable) : QUrl();
  reply_->disconnect(this);
  reply_->deleteLater();
  Get(other.isEmpty() ? openable : other);
}

void FileFetch::Stop(PictureFault fault) {
  if (done_) return;
  done_ = true;
  deadline_.stop();
  file_.fault = fault;
  if (fault == PictureFault::kNetwork) file_.detail = reply_->errorString();
  reply_->disconnect(this);
  reply_->abort();
  if (fault != PictureFault::kNone) file_.bytes.clear();
  emit Done(file_);
}

}  // namespace quillet
