// The program's own small pictures, drawn by us as vector sources and part of the program: asked for by
// number, rendered at the size that is needed and kept. User-interface thread.
#pragma once

#include <cstdint>
#include <map>
#include <tuple>

#include <QImage>
#include <QSize>
#include <QString>

namespace quillet {

// The numbers are the resource numbers of the pictures' files.
enum class EmbeddedImage {
  kTextEditor = 314,  // the window's icon in disguise
  kHotList = 316,     // the buttons at the sides of the screen
  kTrackedList = 317,
  kBookmarkList = 318,
  kOptions = 319,
  kFire = 359,     // a much pushed article
  kPennant = 360,  // a flag before a line; takes the colour it is asked in
  kDeleted = 361,  // a deleted article
  kHidden = 362,   // something that the lists hide
  kPush = 363,     // push the article
  kToTop = 364,    // the ends of an article
  kToEnd = 365,
  kFolder = 366,  // of a side list
  kNews = 370,    // new push lines have come
  kEdited = 371,  // the author has changed the article
  // From 401 on: of the commands on a page, which number them (input/command_table).
};

class EmbeddedImages {
 public:
  // `folder` holds the pictures as "<number>.svg"; the program's own by default.
  explicit EmbeddedImages(QString folder = QStringLiteral(":/images"));

  // Renders picture `image` into `size` device pixels, its square in the middle of them; null when the
  // picture is missing or damaged, and for a size that is empty or above kLargestSide. A picture drawn in
  // "currentColor" comes in `colour` (0xRRGGBB). Valid until the next call.
  const QImage& At(EmbeddedImage image, QSize size, std::uint32_t colour = 0xC0C0C0);

  // What is kept, in bytes; never more than kBudget, in at most kMostKept pictures.
  qsizetype KeptBytes() const { return keptBytes_; }

  static constexpr int kLargestSide = 1024;
  static constexpr qsizetype kBudget = qsizetype{8} << 20;
  static constexpr std::size_t kMostKept = 1000;

 private:
  using Key = std::tuple<EmbeddedImage, int, int, std::uint32_t>;

  QImage Render(EmbeddedImage image, QSize size, std::uint32_t colour) const;

  QString folder_;
  std::map<Key, QImage> rendered_;
  qsizetype keptBytes_ = 0;
};

}  // namespace quillet
