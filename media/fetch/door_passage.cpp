#include "media/fetch/door_passage.h"

#include <algorithm>
#include <utility>

#include <QtEndian>

namespace quillet {
namespace {

constexpr int kDoorPatienceMs = 10'000;  // for what the client has to say, and for each address
constexpr qint64 kBuffer = 256 * 1024;

constexpr char kVersion = 5;
constexpr char kPasswordVersion = 1;
constexpr char kByPassword = 2;
constexpr char kNoWay = static_cast<char>(0xFF);
constexpr char kConnectTo = 1;
constexpr char kFourBytes = 1, kName = 3, kSixteenBytes = 4;

constexpr char kGranted = 0, kFailed = 1, kNotAllowed = 2, kHostUnreachable = 4, kRefusedByHost = 5,
               kUnknownCommand = 7;

qsizetype LengthAt(const QByteArray& bytes, qsizetype at) {
  return static_cast<quint8>(bytes.at(at));
}

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

void DoorPassage::OnClientBytes() {
  if (step_ == Step::kOpen) return PumpOut();
  if (step_ == Step::kResolving || step_ == Step::kConnecting || step_ == Step::kRefused) return;
  asked_ += client_->readAll();
  qsizetype taken = 0;
  do {
    switch (step_) {
      case Step::kGreeting:
        taken = TakeGreeting();
        break;
      case Step::kPassword:
        taken = TakePassword();
        break;
      case Step::kRequest:
        taken = TakeRequest();
        break;
      default:
        return;
    }
    asked_.remove(0, taken);
  } while (taken > 0);
}

// Version, count, that many methods.
qsizetype DoorPassage::TakeGreeting() {
  if (asked_.size() < 2) return 0;
  const bool isVersion = asked_.at(0) == kVersion;
  const qsizetype size = 2 + LengthAt(asked_, 1);
  if (isVersion && asked_.size() < size) return 0;
  const bool isKnown = isVersion && asked_.first(size).indexOf(kByPassword, 2) >= 0;
  client_->write(QByteArray{}.append(kVersion).append(isKnown ? kByPassword : kNoWay));
  if (!isKnown) {
    HangUp();
    return 0;
  }
  step_ = Step::kPassword;
  return size;
}

// Version, user with its length in front, password likewise.
qsizetype DoorPassage::TakePassword() {
  if (asked_.size() < 2) return 0;
  const qsizetype passwordAt = 2 + LengthAt(asked_, 1);
  if (asked_.size() <= passwordAt) return 0;
  const qsizetype size = passwordAt + 1 + LengthAt(asked_, passwordAt);
  if (asked_.size() < size) return 0;
  const bool isRight = asked_.at(0) == kPasswordVersion &&
                       asked_.sliced(passwordAt + 1).startsWith(password_) &&
                       size == passwordAt + 1 + password_.size();
  client_->write(QByteArray{}.append(kPasswordVersion).append(isRight ? kGranted : kFailed));
  if (!isRight) {
    HangUp();
    return 0;
  }
  step_ = Step::kRequest;
  return size;
}

// Version, command, a zero, the kind of address, the address, two bytes of port.
qsizetype DoorPassage::TakeRequest() {
  constexpr qsizetype kAddressAt = 4;
  if (asked_.size() <= kAddressAt) return 0;
  const char kind = asked_.at(3);
  const qsizetype first = kAddressAt + (kind == kName ? 1 : 0);
  const qsizetype length = kind == kName           ? LengthAt(asked_, kAddressAt)
                           : kind == kFourBytes    ? 4
                           : kind == kSixteenBytes ? 16
                                                   : 0;
  const qsizetype size = first + length + 2;
  if (asked_.size() < size) return 0;
  if (asked_.at(1) != kConnectTo || length == 0) {
    Answer(kUnknownCommand);
    return 0;
  }
  const QByteArray address = asked_.mid(first, length);
  port_ = qFromBigEndian<quint16>(asked_.constData() + first + length);
  const auto* const bytes = reinterpret_cast<const quint8*>(address.constData());
  Resolve(kind == kName        ? QString::fromLatin1(address)
          : kind == kFourBytes ? QHostAddress(qFromBigEndian<quint32>(bytes)).toString()
                               : QHostAddress(bytes).toString());
  return size;
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
  if (addresses.isEmpty()) return Answer(kHostUnreachable);
  // All of them: a name that means both the world and this network is not one to be tried out.
  if (!std::all_of(addresses.cbegin(), addresses.cend(), rule_)) {
    emit Refused(host_);
    return Answer(kNotAllowed);
  }
  addresses_ = addresses;
  step_ = Step::kConnecting;
  ConnectNext();
}

void DoorPassage::ConnectNext() {
  if (addresses_.isEmpty())
    return Answer(upstream_.error() == QAbstractSocket::ConnectionRefusedError ? kRefusedByHost
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

// All answers are alike, and nobody reads the address in them. But for the good one it is the last word.
void DoorPassage::Answer(char reply) {
  client_->write(QByteArray{}.append(kVersion).append(reply).append('\0').append(kFourBytes).append(6, '\0'));
  if (reply != kGranted) HangUp();
}

// Once what has been written is gone.
void DoorPassage::HangUp() {
  step_ = Step::kRefused;
  asked_.clear();
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
