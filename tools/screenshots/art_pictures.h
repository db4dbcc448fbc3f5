// Pictures of text art at three sizes of the window, for the scale factor of the process.
// User-interface thread.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

// "art-skyline-1280x720@1.5" and so on; sizes in widget units.
void ShootArtPictures(DemoRun& run);

}  // namespace quillet
