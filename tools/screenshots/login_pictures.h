// Pictures of the login form over the demo's login page, and of how it comes back after a refusal.
// User-interface thread.
#pragma once

#include "tools/screenshots/demo_run.h"

namespace quillet {

// "61-login-form" and so on.
void ShootLoginPictures(DemoRun& run);

}  // namespace quillet
