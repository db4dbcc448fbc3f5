// The frames of an animation one after the other, again and again, decoded when they are asked for: a file of
// a million frames takes no more memory than the one at hand. One thread at a time, and not the user
// interface's.
#pragma once

#include <atomic>
#include <memory>
#include <optional>

#include <QByteArray>
#include <QImage>
#include <QImageReader>

#include "media/fetch/picture_decoder.h"

namespace quillet {

struct AnimationFrame {
  QImage image;
  int milliseconds = 0;     // that it is shown for
  bool beginsPass = false;  // the animation's first one
  bool isEndless = false;   // of an animation that goes on for ever
};

// What shows for less is shown for kHurriedMs, as browsers do: such files were made for readers that could
// not keep up.
inline constexpr int kShortestMs = 20;
inline constexpr int kHurriedMs = 100;

class AnimationFrames {
 public:
  // `dropped` ends whatever is at work for good; both outlive every call.
  AnimationFrames(QByteArray file, const PictureBounds& bounds,
                  std::shared_ptr<const std::atomic<bool>> dropped);
  ~AnimationFrames();

  // Nothing where there is no frame that can be read, or, the passes that the file asks for being over, no
  // more.
  std::optional<AnimationFrame> Next();
  qint64 FileBytes() const { return file_.size(); }

 private:
  bool Open();
  QImage ReadFrame();

  QByteArray file_;
  PictureBounds bounds_;
  std::shared_ptr<const std::atomic<bool>> dropped_;
  std::unique_ptr<DroppableBytes> device_;
  std::unique_ptr<QImageReader> reader_;
  bool isAtBegin_ = true;
  int repeats_ = 0;  // that the file asks for beyond the first pass; negative: for ever
  bool isCounted_ = false;
};

}  // namespace quillet
