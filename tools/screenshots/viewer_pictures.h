// Pictures of looking at one picture, of what is known of a video, and of what the first start asks, for the
// scale factor of the process. User-interface thread.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

// "viewer-fitted@1.5" and so on.
void ShootViewerPictures(DemoRun& run);

}  // namespace quillet
