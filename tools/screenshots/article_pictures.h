// Pictures of a long article scrolled, with the spacings and with the options of its push lines.
// User-interface thread.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

// "article-middle" and so on.
void ShootArticlePictures(DemoRun& run);

}  // namespace quillet
