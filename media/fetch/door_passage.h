// One connection through the guarded door: what the network library asks by SOCKS 5 (RFC 1928, RFC 1929), the
// look at where it leads, and then bytes both ways. On the door's thread; ends and goes by itself.
#pragma once

#include <QHostInfo>
#include <QList>
#include <QTcpSocket>
#include <QTimer>

#include "media/fetch/guarded_door.h"

namespace quillet {

class DoorPassage : public QObject {
  Q_OBJECT

 public:
  // Takes the client over. `password` is what it has to say, as user and as password; `mostUnasked` as for
  // the door.
  DoorPassage(QTcpSocket* client, AddressRule rule, QByteArray password, qint64 mostUnasked, QObject* parent);

 signals:
  // The rule does not let through where this host's name leads.
  void Refused(const QString& host);

 private:
  enum class Step { kGreeting, kPassword, kRequest, kResolving, kConnecting, kOpen, kRefused };

  void OnClientBytes();
  // How many bytes the step took; 0: there are too few of them yet.
  qsizetype TakeGreeting();
  qsizetype TakePassword();
  qsizetype TakeRequest();
  void Resolve(const QString& host);
  void TryAddresses(const QList<QHostAddress>& addresses);
  void ConnectNext();
  void OnConnected();
  void Answer(char reply);
  void HangUp();
  void End();
  // Returns how many bytes it moved.
  qint64 Pump(QTcpSocket& from, QTcpSocket& to) const;
  void PumpOut();
  void PumpIn();
  void OnUpstreamEnd();

  AddressRule rule_;
  QByteArray password_;
  qint64 mostUnasked_;
  qint64 unasked_ = 0;
  Step step_ = Step::kGreeting;
  QTcpSocket* client_;
  QTcpSocket upstream_;
  QTimer patience_;
  QByteArray asked_;
  QString host_;
  quint16 port_ = 0;
  QList<QHostAddress> addresses_;  // that have been looked at, and not been tried yet
};

}  // namespace quillet
