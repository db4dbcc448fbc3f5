// Fetches one picture from a web address, with limits on time, bytes and redirects. User-interface thread,
// which it never holds up.
#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <QUrl>

namespace quillet {

struct DownloadLimits {
  int silenceMs = 20'000;  // without a byte
  int totalMs = 180'000;   // for a server that sends a byte now and then
  qint64 bytes = qint64{20} << 20;
  int redirects = 5;
};

class PictureDownload : public QObject {
  Q_OBJECT

 public:
  // Starts at once. `network` outlives the object; destroying the object ends the download.
  PictureDownload(QNetworkAccessManager& network, const QUrl& address, const DownloadLimits& limits);
  ~PictureDownload() override;

 signals:
  // Once, never during construction. `problem` tells the user, in his language, why there are no bytes; empty
  // when there are. The object must outlive the signal.
  void Done(const QByteArray& bytes, const QString& problem);

 private:
  void Get(const QUrl& address);
  void Collect();
  void Finish();
  void Follow(const QUrl& target);
  void Stop(const QString& problem);

  QNetworkAccessManager& network_;
  DownloadLimits limits_;
  QNetworkReply* reply_ = nullptr;
  int redirects_ = 0;
  QTimer deadline_;
  QByteArray bytes_;
  bool done_ = false;
};

}  // namespace quillet
