// The one way out for what is fetched because it stands in a text: a tunnelling proxy of the program's own,
// on loopback, for the program itself. The network library resolves and connects without asking anybody; by
// this proxy it is the door that does both.
//
// What is guaranteed: a host's name is resolved here, once for each connection; where any of its addresses is
// none that the rule lets through, no connection is made and nothing is sent; else the connection is made to
// an address that has been looked at, by its number, and the name is not resolved again on the way. A name
// server that answers otherwise the next time gains nothing. TLS goes through untouched, from end to end.
//
// A password that is drawn anew at each start keeps other programs out. Lives on one thread, with an event
// loop; it never blocks.
#pragma once

#include <functional>

#include <QHostAddress>
#include <QNetworkProxy>
#include <QObject>
#include <QStringList>
#include <QTcpServer>

#include "media/fetch/fetch_options.h"

namespace quillet {

// A file, and more than is under way when one that is too large is given up.
inline constexpr qint64 kMostUnasked = FetchLimits{}.bytes + (8 << 20);

using AddressRule = std::function<bool(const QHostAddress&)>;

class GuardedDoor : public QObject {
  Q_OBJECT

 public:
  // A host that sends more than `mostUnasked` bytes in a row, with nothing said to it between them, is hung
  // up on: the network library keeps an answer's head in memory however long it is.
  explicit GuardedDoor(AddressRule rule, qint64 mostUnasked = kMostUnasked, QObject* parent = nullptr);

  // Where no port could be had, one that leads nowhere.
  QNetworkProxy Proxy() const;
  // Whether a connection to this host has been refused by the rule; of the last ones only.
  bool HasRefused(const QString& host) const { return refused_.contains(host); }

 private:
  void Admit();
  void NoteRefused(const QString& host);

  AddressRule rule_;
  qint64 mostUnasked_;
  QByteArray password_;
  QStringList refused_;
  QTcpServer server_;
};

}  // namespace quillet
