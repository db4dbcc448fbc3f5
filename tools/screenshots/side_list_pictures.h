// Pictures of the side lists, filled as a person who has used them for a while would see them.
// User-interface thread.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

// "side-hot" and so on.
void ShootSideListPictures(DemoRun& run);

}  // namespace quillet
