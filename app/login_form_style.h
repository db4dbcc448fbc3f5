// How the login form's controls look on every system: dark as the panel that they stand on, and as large as
// its letters. User-interface thread.
#pragma once

#include <QPalette>
#include <QWidget>

namespace quillet {

QPalette LoginFormPalette();

// Gives the control, and what opens from it, the form's style. `textSize` is the letters' height in widget
// units.
void StyleLoginControl(QWidget& control, double textSize);

}  // namespace quillet
