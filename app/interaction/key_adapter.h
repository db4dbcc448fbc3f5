// From the toolkit's key events to the client's own KeyPress. Pure; user-interface thread.
#pragma once

#include <QKeyEvent>

#include "input/key_control.h"

namespace quillet {

KeyPress ToKeyPress(const QKeyEvent& event);

}  // namespace quillet
