// The last screen before the connection ends. The client's thread.
#pragma once

#include <string_view>

#include "demo/page.h"

namespace quillet::demo {

// Shows the farewell with one line of its own and hangs up.
void ShowFarewell(PageHost& host, std::u16string_view line);

// Asks on row 22 whether the user really wants to leave.
void AskToLeave(PageHost& host);

}  // namespace quillet::demo
