// The menus of the menu bar, made from the command table and brought up to date each time they open, and the
// keys of all commands in them. User-interface thread.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include <QAction>
#include <QMenu>
#include <QObject>

#include "app/interaction/command_runner.h"

namespace quillet {

// While no menu is open all its commands are given to the runner, which refuses what cannot act: so that no
// key of the client's is left to the BBS because its command is grey.
class CommandMenus : public QObject {
  Q_OBJECT

 public:
  // All outlive the object. The window has the keys, so that they work without a menu bar too.
  CommandMenus(const CommandRunner& runner, std::function<CommandWords()> words, QWidget& window);

  // Fills an empty menu, for good.
  void Fill(QMenu& menu, CommandMenu which);

 private:
  struct Item {
    MenuEntry entry;
    QAction* action;
  };
  QAction* AddTo(QMenu& menu, const MenuEntry& entry);
  // With the command's keys, in whatever menus it stands.
  QAction* ActionOf(Command command);
  void Resolve(const std::vector<Item>& items) const;

  const CommandRunner& runner_;
  std::function<CommandWords()> words_;
  QWidget& window_;
  std::array<QAction*, kCommandCount> actions_{};
};

}  // namespace quillet
