// What is known and held of each link's picture, and how much memory that takes. Decides what goes when it is
// too much; starts nothing. User-interface thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QString>

#include "media/fetch/picture_wish.h"

namespace quillet {

// Where a picture's file is.
enum class FileState : std::uint8_t {
  kUnknown,   // to be looked for on the disk
  kSeeking,   // which is going on
  kNotHere,   // to be fetched
  kFetching,  // which is going on
  kHere,      // in memory, or at least on the disk
  kFailed
};

struct DecodedImage {
  QSize size;  // that was wanted, which an odd file's image may differ from
  QImage image;
};

struct ShelvedPicture {
  PictureNow now;  // but for stage and image, which follow from the rest
  FileState file = FileState::kUnknown;
  QByteArray bytes;  // of the file; empty: not in memory
  bool isOnDisk = false;
  qint64 workBytes = 0;  // that a decoder takes for it, beside what comes of it
  quint64 fetch = 0;     // the chase, while kFetching
  std::vector<DecodedImage> images;
  QImage partial;
  QSize decoding;  // being decoded to; empty: nothing is
  std::shared_ptr<std::atomic<bool>> dropped;
  bool isAskedForFacts = false;

  std::uint64_t listedAt = 0;  // the last turn in which somebody wanted it
  std::vector<QSize> wanted;   // sizes, in that turn
  QSize wantedPlaying;         // the size in which it is to move; empty: it is not
  bool isAfforded = false;     // the memory's bound reaches so far down the wishes

  const QImage* ImageOf(QSize size) const;
  // The one for this size, else the next larger one, else the largest; null: there is none.
  QImage Nearest(QSize size) const;
  // Images and file, in bytes.
  qint64 Held() const;
  // Puts away images that are of no size that is wanted.
  void DropOthers();
};

class PictureShelf {
 public:
  // Made when it is not there.
  ShelvedPicture& At(const QString& link) { return pictures_[link]; }
  ShelvedPicture* Find(const QString& link);
  const ShelvedPicture* Find(const QString& link) const;

  // Takes away, until no more than `mostBytes` are held, what was listed longest ago, and then, from its end,
  // of what is listed now: `order`, most urgent first. Those that `turn` is the listing turn of are listed
  // now.
  void Trim(qint64 mostBytes, std::uint64_t turn, const std::vector<QString>& order);

 private:
  void ForgetOldest(std::uint64_t turn);

  QHash<QString, ShelvedPicture> pictures_;
};

}  // namespace quillet
