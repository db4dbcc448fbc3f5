// How the login form's controls look on every system: in the colours of the panel that they stand on, and as
// large as its letters. User-interface thread.
#pragma once

#include <QPalette>
#include <QWidget>

#include "app/overlay/panel_look.h"

namespace quillet {

// The panel's colours, and those that only controls need.
struct LoginFormColours {
  const panel_look::Colours& panel;
  QColor field;        // where one types or ticks
  QColor edge;         // around fields and buttons
  QColor button;       //
  QColor mainButton;   // the one that Enter presses
  QColor selection;    // under selected letters
  QColor onSelection;  // the letters there
  QColor faint;        // of what is out of use, and of hints in empty fields
};

// `work`: the window is in disguise.
const LoginFormColours& LoginFormColoursFor(bool work);
QPalette LoginFormPalette(const LoginFormColours& colours);

// Gives the control, and what opens from it, the form's style. `textSize` is the letters' height in widget
// units. `colours` outlive the control.
void StyleLoginControl(QWidget& control, double textSize, const LoginFormColours& colours);

}  // namespace quillet
