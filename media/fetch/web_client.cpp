#include "media/fetch/web_client.h"

#include <algorithm>

#include <QNetworkProxy>
#include <QNetworkRequest>

#include "media/fetch/address_rule.h"

namespace quillet {
namespace {

QNetworkRequest RequestFor(const QUrl& address, int silenceMs) {
  QNetworkRequest request(address);
  request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Quill downloader"));
  request.setRawHeader("Accept", "image/*, text/html;q=0.5, */*;q=0.1");
  // The same from everybody: the toolkit would name the user's language.
  request.setRawHeader("Accept-Language", "*");
  // Pictures are compressed already, and what unpacks itself cannot be counted as it comes.
  request.setRawHeader("Accept-Encoding", "identity");
  // The toolkit's way of following asks again on a connection that the server may be closing, and looks at no
  // target.
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
  for (const QNetworkRequest::Attribute attribute :
       {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
        QNetworkRequest::AuthenticationReuseAttribute})
    request.setAttribute(attribute, QNetworkRequest::Manual);
  request.setTransferTimeout(silenceMs);
  return request;
}

}  // namespace

WebClient::WebClient(Reach reach) {
  straight_.setProxy(QNetworkProxy::NoProxy);
  if (reach == Reach::kAnyHost) return;
  door_ = std::make_unique<GuardedDoor>(IsPublicAddress);
  guarded_.setProxy(door_->Proxy());
}

QNetworkReply* WebClient::Get(const QUrl& address, int silenceMs) {
  const LoopbackHost* const loopback = LoopbackOf(address);
  if (loopback == nullptr) {
    QNetworkRequest request = RequestFor(address, silenceMs);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, strategy_ == FetchStrategy::kOneConnection);
    return (door_ ? guarded_ : straight_).get(request);
  }
  QUrl there = address;
  there.setScheme(QStringLiteral("http"));
  there.setHost(QStringLiteral("127.0.0.1"));
  there.setPort(loopback->port);
  QNetworkRequest request = RequestFor(there, silenceMs);
  request.setRawHeader("Host", loopback->host.toLatin1());
  return straight_.get(request);
}

bool WebClient::IsPrivate(const QUrl& address) const {
  if (!door_ || LoopbackOf(address) != nullptr) return false;
  const QString host = address.host(QUrl::FullyEncoded);
  // With some numbers the toolkit does not even come to the door.
  const QHostAddress number(host);
  return number.isNull() ? door_->HasRefused(host) : !IsPublicAddress(number);
}

const LoopbackHost* WebClient::LoopbackOf(const QUrl& address) const {
  if (address.port() != -1) return nullptr;
  const QString host = address.host();
  const auto found = std::find_if(loopbackHosts_.begin(), loopbackHosts_.end(),
                                  [&](const LoopbackHost& loopback) { return loopback.host == host; });
  return found == loopbackHosts_.end() ? nullptr : &*found;
}

}  // namespace quillet
