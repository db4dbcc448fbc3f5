// Pictures of what the black and white lists, title words and keywords do to lists and push lines.
// User-interface thread.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

// "names-hide" and so on.
void ShootNameListPictures(DemoRun& run);

}  // namespace quillet
