// One connection through the guarded door: what the network library asks by HTTP's CONNECT (RFC 9110, section
// 9.3.6), the look at where it leads, and then bytes both ways. On the door's thread; ends and goes by
// itself.
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
  // Takes the client over. `password` is the header line that it has to say; `mostUnasked` as for the door.
  DoorPassage(QTcpSocket* client, AddressRule rule, QByteArray password, qint64 mostUnasked, QObject* parent);

 signals:
  // The rule does not let through where this host's name leads.
  void Refused(const QString& host);

 private:
  enum class Step { kRequest, kResolving, kConnecting, kOpen, kRefused };

  void OnClientBytes();
  void OnRequest();
  void Resolve(const QString& host);
  void TryAddresses(const QList<QHostAddress>& addresses);
  void ConnectNext();
  void OnConnected();
  void Answer(const char* status);
  void Refuse(const char* status);
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
  Step step_ = Step::kRequest;
  QTcpSocket* client_;
  QTcpSocket upstream_;
  QTimer patience_;
  QByteArray request_;  // its first line
  bool isKnown_ = false;
  QString host_;
  quint16 port_ = 0;
  QList<QHostAddress> addresses_;  // that have been looked at, and not been tried yet
};

}  // namespace quillet
