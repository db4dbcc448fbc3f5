#include "media/fetch/door_passage.h"

#include <algorithm>
#include <utility>

namespace quillet {
namespace {

constexpr int kDoorPatienceMs = 10'000;  // for what the client has to say, and for each address
constexpr qint64 kBuffer = 256 * 1024;

// The network library tells these four from each other, and what it makes of them is what the user is told.
constexpr const char* kGranted = "200 OK";
constexpr const char* kNotAllowed = "403 Forbidden";
constexpr const char* kHostUnreachable = "404 Not Found";
constexpr const char* kRefusedByHost = "503 Service Unavailable";
constexpr const char* kNotUnderstood = "400 Bad Request";

}  // namespace

DoorPassage::DoorPassage(QTcpSocket* client, AddressRule rule, QByteArray password, qint64 mostUnasked,
                         QObject* parent)
    : QObject(parent),
      rule_(std::move(rule)),
      password_(std::move(password)),
      mostUnasked_(mostUnasked),
      client_(client) {
  client_->setParent(this);
  upstream_.setProxy(QNetworkProxy::NoProxy);
  for (QTcpSocket* const socket : {client_, &upstream_})
    socket->setReadBufferSize(kBuffer);
  client_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  patience_.setSingleShot(true);
  patience_.start(kDoorPatienceMs);
  connect(&patience_, &QTimer::timeout, this, [this] {
    if (step_ == Step::kConnecting)
      ConnectNext();
    else
      End();
  });
  connect(client_, &QTcpSocket::readyRead, this, &DoorPassage::OnClientBytes);
  connect(client_, &QTcpSocket::bytesWritten, this, &DoorPassage::PumpIn);
  connect(client_, &QTcpSocket::disconnected, this, &DoorPassage::End);
  connect(&upstream_, &QTcpSocket::connected, this, &DoorPassage::OnConnected);
  connect(&upstream_, &QTcpSocket::readyRead, this, &DoorPassage::PumpIn);
  connect(&upstream_, &QTcpSocket::bytesWritten, this, &DoorPassage::PumpOut);
  // Queued: within the signal the socket is not ready for the next attempt.
  connect(
      &upstream_, &QTcpSocket::errorOccurred, this,
      [this] {
        if (step_ == Step::kConnecting) ConnectNext();
      },
      Qt::QueuedConnection);
  connect(&upstream_, &QTcpSocket::disconnected, this, &DoorPassage::OnUpstreamEnd);
  OnClientBytes();
}

// "CONNECT host:port HTTP/1.1", headers, an empty line. Only the lines up to there are taken, and nothing of
// them is kept but the first.
void DoorPassage::OnClientBytes() {
  if (step_ == Step::kOpen) return PumpOut();
  while (step_ == Step::kRequest && client_->canReadLine()) {
    const QByteArray line = client_->readLine().trimmed();
    if (line.isEmpty()) return OnRequest();
    if (request_.isEmpty())
      request_ = line;
    else if (line == password_)
      isKnown_ = true;
  }
}

void DoorPassage::OnRequest() {
  if (!isKnown_) return Refuse(kNotAllowed);
  const QList<QByteArray> words = request_.split(' ');
  if (words.size() != 3 || words[0] != "CONNECT") return Refuse(kNotUnderstood);
  const QByteArray& target = words[1];
  const qsizetype colon = target.lastIndexOf(':');
  port_ = target.sliced(colon + 1).toUShort();
  QByteArray host = target.first(std::max<qsizetype>(colon, 0));
  if (host.startsWith('[') && host.endsWith(']')) host = host.sliced(1).chopped(1);
  if (host.isEmpty() || port_ == 0) return Refuse(kNotUnderstood);
  Resolve(QString::fromLatin1(host));
}

void DoorPassage::Resolve(const QString& host) {
  step_ = Step::kResolving;
  patience_.stop();
  host_ = host;
  // Of a number the resolver would ask for the name.
  if (const QHostAddress number(host); !number.isNull()) return TryAddresses({number});
  QHostInfo::lookupHost(host, this, [this](const QHostInfo& info) { TryAddresses(info.addresses()); });
}

void DoorPassage::TryAddresses(const QList<QHostAddress>& addresses) {
  if (addresses.isEmpty()) return Refuse(kHostUnreachable);
  // All of them: a name that means both the world and this network is not one to be tried out.
  if (!std::all_of(addresses.cbegin(), addresses.cend(), rule_)) {
    emit Refused(host_);
    return Refuse(kNotAllowed);
  }
  addresses_ = addresses;
  step_ = Step::kConnecting;
  ConnectNext();
}

void DoorPassage::ConnectNext() {
  if (addresses_.isEmpty())
    return Refuse(upstream_.error() == QAbstractSocket::ConnectionRefusedError ? kRefusedByHost
                                                                               : kHostUnreachable);
  patience_.start(kDoorPatienceMs);
  upstream_.abort();
  upstream_.connectToHost(addresses_.takeFirst(), port_);
}

void DoorPassage::OnConnected() {
  patience_.stop();
  upstream_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
  step_ = Step::kOpen;
  Answer(kGranted);
  PumpOut();
}

void DoorPassage::Answer(const char* status) {
  client_->write(QByteArray("HTTP/1.1 ").append(status).append("\r\n\r\n"));
}

// Hangs up once this last word is gone.
void DoorPassage::Refuse(const char* status) {
  step_ = Step::kRefused;
  Answer(status);
  patience_.start(kDoorPatienceMs);
  client_->disconnectFromHost();
}

qint64 DoorPassage::Pump(QTcpSocket& from, QTcpSocket& to) const {
  qint64 moved = 0;
  while (step_ == Step::kOpen && from.bytesAvailable() > 0 && to.bytesToWrite() < kBuffer)
    moved += to.write(from.read(kBuffer));
  return moved;
}

void DoorPassage::PumpOut() {
  if (Pump(*client_, upstream_) > 0) unasked_ = 0;
}

void DoorPassage::PumpIn() {
  unasked_ += Pump(upstream_, *client_);
  if (unasked_ > mostUnasked_) End();
}

void DoorPassage::OnUpstreamEnd() {
  if (step_ != Step::kOpen) return;
  client_->write(upstream_.readAll());
  client_->disconnectFromHost();
}

void DoorPassage::End() {
  step_ = Step::kRefused;
  upstream_.disconnect(this);
  upstream_.abort();
  deleteLater();
}

}  // namespace quillet
