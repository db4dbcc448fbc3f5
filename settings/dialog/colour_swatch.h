// A small filled square of a colour, for check boxes that stand for one. User-interface thread.
#pragma once

#include <QIcon>

namespace quillet {

// Sharp at every size; its rim follows the palette, so that a white one is seen on white.
QIcon ColourSwatch(QRgb colour);

}  // namespace quillet
