#include "render/picture_zoom.h"

#include <algorithm>
#include <cmath>

namespace quillet {
namespace {

int WholePixels(double pixels) {
  return std::max(static_cast<int>(std::lround(pixels)), 1);
}

// Of one direction: where the picture begins in the room.
double KeptInRoom(double begin, double length, double room) {
  if (length <= room) return (room - length) / 2;
  return std::clamp(begin, room - length, 0.0);
}

}  // namespace

void PictureZoom::SetPicture(PixelSize natural) {
  natural_ = natural;
  Fit();
}

void PictureZoom::SetRoom(PixelSize room, double scale) {
  const ZoomPoint before = Middle();
  room_ = {std::max(room.width, 1), std::max(room.height, 1)};
  scale_ = scale;
  if (isFitted_) return Fit();
  left_ += Middle().x - before.x;
  top_ += Middle().y - before.y;
  SetFactor(factor_, Middle());
}

double PictureZoom::FittedFactor() const {
  if (natural_.IsEmpty()) return 1;
  return std::min({static_cast<double>(room_.width) / natural_.width,
                   static_cast<double>(room_.height) / natural_.height, scale_});
}

// Nobody looks for less than all of it.
double PictureZoom::LeastFactor() const {
  return std::min(FittedFactor(), 1.0);
}

void PictureZoom::Fit() {
  isFitted_ = true;
  factor_ = FittedFactor();
  KeepInRoom();
}

void PictureZoom::ToggleActualSize(ZoomPoint at) {
  if (!isFitted_) return Fit();
  if (natural_.IsEmpty()) return;
  SetFactor(1, at);
  isFitted_ = FittedFactor() == 1;
}

void PictureZoom::ZoomBy(double steps, ZoomPoint at) {
  if (natural_.IsEmpty() || steps == 0) return;
  double factor = factor_ * std::pow(kStep, steps);
  const bool passesActual = (factor_ < 1) != (factor < 1) && factor_ != 1 && factor != 1;
  if (passesActual) factor = 1;
  if (factor <= FittedFactor() && factor_ > FittedFactor()) return Fit();
  SetFactor(factor, at);
  isFitted_ = factor_ == FittedFactor();
}

void PictureZoom::SetFactor(double factor, ZoomPoint at) {
  const double before = factor_;
  factor_ = std::clamp(factor, LeastFactor(), std::max(kMostFactor, FittedFactor()));
  left_ = at.x - (at.x - left_) * factor_ / before;
  top_ = at.y - (at.y - top_) * factor_ / before;
  KeepInRoom();
}

void PictureZoom::MoveBy(double right, double down) {
  left_ += right;
  top_ += down;
  KeepInRoom();
}

void PictureZoom::KeepInRoom() {
  left_ = KeptInRoom(left_, natural_.width * factor_, room_.width);
  top_ = KeptInRoom(top_, natural_.height * factor_, room_.height);
}

bool PictureZoom::CanMove() const {
  const PixelSize size = Place().size;
  return size.width > room_.width || size.height > room_.height;
}

ZoomPlace PictureZoom::Place() const {
  return {.left = static_cast<int>(std::lround(left_)),
          .top = static_cast<int>(std::lround(top_)),
          .size = {WholePixels(natural_.width * factor_), WholePixels(natural_.height * factor_)}};
}

PixelSize PictureZoom::WantedBounds() const {
  if (natural_.IsEmpty()) return room_;
  const double most = std::min(1.0, std::sqrt(kMostPixels / natural_.width / natural_.height));
  double factor = FittedFactor();
  while (factor < factor_ && factor < most)
    factor *= 2;
  factor = std::min(factor, most);
  return {WholePixels(natural_.width * factor), WholePixels(natural_.height * factor)};
}

}  // namespace quillet
