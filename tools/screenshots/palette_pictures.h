// Pictures of every page of the demo in the dimmed palette and in disguise.
// User-interface thread.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

// "dim-01-login" and so on.
void ShootDimPictures(DemoRun& run);

// "work-01-login" and so on, and "work-window" with the menus.
void ShootDisguisePictures(DemoRun& run);

}  // namespace quillet
