#include "media/fetch/picture_chase.h"

#include <cmath>
#include <string_view>
#include <utility>

#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaObject>

#include "media/fetch/worker_run.h"
#include "media/page/page_picture.h"
#include "media/picture_link.h"
#include "media/video_link.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

constexpr qint64 kNewsMs = 100;
constexpr qint64 kPartialMs = 500;
// By then every format that is shown has said what it is.
constexpr qsizetype kTellingBytes = 32;
constexpr qint64 kMostFactBytes = 256 * 1024;
constexpr qsizetype kLongestTitle = 300;
constexpr double kLongestVideo = 1e6;  // seconds

QUrl Filled(std::u16string pattern, std::u16string_view id) {
  constexpr std::u16string_view kPlace = u"{id}";
  const std::size_t at = pattern.find(kPlace);
  return at == pattern.npos ? QUrl() : OpenableUrl(pattern.replace(at, kPlace.size(), id));
}

PictureHeader HeaderOf(const QByteArray& bytes) {
  return ReadPictureHeader({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

// Of "text/html; charset=big5"; empty: it does not say.
std::string CharsetIn(const QByteArray& type) {
  constexpr std::string_view kKey = "charset=";
  const qsizetype at = type.indexOf(kKey.data());
  if (at < 0) return {};
  QByteArray name = type.mid(at + static_cast<qsizetype>(kKey.size()));
  if (const qsizetype end = name.indexOf(';'); end >= 0) name.truncate(end);
  return name.replace('"', "").trimmed().toStdString();
}

VideoFacts FactsIn(const QByteArray& json) {
  const QJsonObject facts = QJsonDocument::fromJson(json).object();
  VideoFacts told;
  told.title = facts.value(u"title").toString().simplified().left(kLongestTitle);
  for (const QStringView key : {QStringView(u"duration"), QStringView(u"length_seconds")}) {
    const double seconds = facts.value(key).toVariant().toDouble();
    if (std::isfinite(seconds) && seconds > 0 && seconds < kLongestVideo)
      told.seconds = static_cast<int>(seconds);
  }
  return told;
}

}  // namespace

PictureChase::PictureChase(WebClient& web, QThreadPool& readers, const MediaHosts& hosts,
                           const FetchLimits& limits, ChaseOrder order, QObject* parent)
    : QObject(parent),
      web_(web),
      readers_(readers),
      hosts_(hosts),
      limits_(limits),
      order_(std::move(order)) {
  QMetaObject::invokeMethod(this, &PictureChase::Begin, Qt::QueuedConnection);
}

void PictureChase::Begin() {
  if (order_.link.size() > static_cast<qsizetype>(kLongestWebAddress)) return End(PictureFault::kBadAddress);
  std::u16string link = order_.link.toStdU16String();
  const LinkMedia media = ClassifyLink(link, hosts_);
  if (media == LinkMedia::kNone) return End(PictureFault::kNotAPicture);
  if (media == LinkMedia::kVideo) return BeginVideo(VideoId(link, hosts_.video));
  isLedOn_ = media != LinkMedia::kPicture;
  const QUrl address = OpenableUrl(link);
  if (!address.isValid()) return End(PictureFault::kBadAddress);
  Fetch(address);
}

void PictureChase::BeginVideo(std::u16string_view id) {
  videoId_ = id;
  if (order_.goal == ChaseGoal::kVideoFacts) return AskForFacts();
  const QUrl address = Filled(hosts_.video.thumbnail, videoId_);
  if (!address.isValid()) return End(PictureFault::kNotAPicture);
  Fetch(address);
}

QUrl PictureChase::InsteadOf(const QUrl& target) {
  if (!isLedOn_) return {};
  std::u16string link = target.toString(QUrl::FullyEncoded).toStdU16String();
  switch (ClassifyLink(link, hosts_)) {
    case LinkMedia::kPicture:
      isLedOn_ = false;
      return OpenableUrl(link);
    case LinkMedia::kVideo:
      isLedOn_ = false;
      videoId_ = VideoId(link, hosts_.video);
      return Filled(hosts_.video.thumbnail, videoId_);
    default:
      return {};
  }
}

void PictureChase::Fetch(const QUrl& address) {
  FileNeeds needs{limits_, static_cast<qint64>(kMostPageBytes),
                  [this](const QUrl& target) { return InsteadOf(target); }};
  fetch_ = std::make_unique<FileFetch>(web_, address, std::move(needs));
  connect(fetch_.get(), &FileFetch::Came, this, &PictureChase::OnCame);
  connect(fetch_.get(), &FileFetch::Done, this, &PictureChase::OnDone);
}

void PictureChase::OnCame() {
  const QByteArray& bytes = fetch_->Bytes();
  const PictureHeader header = HeaderOf(bytes);
  if (header.format == PictureFormat::kUnknown) {
    if (bytes.size() >= kTellingBytes) End(PictureFault::kUnknownFormat);
    return;
  }
  if (IsTooLarge(header)) return End(PictureFault::kTooManyPixels);
  const bool isNewlySized = size_.isEmpty() && header.IsSized();
  if (!isNewlySized && sinceNews_.isValid() && sinceNews_.elapsed() < kNewsMs) return;
  sinceNews_.start();
  size_ = QSize(header.width, header.height);
  ChaseNews news{size_, bytes.size(), fetch_->Expected(), {}};
  const bool isDue = !sincePartial_.isValid() || sincePartial_.elapsed() >= kPartialMs;
  if (order_.partial == PartialPictures::kShown && header.IsSized() && isDue) {
    sincePartial_.start();
    news.partial = bytes;
  }
  emit Came(news);
}

void PictureChase::OnDone(const FetchedFile& file) {
  if (file.fault != PictureFault::kNone) return End(file.fault);
  const PictureHeader header = HeaderOf(file.bytes);
  if (header.format != PictureFormat::kUnknown) {
    if (IsTooLarge(header)) return End(PictureFault::kTooManyPixels);
    return header.IsSized() ? End(PictureFault::kNone, file.bytes) : End(PictureFault::kDamaged);
  }
  if (!file.IsPage()) return End(PictureFault::kUnknownFormat);
  if (std::exchange(hasSought_, true)) return End(PictureFault::kNoPictureInPage);
  SeekIn(file);
}

void PictureChase::SeekIn(const FetchedFile& page) {
  const std::string address = page.address.toEncoded().toStdString();
  RunOnWorker(
      readers_, this,
      [bytes = page.bytes, charset = CharsetIn(page.type), address] {
        return PictureOfPage({bytes.constData(), static_cast<std::size_t>(bytes.size())}, charset, address);
      },
      [this, from = page.address](const std::string& picture) { FetchFromPage(from, picture); });
}

void PictureChase::FetchFromPage(const QUrl& page, const std::string& address) {
  QUrl picture(QString::fromStdString(address), QUrl::StrictMode);
  if (address.empty() || !picture.isValid()) return End(PictureFault::kNoPictureInPage);
  // A page that came securely gives its reader's wish to nobody in the open.
  if (page.scheme() == u"https") picture.setScheme(QStringLiteral("https"));
  isLedOn_ = false;
  Fetch(picture);
}

void PictureChase::End(PictureFault fault, const QByteArray& file) {
  // It may be the one that calls.
  if (fetch_) {
    fetch_->disconnect(this);
    fetch_.release()->deleteLater();
  }
  emit Found({fault, file, !videoId_.empty()});
  if (fault == PictureFault::kNone && !videoId_.empty()) return AskForFacts();
  emit Over();
}

void PictureChase::AskForFacts() {
  const QUrl address = Filled(hosts_.video.info, videoId_);
  if (!address.isValid()) {
    emit Over();
    return;
  }
  FileNeeds needs{limits_, 0, {}};
  needs.limits.bytes = kMostFactBytes;
  fetch_ = std::make_unique<FileFetch>(web_, address, std::move(needs));
  // What the site does not tell is not missed.
  connect(fetch_.get(), &FileFetch::Done, this, [this](const FetchedFile& file) {
    emit Told(FactsIn(file.bytes));
    emit Over();
  });
}

}  // namespace quillet
