// Where the main window stood when the program ended, as one line of text, and where it goes at the next
// start on the screens that there are then. Pure; CMainFrame calls it. Any thread.
#pragma once

#include <optional>

#include <QList>
#include <QRect>
#include <QString>

#include "render/layout.h"

namespace quillet {

// Sizes and places are in widget units and without the window's frame.
struct WindowPlace {
  QRect window;  // as it is when it is neither maximized nor in full screen
  LayoutMode layout = LayoutMode::kOrdinary;
  QSize otherSize;  // of the usual window while the small one shows, of the small one otherwise; or empty
  bool maximized = false;
  bool fullScreen = false;

  bool operator==(const WindowPlace&) const = default;
};

QString ToText(const WindowPlace& place);
// Nothing for a text that ToText does not write, or with a size or a place that no screen has.
std::optional<WindowPlace> ReadWindowPlace(QStringView text);

// A window that is wholly seen stays, even across screens. Any other one is brought, title bar and all, onto
// the screen that shows most of it, or the first one when none shows any, and made smaller where that is too
// small for it, but not smaller than `least`. `areas` are the parts of the screens that windows may use.
QRect OnScreens(const QRect& window, const QList<QRect>& areas, QSize least);

}  // namespace quillet
