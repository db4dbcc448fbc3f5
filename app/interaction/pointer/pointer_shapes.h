// What the pointer looks like over what a click would do. User-interface thread.
#pragma once

#include <QCursor>

#include "input/mouse_scheme.h"

namespace quillet {

// `scale`: device pixels per widget unit.
QCursor CursorOf(PointerShape shape, qreal scale);

}  // namespace quillet
