// The dot over the window's button in the task bar, on systems that put such there. User-interface thread.
#pragma once

#include <QWidget>

namespace quillet {

// Shows or removes it. False where nothing is shown there, so that the window's icon has to tell.
bool ShowNewsBadge(const QWidget& window, bool isShown);

}  // namespace quillet
