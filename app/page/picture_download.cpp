#include "app/page/picture_download.h"

#include <algorithm>
#include <utility>

#include <QNetworkRequest>

namespace quillet {
namespace {

constexpr qint64 kReadBuffer = 1 << 20;

QNetworkRequest RequestFor(const QUrl& address, const DownloadLimits& limits) {
  QNetworkRequest request(address);
  request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Quill downloader"));
  // Pictures are compressed already, and what unpacks itself cannot be counted as it comes.
  request.setRawHeader("Accept-Encoding", "identity");
  // The toolkit's way of following asks again on a connection that the server may be closing.
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
  request.setTransferTimeout(limits.silenceMs);
  return request;
}

bool IsAsSafe(const QUrl& from, const QUrl& target) {
  return target.scheme() == u"https" || (target.scheme() == u"http" && from.scheme() == u"http");
}

QString TooSlow() {
  return u"等太久了，圖片沒有送完。"_qs;
}

QString CutShort() {
  return u"連線在圖片送完以前就斷了。"_qs;
}

// Where the peer closes in the middle, the toolkit may say that all is well. What comes in chunks has no
// length to hold it against; nothing unpacks itself, see RequestFor.
bool IsCutShort(const QNetworkReply& reply, qint64 count) {
  if (reply.hasRawHeader("Transfer-Encoding")) return false;
  const QVariant announced = reply.header(QNetworkRequest::ContentLengthHeader);
  return announced.isValid() && count < announced.toLongLong();
}

QString ReasonOf(const QNetworkReply& reply, int status) {
  switch (reply.error()) {
    case QNetworkReply::HostNotFoundError:
      return u"找不到主機 %1。"_qs.arg(reply.url().host());
    case QNetworkReply::ConnectionRefusedError:
      return u"主機拒絕連線。"_qs;
    case QNetworkReply::RemoteHostClosedError:
      return CutShort();
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError:
      return TooSlow();
    case QNetworkReply::SslHandshakeFailedError:
      return u"無法和主機建立安全的連線。"_qs;
    default:
      break;
  }
  if (status >= 300) return u"主機回應 %1，沒有圖片。"_qs.arg(status);
  return u"下載失敗：%1"_qs.arg(reply.errorString());
}

}  // namespace

PictureDownload::PictureDownload(QNetworkAccessManager& network, const QUrl& address,
                                 const DownloadLimits& limits)
    : network_(network), limits_(limits) {
  deadline_.setSingleShot(true);
  connect(&deadline_, &QTimer::timeout, this, [this] { Stop(TooSlow()); });
  deadline_.start(limits_.totalMs);
  Get(address);
}

PictureDownload::~PictureDownload() {
  reply_->disconnect(this);
  reply_->abort();
}

void PictureDownload::Get(const QUrl& address) {
  reply_ = network_.get(RequestFor(address, limits_));
  reply_->setParent(this);
  reply_->setReadBufferSize(kReadBuffer);
  connect(reply_, &QNetworkReply::readyRead, this, &PictureDownload::Collect);
  connect(reply_, &QNetworkReply::finished, this, &PictureDownload::Finish);
}

void PictureDownload::Collect() {
  bytes_ += reply_->readAll();
  const qint64 announced = reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong();
  if (std::max<qint64>(announced, bytes_.size()) > limits_.bytes)
    Stop(u"圖片超過 %1 MB。"_qs.arg(limits_.bytes >> 20));
}

void PictureDownload::Finish() {
  if (reply_->isOpen()) Collect();
  if (done_) return;
  const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  const QUrl target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
  if (!target.isEmpty())
    Follow(reply_->url().resolved(target));
  else if (reply_->error() != QNetworkReply::NoError || status >= 300)
    Stop(ReasonOf(*reply_, status));
  else if (reply_->header(QNetworkRequest::ContentTypeHeader).toString().startsWith(u"text/html"))
    Stop(u"這是網頁的網址，不是圖片的網址。"_qs);
  else if (IsCutShort(*reply_, bytes_.size()))
    Stop(CutShort());
  else if (bytes_.isEmpty())
    Stop(u"主機沒有送來圖片。"_qs);
  else
    Stop({});
}

void PictureDownload::Follow(const QUrl& target) {
  if (!IsAsSafe(reply_->url(), target)) return Stop(u"網址轉到不安全的地方。"_qs);
  if (++redirects_ > limits_.redirects) return Stop(u"網址一再轉到別的地方。"_qs);
  reply_->disconnect(this);
  reply_->deleteLater();
  bytes_.clear();
  Get(target);
}

void PictureDownload::Stop(const QString& problem) {
  if (done_) return;
  done_ = true;
  deadline_.stop();
  reply_->disconnect(this);
  reply_->abort();
  const QByteArray bytes = std::exchange(bytes_, {});
  emit Done(problem.isEmpty() ? bytes : QByteArray(), problem);
}

}  // namespace quillet
