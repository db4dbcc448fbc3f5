// Pictures of the login form over the demo's login page, and of how it comes back after a refusal.
// User-interface thread.
#pragma once

#include <QString>

namespace quillet {

// "61-login-form.png" and so on into the folder, which exists. False when one could not be written or the
// demo did not come up.
bool SaveLoginPictures(const QString& folder);

}  // namespace quillet
