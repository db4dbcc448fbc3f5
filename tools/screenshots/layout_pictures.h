// Pictures of the layout that fills the window and of the small window.
// User-interface thread.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

// "layout-fitted" and so on.
void ShootLayoutPictures(DemoRun& run);

}  // namespace quillet
