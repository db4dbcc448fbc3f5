// The program's icon, drawn at every size it is asked for in, so that no picture file has to come along.
// User-interface thread.
#pragma once

#include <QIcon>

namespace quillet {

QIcon MakeWindowIcon();

// A sheet of text, for when the window is to look like a text editor's.
QIcon MakeDisguiseIcon();

}  // namespace quillet
