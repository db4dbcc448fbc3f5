// Pictures of what hands do: text selected, links, the menu under the right button, the question before a
// paste, and the dialogs of the captions. User-interface thread.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

// "select", "link" and so on.
void ShootHandsPictures(DemoRun& run);

}  // namespace quillet
