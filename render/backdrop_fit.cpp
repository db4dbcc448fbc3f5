#include "render/backdrop_fit.h"

#include <algorithm>
#include <cmath>

namespace quillet {
namespace {

bool IsSide(double length) {
  return std::isfinite(length) && length >= 1;
}

// The part that is left when the picture fills the window with its own proportions; `progress` as for
// VisibleBackdrop.
BackdropRect Crop(double pictureWidth, double pictureHeight, double windowWidth, double windowHeight,
                  double progress) {
  const double scale = std::max(windowWidth / pictureWidth, windowHeight / pictureHeight);
  const double width = std::min(windowWidth / scale, pictureWidth);
  const double height = std::min(windowHeight / scale, pictureHeight);
  return {(pictureWidth - width) * progress, (pictureHeight - height) * progress, width, height};
}

}  // namespace

BackdropRect VisibleBackdrop(BackdropStyle style, double pictureWidth, double pictureHeight,
                             double windowWidth, double windowHeight, double progress) {
  if (!IsSide(pictureWidth) || !IsSide(pictureHeight) || !IsSide(windowWidth) || !IsSide(windowHeight))
    return {};
  switch (style) {
    case BackdropStyle::kNone:
      break;
    case BackdropStyle::kStretch:
      return {0, 0, pictureWidth, pictureHeight};
    case BackdropStyle::kCrop:
      return Crop(pictureWidth, pictureHeight, windowWidth, windowHeight, 0.5);
    case BackdropStyle::kMovingCrop: {
      const double held = std::isnan(progress) ? 0 : std::clamp(progress, 0.0, 1.0);
      return Crop(pictureWidth, pictureHeight, windowWidth, windowHeight, held);
    }
  }
  return {};
}

}  // namespace quillet
