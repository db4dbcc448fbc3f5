// Fetches one file from a web address, with limits on time, bytes and redirects. On its client's thread,
// which it never holds up.
#pragma once

#include <functional>
#include <string_view>

#include <QByteArray>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include "media/fetch/fetch_options.h"
#include "media/fetch/picture_fault.h"
#include "media/fetch/web_client.h"

namespace quillet {

// What came in the end.
struct FetchedFile {
  PictureFault fault = PictureFault::kNone;
  QByteArray bytes;  // none with a fault
  QUrl address;      // that it came from, or that failed, after redirects
  QByteArray type;   // as the host names it, in lower case: "text/html; charset=big5"
  int status = 0;    // of HTTP; 0: there was no answer
  QString detail;    // the toolkit's own words for kNetwork

  bool IsPage() const;
};

struct FileNeeds {
  FetchLimits limits;
  // Of a web page, no more than this; what lies behind is left away.
  qint64 pageBytes = 0;  // 0: a page is a file like others
  // What is asked for in place of a redirect's target; empty: the target itself.
  std::function<QUrl(const QUrl& target)> instead;
};

// By the rule for all addresses that leave the program; invalid for one that may not.
QUrl OpenableUrl(std::u16string_view address);

class FileFetch : public QObject {
  Q_OBJECT

 public:
  // Starts at once. `web` outlives the object; destroying the object ends the fetch.
  FileFetch(WebClient& web, const QUrl& address, FileNeeds needs, QObject* parent = nullptr);
  ~FileFetch() override;

  // What has come of the file so far, and how much is to come, as far as the host tells; 0: it does not.
  const QByteArray& Bytes() const { return file_.bytes; }
  qint64 Expected() const { return expected_; }

 signals:
  // More has come. Never during construction.
  void Came();
  // Once, never during construction. The object must outlive the signal.
  void Done(const FetchedFile& file);

 private:
  void Get(const QUrl& address);
  void Collect();
  bool IsCutAsPage() const;
  void Finish();
  void Follow(const QUrl& target);
  void Stop(PictureFault fault);

  WebClient& web_;
  FileNeeds needs_;
  QNetworkReply* reply_ = nullptr;
  int redirects_ = 0;
  QTimer deadline_;
  FetchedFile file_;
  qint64 expected_ = 0;
  bool done_ = false;
};

}  // namespace quillet
