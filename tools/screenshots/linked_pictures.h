// Pictures below the lines of their links: in each size, while an article scrolls, in the dim palette, and
// over the screen. Part of quillet_screenshots.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

void ShootLinkedPictures(DemoRun& run);

}  // namespace quillet
