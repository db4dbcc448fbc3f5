// What the window says to the store of pictures and hears of it: which links' pictures it wants, and what is
// known of each. Plain values; user-interface thread.
#pragma once

#include <cstdint>

#include <QImage>
#include <QSize>
#include <QString>

#include "media/fetch/picture_bounds.h"
#include "media/fetch/picture_fault.h"

namespace quillet {

enum class Motion : std::uint8_t {
  kStill,  // an animation's first frame
  kPlays   // it moves; only for what is in sight, in a window that is shown
};

// How one link's picture is wanted now.
struct PictureWish {
  QString link;          // as it stands in the text
  PictureBounds bounds;  // device pixels that it is shown in
  Motion motion = Motion::kStill;

  bool operator==(const PictureWish&) const = default;
};

// Who wants pictures; each has a list of its own. The later ones are served first.
enum class PictureUser : std::uint8_t { kArticle, kOverScreen, kViewer };
inline constexpr int kPictureUsers = 3;

enum class PictureStage : std::uint8_t {
  kWaiting,  // wanted or not, nothing is known of it
  kSized,    // `size` is known; `image` is what has come of it, where that is wanted, or null
  kReady,    // `image` is the whole
  kFailed    // `fault` says why; only TryAgain leads on
};

// What is known of a link's picture at the moment.
struct PictureNow {
  PictureStage stage = PictureStage::kWaiting;
  QSize size;  // natural, in pixels, turned as it is shown; from kSized on
  // To be drawn: RGB32 or ARGB32_Premultiplied, as large as the bounds let it be. For an animation the frame
  // of now. Implicitly shared.
  QImage image;
  bool isAnimation = false;  // told with the whole file
  PictureFault fault = PictureFault::kNone;
  qint64 received = 0;   // bytes of the file
  qint64 expected = 0;   // 0: not told
  bool isVideo = false;  // the picture is its thumbnail
  QString title;         // of a video, where its site tells; one line, anybody's text
  int seconds = 0;       // the video's length, where its site tells
};

// A picture's file as it came, for saving and copying.
struct PictureFile {
  QByteArray bytes;  // empty: not there any more
  QString name;      // proposed: a plain name that ends as the format's files do
};

}  // namespace quillet
