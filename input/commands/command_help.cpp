#include "input/commands/command_help.h"

#include <array>
#include <utility>

namespace quillet {
namespace {

constexpr std::array kMenus{CommandMenu::kConnection, CommandMenu::kEdit,     CommandMenu::kLook,
                            CommandMenu::kArticle,    CommandMenu::kSettings, CommandMenu::kHelp};

std::u16string KeysOf(const CommandRow& row) {
  if (!row.siteKeyName.empty()) return std::u16string(row.siteKeyName);
  std::u16string keys;
  for (const KeyChord& chord : row.keys) {
    const std::u16string name = NameOf(chord);
    if (!name.empty() && !keys.empty()) keys += u"、";
    keys += name;
  }
  return keys;
}

void Add(HelpGroup& group, const MenuEntry& entry, const CommandState& state, const CommandWords& words) {
  const CommandRow& row = RowOf(entry.command);
  HelpLine line{.name = WithoutLetter(TextOf(entry, state, words)), .keys = KeysOf(row), .alone = {}};
  if (row.articleKey != 0) line.alone = row.articleKey;
  if (!line.keys.empty() && IsShown(entry, state)) group.lines.push_back(std::move(line));
}

}  // namespace

std::vector<HelpGroup> MakeHelp(const CommandState& state, const CommandWords& words) {
  std::vector<HelpGroup> groups;
  for (const CommandMenu menu : kMenus) {
    HelpGroup& group = groups.emplace_back();
    group.title = WithoutLetter(TitleOf(menu));
    for (const MenuEntry& entry : EntriesOf(menu))
      Add(group, entry, state, words);
  }
  HelpGroup& beside = groups.emplace_back();
  beside.title = u"畫面旁的按鈕";
  for (const CommandRow& row : AllCommands())
    if (!row.siteKeyName.empty()) Add(beside, {.command = row.command}, state, words);
  return groups;
}

}  // namespace quillet
