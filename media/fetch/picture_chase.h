// From a link to its picture's file: short links are followed, of a page the picture is sought that it is
// about, of a video its still picture and what its site tells of it. One link each. On the thread of its
// client.
#pragma once

#include <memory>

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QSize>
#include <QString>
#include <QThreadPool>

#include "media/fetch/fetch_options.h"
#include "media/fetch/file_fetch.h"
#include "media/fetch/picture_fault.h"
#include "media/fetch/picture_header.h"
#include "media/fetch/web_client.h"
#include "media/media_hosts.h"

namespace quillet {

enum class ChaseGoal : std::uint8_t {
  kPicture,    // and, of a video, the facts behind it
  kVideoFacts  // those alone
};

struct ChaseOrder {
  QString link;
  ChaseGoal goal = ChaseGoal::kPicture;
  PartialPictures partial = PartialPictures::kHidden;
};

// On the way.
struct ChaseNews {
  QSize size;  // empty: not known yet
  qint64 received = 0, expected = 0;
  QByteArray partial;  // what has come of the file, now and then where that is wanted
};

struct ChaseFind {
  PictureFault fault = PictureFault::kNone;
  QByteArray file;  // with a header that is sized and not too large; none with a fault
  bool isVideo = false;
};

struct VideoFacts {
  QString title;
  int seconds = 0;
};

class PictureChase : public QObject {
  Q_OBJECT

 public:
  // `web`, `readers` outlive the object, `hosts` its construction. Destroying it ends the chase.
  PictureChase(WebClient& web, QThreadPool& readers, const MediaHosts& hosts, const FetchLimits& limits,
               ChaseOrder order, QObject* parent = nullptr);

 signals:
  // None of them during construction.
  void Came(const ChaseNews& news);
  void Found(const ChaseFind& find);  // once, but for kVideoFacts
  void Told(const VideoFacts& facts);
  void Over();  // last of all, and once

 private:
  void Begin();
  void BeginVideo(std::u16string_view id);
  // For a redirect's target: the picture's own address where the target is a known page.
  QUrl InsteadOf(const QUrl& target);
  void Fetch(const QUrl& address);
  void OnCame();
  void OnDone(const FetchedFile& file);
  void SeekIn(const FetchedFile& page);
  void FetchFromPage(const QUrl& page, const std::string& address);
  void End(PictureFault fault, const QByteArray& file = {});
  void AskForFacts();

  WebClient& web_;
  QThreadPool& readers_;
  MediaHosts hosts_;
  FetchLimits limits_;
  ChaseOrder order_;
  std::unique_ptr<FileFetch> fetch_;
  std::u16string videoId_;
  bool isLedOn_ = false;    // redirects lead to pages of known services
  bool hasSought_ = false;  // in a page, which happens once
  QSize size_;
  QElapsedTimer sinceNews_, sincePartial_;
};

}  // namespace quillet
