// An article on paper: black on white, 80 columns over the page's width, with its title above and the page's
// number below. Used by the article printer. User-interface thread.
#pragma once

#include <QPrinter>
#include <QString>

#include "input/text/selectable_text.h"

namespace quillet {

// The pages that the printer is told to print, else all. `font` is the one of the settings. False when the
// printer takes none, or not all.
bool PrintPages(QPrinter& printer, const SelectableText& text, const QString& title, const QString& font);

}  // namespace quillet
