// The menu of the right mouse button: what can be done with what lies under the pointer, and with what is
// selected; and the menu of the links in sight. User-interface thread.
#pragma once

#include <functional>
#include <vector>

#include <QPoint>
#include <QString>
#include <QWidget>

#include "app/interaction/command_runner.h"
#include "input/text/text_link.h"

namespace quillet {

// A text from the screen as a part of a menu's entry: in one line, and not too long.
std::u16string AsPartOfEntry(const std::u16string& text);

// Shown at a place of the screen, gone by itself. `runner` outlives it.
void ShowContextMenu(QWidget& parent, const QPoint& at, const CommandRunner& runner,
                     const CommandTarget& target, const CommandWords& words,
                     CommandMenu which = CommandMenu::kContext);

// All links in sight, for choosing one with the keyboard. Says so when there is none.
void ShowLinkMenu(QWidget& parent, const QPoint& at, const std::vector<TextLink>& links,
                  const std::function<void(const TextLink&)>& take);

}  // namespace quillet
