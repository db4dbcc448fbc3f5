// Asks the link shortener for a short link, without holding the window: at most so long for each step, at
// most so many bytes. User-interface thread.
#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QUrl>

namespace quillet {

struct ShortLinkLimits {
  int stepMs = 20'000;       // connecting, then each piece of the answer
  int totalMs = 60'000;      // for a server that sends a byte now and then
  qint64 bytes = 64 * 1024;  // more is no link
  int redirects = 5;
};

class ShortLink : public QObject {
  Q_OBJECT

 public:
  // `network` outlives the object; destroying the object ends the request.
  explicit ShortLink(QNetworkAccessManager& network, ShortLinkLimits limits = {});
  ~ShortLink() override;

  // Ends a request before it, whose Done never comes. `request` is the whole address.
  void Ask(const QString& request);
  // Ends the request; Done does not come.
  void Drop();
  bool IsAsking() const { return total_.isActive(); }

 signals:
  // Once for each Ask, never during it: the short link, or an empty text when none came. The object must
  // outlive the signal.
  void Done(const QString& link);

 private:
  void Get(const QUrl& address);
  // The headers or a piece of the body have come.
  void Progress();
  void Collect();
  bool IsTooLong() const;
  void Finish();
  void Follow(const QUrl& target);
  void Stop(const QString& link);
  void EndReply();

  QNetworkAccessManager& network_;
  const ShortLinkLimits limits_;
  QPointer<QNetworkReply> reply_;
  QByteArray body_;
  int redirects_ = 0;
  QTimer step_;
  QTimer total_;
};

}  // namespace quillet
