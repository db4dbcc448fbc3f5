#include "media/fetch/animation_frames.h"

#include <new>
#include <utility>

namespace quillet {

AnimationFrames::AnimationFrames(QByteArray file, const PictureBounds& bounds,
                                 std::shared_ptr<const std::atomic<bool>> dropped)
    : file_(std::move(file)), bounds_(bounds), dropped_(std::move(dropped)) {}

AnimationFrames::~AnimationFrames() = default;

std::optional<AnimationFrame> AnimationFrames::Next() {
  try {
    QImage image = reader_ ? ReadFrame() : QImage();
    if (image.isNull()) {
      if (reader_ && (isAtBegin_ || repeats_ == 0)) return std::nullopt;
      if (reader_ && repeats_ > 0) --repeats_;
      if (!Open()) return std::nullopt;
      image = ReadFrame();
      if (image.isNull()) return std::nullopt;
    }
    const int delay = reader_->nextImageDelay();
    return AnimationFrame{std::move(image), delay < kShortestMs ? kHurriedMs : delay,
                          std::exchange(isAtBegin_, false), repeats_ < 0};
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

bool AnimationFrames::Open() {
  const PictureHeader header = ReadPictureHeader({file_.constData(), static_cast<std::size_t>(file_.size())});
  if (!header.IsSized() || IsTooLarge(header)) return false;
  reader_.reset();
  device_ = std::make_unique<DroppableBytes>(file_, *dropped_);
  reader_ = ReaderOf(*device_, header, bounds_);
  isAtBegin_ = true;
  // Once: for that the whole file is looked through.
  if (!std::exchange(isCounted_, true)) repeats_ = reader_->loopCount();
  return true;
}

QImage AnimationFrames::ReadFrame() {
  device_->RenewPatience();
  if (*dropped_ || !reader_->canRead()) return {};
  return Drawable(reader_->read());
}

}  // namespace quillet
