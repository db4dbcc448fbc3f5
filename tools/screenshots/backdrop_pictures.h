// Pictures of pages over a background picture.
// User-interface thread.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

// "backdrop-stretch-article" and so on.
void ShootBackdropPictures(DemoRun& run);

}  // namespace quillet
