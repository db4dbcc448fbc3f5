// Where the background picture lies in the window. Pure.
#pragma once

#include "settings/setting_choices.h"

namespace quillet {

struct BackdropRect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
};

// The part of a picture of pictureWidth x pictureHeight that fills a window of windowWidth x windowHeight, in
// picture pixels; empty for kNone or when any side is below 1. kMovingCrop slides over what kCrop cuts off:
// `progress` 0 shows the top or left, 1 the bottom or right.
BackdropRect VisibleBackdrop(BackdropStyle style, double pictureWidth, double pictureHeight,
                             double windowWidth, double windowHeight, double progress);

}  // namespace quillet
