// What meets a user between the login and the main menu. Which pages those are is said by the user's flags.
// The client's thread.
#pragma once

#include "demo/page.h"

namespace quillet::demo {

// Opens the main menu with everything that comes before it on top.
void OpenArrival(PageHost& host);

}  // namespace quillet::demo
