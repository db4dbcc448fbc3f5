// What a command does that stands for a key on the BBS's page, given by a button beside it. Pure;
// user-interface thread.
#pragma once

#include "input/commands/commands.h"
#include "input/mouse_scheme.h"

namespace quillet {

// Nothing for a command that is no key of the page.
MouseAction DecidePageCommand(Command command, Picture picture);

}  // namespace quillet
