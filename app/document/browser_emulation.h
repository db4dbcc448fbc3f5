// Tells the system's embedded browser which version of itself Quillet's pages are made for. A registry value
// that means something on Windows only; elsewhere it is kept and read by nobody. User-interface thread.
#pragma once

#include "platform/registry.h"

namespace quillet {

// Writes the value unless it stands there already, and reads it back. False when it is not what it should be.
bool SetBrowserEmulation(Registry& registry);

}  // namespace quillet
