#include "app/interaction/clipboard/short_link.h"

#include <algorithm>
#include <utility>

#include <QNetworkRequest>

namespace quillet {
namespace {

constexpr qsizetype kLongestLink = 2048;

QNetworkRequest RequestFor(const QUrl& address) {
  QNetworkRequest request(address);
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
  // What unpacks itself cannot be counted as it comes.
  request.setRawHeader("Accept-Encoding", "identity");
  // The toolkit's way of following asks again on a connection that the server may be closing.
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
  return request;
}

bool IsOnTheWeb(const QUrl& address) {
  return address.isValid() && !address.host().isEmpty() &&
         (address.scheme() == u"https" || address.scheme() == u"http");
}

bool IsAsSafe(const QUrl& from, const QUrl& target) {
  return IsOnTheWeb(target) && (target.scheme() == u"https" || from.scheme() == u"http");
}

// Empty when the answer is no link. A link is ASCII; other characters might not survive the way to the BBS.
QString LinkIn(const QByteArray& body) {
  if (!body.startsWith("https://")) return {};
  constexpr QByteArrayView kBlanks(" \t\r\n\v\f");
  const auto* const end =
      std::find_if(body.begin(), body.end(), [&](char byte) { return kBlanks.contains(byte); });
  QByteArray link(body.begin(), end - body.begin());
  link.removeIf([](char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == 0x7F; });
  const bool isAscii = std::all_of(link.begin(), link.end(),
                                   [](char byte) { return static_cast<unsigned char>(byte) < 0x7F; });
  if (!isAscii || link.size() > kLongestLink || !IsOnTheWeb(QUrl(QString::fromLatin1(link)))) return {};
  return QString::fromLatin1(link);
}

}  // namespace

ShortLink::ShortLink(QNetworkAccessManager& network, ShortLinkLimits limits)
    : network_(network), limits_(limits) {
  for (QTimer* const timer : {&step_, &total_}) {
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, [this] { Stop({}); });
  }
}

ShortLink::~ShortLink() {
  EndReply();
}

void ShortLink::Ask(const QString& request) {
  Drop();
  redirects_ = 0;
  const QUrl address(request.trimmed());
  if (!IsOnTheWeb(address)) return total_.start(0);
  total_.start(limits_.totalMs);
  Get(address);
}

void ShortLink::Drop() {
  step_.stop();
  total_.stop();
  EndReply();
  body_.clear();
}

void ShortLink::Get(const QUrl& address) {
  step_.start(limits_.stepMs);
  reply_ = network_.get(RequestFor(address));
  reply_->setReadBufferSize(limits_.bytes + 1);
  connect(reply_, &QNetworkReply::metaDataChanged, this, &ShortLink::Progress);
  connect(reply_, &QNetworkReply::readyRead, this, &ShortLink::Progress);
  connect(reply_, &QNetworkReply::finished, this, &ShortLink::Finish);
}

void ShortLink::Progress() {
  step_.start(limits_.stepMs);
  Collect();
  if (IsTooLong()) Stop({});
}

void ShortLink::Collect() {
  if (reply_->isOpen()) body_ += reply_->readAll();
}

bool ShortLink::IsTooLong() const {
  const qint64 announced = reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong();
  return std::max<qint64>(announced, body_.size()) > limits_.bytes;
}

void ShortLink::Finish() {
  Collect();
  const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  const QUrl target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
  if (!target.isEmpty())
    Follow(reply_->url().resolved(target));
  else if (reply_->error() != QNetworkReply::NoError || status / 100 != 2 || IsTooLong())
    Stop({});
  else
    Stop(LinkIn(body_));
}

void ShortLink::Follow(const QUrl& target) {
  if (!IsAsSafe(reply_->url(), target) || ++redirects_ > limits_.redirects) return Stop({});
  EndReply();
  body_.clear();
  Get(target);
}

void ShortLink::Stop(const QString& link) {
  Drop();
  emit Done(link);
}

void ShortLink::EndReply() {
  if (reply_.isNull()) return;
  QNetworkReply* const reply = std::exchange(reply_, nullptr);
  reply->disconnect(this);
  reply->abort();
  reply->deleteLater();
}

}  // namespace quillet
