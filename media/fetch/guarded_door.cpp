#include "media/fetch/guarded_door.h"

#include <array>
#include <utility>

#include <QRandomGenerator>
#include <QTcpSocket>

#include "media/fetch/door_passage.h"

namespace quillet {
namespace {

constexpr int kMostPassages = 64;
constexpr qsizetype kMostNoted = 100;
constexpr quint16 kNowhere = 1;
constexpr const char* kPasswordHeader = "Proxy-Authorization";

QByteArray DrawnPassword() {
  std::array<quint32, 8> words{};
  QRandomGenerator::system()->fillRange(words.data(), static_cast<qsizetype>(words.size()));
  return "Bearer " + QByteArray(reinterpret_cast<const char*>(words.data()), sizeof words).toHex();
}

}  // namespace

GuardedDoor::GuardedDoor(AddressRule rule, qint64 mostUnasked, QObject* parent)
    : QObject(parent), rule_(std::move(rule)), mostUnasked_(mostUnasked), password_(DrawnPassword()) {
  connect(&server_, &QTcpServer::newConnection, this, &GuardedDoor::Admit);
  server_.listen(QHostAddress::LocalHost);
}

QNetworkProxy GuardedDoor::Proxy() const {
  QNetworkProxy proxy(QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"),
                      server_.isListening() ? server_.serverPort() : kNowhere);
  // What is not encrypted goes through a tunnel too.
  proxy.setCapabilities(QNetworkProxy::TunnelingCapability | QNetworkProxy::HostNameLookupCapability);
  proxy.setRawHeader(kPasswordHeader, password_);
  return proxy;
}

void GuardedDoor::Admit() {
  while (QTcpSocket* const client = server_.nextPendingConnection()) {
    if (findChildren<DoorPassage*>(QString(), Qt::FindDirectChildrenOnly).size() >= kMostPassages) {
      client->abort();
      client->deleteLater();
      continue;
    }
    auto* const passage = new DoorPassage(
        client, rule_, QByteArray(kPasswordHeader).append(": ").append(password_), mostUnasked_, this);
    connect(passage, &DoorPassage::Refused, this, &GuardedDoor::NoteRefused);
  }
}

void GuardedDoor::NoteRefused(const QString& host) {
  refused_.removeAll(host);
  refused_.append(host);
  if (refused_.size() > kMostNoted) refused_.removeFirst();
}

}  // namespace quillet
