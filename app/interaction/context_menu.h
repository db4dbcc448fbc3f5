// The menu of the right mouse button: what can be done with what lies under the pointer, and with what is
// selected. User-interface thread.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include <QMenu>
#include <QPoint>
#include <QString>
#include <QWidget>

#include "app/interaction/edit_commands.h"
#include "input/text_link.h"

namespace quillet {

struct ContextFacts {
  QString selection;  // empty: nothing is selected
  EditTarget target;  // under the pointer
  bool connected = false;
  QString firstEngine;  // empty: none
  QString secondEngine;
};

// Shown at a place of the screen, gone by itself.
void ShowContextMenu(QWidget& parent, const QPoint& at, const ContextFacts& facts,
                     std::function<void(EditCommand)> perform);

// All links in sight, for choosing one with the keyboard. Says so when there is none.
void ShowLinkMenu(QWidget& parent, const QPoint& at, const std::vector<TextLink>& links,
                  const std::function<void(const TextLink&)>& take);

}  // namespace quillet
