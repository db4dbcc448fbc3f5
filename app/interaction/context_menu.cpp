#include "app/interaction/context_menu.h"

#include <QMenu>

#include "app/interaction/pointer/link_hover.h"

namespace quillet {
namespace {

// Of a text from the screen in a menu entry.
constexpr int kLongestText = 24;
constexpr int kLongestTarget = 60;

// "&" would make the next letter the entry's key.
QString AsEntry(QString text, int longest) {
  text = text.simplified();
  if (text.size() > longest) text = text.left(longest) + u'…';
  return text.replace(u'&', u"&&"_qs);
}

QMenu* NewMenu(QWidget& parent) {
  auto* const menu = new QMenu(&parent);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  return menu;
}

}  // namespace

std::u16string AsPartOfEntry(const std::u16string& text) {
  return AsEntry(QString::fromStdU16String(text), kLongestText).toStdU16String();
}

void ShowContextMenu(QWidget& parent, const QPoint& at, const CommandRunner& runner,
                     const CommandTarget& target, const CommandWords& words, CommandMenu which) {
  QMenu* const menu = NewMenu(parent);
  const CommandState state = runner.State(target);
  for (const MenuEntry& entry : EntriesOf(which)) {
    if (entry.gap == Gap::kLine) menu->addSeparator();
    if (!IsShown(entry, state)) continue;
    QAction* const item = menu->addAction(QString::fromStdU16String(TextOf(entry, state, words)));
    item->setEnabled(IsEnabled(entry.command, state));
    // What was selected may have gone while the menu was open.
    QObject::connect(item, &QAction::triggered, menu, [&runner, entry, target] {
      if (IsShown(entry, runner.State(target)))
        runner.Run(entry.command, target);
      else
        runner.Refuse(entry.command, Refusal::kGone);
    });
  }
  menu->popup(at);
}

void ShowLinkMenu(QWidget& parent, const QPoint& at, const std::vector<TextLink>& links,
                  const std::function<void(const TextLink&)>& take) {
  QMenu* const menu = NewMenu(parent);
  if (links.empty()) menu->addAction(u"這個畫面上沒有連結"_qs)->setEnabled(false);
  for (const TextLink& link : links) {
    QAction* const item = menu->addAction(AsEntry(LinkHover::DescriptionOf(link), kLongestTarget));
    QObject::connect(item, &QAction::triggered, menu, [take, link] { take(link); });
  }
  menu->popup(at);
  if (!links.empty()) menu->setActiveAction(menu->actions().front());
}

}  // namespace quillet
