#include "app/interaction/command_menus.h"

#include <utility>

#include <QActionGroup>
#include <QKeySequence>

namespace quillet {
namespace {

QKeySequence KeysOf(Command command) {
  return QKeySequence::fromString(QString::fromStdU16String(NameOf(RowOf(command).keys.front())));
}

}  // namespace

CommandMenus::CommandMenus(const CommandRunner& runner, std::function<CommandWords()> words, QWidget& window)
    : QObject(&window), runner_(runner), words_(std::move(words)), window_(window) {}

void CommandMenus::Fill(QMenu& menu, CommandMenu which) {
  std::vector<Item> items;
  QActionGroup* oneOf = nullptr;
  for (const MenuEntry& entry : EntriesOf(which)) {
    if (entry.gap == Gap::kLine) menu.addSeparator();
    QAction* const action = AddTo(menu, entry);
    if (action->isCheckable() && RowOf(entry.command).mark == Mark::kOneOf) {
      if (oneOf == nullptr) oneOf = new QActionGroup(&menu);
      oneOf->addAction(action);
    }
    items.push_back({entry, action});
  }
  Resolve(items);
  const auto setAllEnabled = [items] {
    for (const Item& item : items)
      item.action->setEnabled(item.entry.command != Command::kNone);
  };
  setAllEnabled();
  connect(&menu, &QMenu::aboutToShow, this, [this, items] { Resolve(items); });
  connect(&menu, &QMenu::aboutToHide, this, setAllEnabled);
}

QAction* CommandMenus::AddTo(QMenu& menu, const MenuEntry& entry) {
  const bool isOwn = entry.command != Command::kNone && entry.text.empty();
  QAction* const action = isOwn ? ActionOf(entry.command) : new QAction(&menu);
  menu.addAction(action);
  if (!isOwn)
    connect(action, &QAction::triggered, this, [this, command = entry.command] { runner_.Run(command); });
  return action;
}

QAction* CommandMenus::ActionOf(Command command) {
  QAction*& action = actions_[static_cast<std::size_t>(command)];
  if (action != nullptr) return action;
  const CommandRow& row = RowOf(command);
  action = new QAction(&window_);
  action->setShortcut(KeysOf(command));
  action->setAutoRepeat(row.held == Held::kAgain);
  action->setCheckable(row.mark != Mark::kNone);
  connect(action, &QAction::triggered, this, [this, command] { runner_.Run(command); });
  window_.addAction(action);
  return action;
}

void CommandMenus::Resolve(const std::vector<Item>& items) const {
  const CommandState state = runner_.State();
  const CommandWords words = words_();
  for (const auto& [entry, action] : items) {
    QString text = QString::fromStdU16String(TextOf(entry, state, words));
    const bool tellsKeys = !entry.text.empty() && entry.keys == EntryKeys::kTold;
    if (tellsKeys && entry.command != Command::kNone)
      text += u'\t' + KeysOf(entry.command).toString(QKeySequence::NativeText);
    action->setText(text);
    action->setVisible(IsShown(entry, state));
    action->setEnabled(IsEnabled(entry.command, state));
    action->setChecked(IsMarked(entry.command, state));
  }
}

}  // namespace quillet
