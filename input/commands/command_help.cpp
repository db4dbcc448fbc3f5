#include "input/commands/command_help.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/ascii.h"
#include "input/commands/page_help.h"

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
  if (IsShown(entry, state)) group.lines.push_back(std::move(line));
}

void AddPages(std::vector<HelpGroup>& groups) {
  for (const PageHelp& page : HelpOfPages()) {
    HelpGroup& group = groups.emplace_back();
    group.title = page.title;
    for (const PageHelpLine& line : page.lines)
      group.lines.push_back(
          {.name = std::u16string(line.name), .keys = std::u16string(line.keys), .alone = {}});
  }
}

std::u16string Folded(std::u16string_view text) {
  std::u16string folded(text);
  for (char16_t& unit : folded)
    unit = AsciiLower(unit);
  return folded;
}

std::vector<std::u16string> WordsOf(std::u16string_view text) {
  std::vector<std::u16string> words(1);
  for (const char16_t unit : Folded(text)) {
    if (unit != u' ' && unit != u'\u3000')
      words.back() += unit;
    else if (!words.back().empty())
      words.emplace_back();
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

}  // namespace

std::vector<HelpGroup> MakeHelp(const CommandState& state, const CommandWords& words) {
  std::vector<HelpGroup> groups;
  for (const CommandMenu menu : kMenus) {
    HelpGroup& group = groups.emplace_back();
    group.title = u"選單：" + WithoutLetter(TitleOf(menu));
    for (const MenuEntry& entry : EntriesOf(menu))
      Add(group, entry, state, words);
  }
  HelpGroup context{.title = u"滑鼠右鍵的選單", .lines = {}};
  HelpGroup beside{.title = u"畫面旁的按鈕", .lines = {}};
  CommandWords anybody = words;
  anybody.id = u"使用者";
  for (const CommandRow& row : AllCommands())
    if (row.menu == CommandMenu::kNone)
      Add(row.siteKeyName.empty() ? context : beside, {.command = row.command}, state, anybody);
  groups.push_back(std::move(context));
  groups.push_back(std::move(beside));
  AddPages(groups);
  return groups;
}

std::vector<HelpGroup> FilterHelp(const std::vector<HelpGroup>& groups, std::u16string_view wanted) {
  const std::vector<std::u16string> words = WordsOf(wanted);
  std::vector<HelpGroup> found;
  for (const HelpGroup& group : groups) {
    HelpGroup rest{.title = group.title, .lines = {}};
    for (const HelpLine& line : group.lines) {
      const std::u16string all =
          Folded(group.title + u'\n' + line.name + u'\n' + line.keys + u'\n' + line.alone);
      const auto has = [&](const std::u16string& word) { return all.find(word) != all.npos; };
      if (std::all_of(words.begin(), words.end(), has)) rest.lines.push_back(line);
    }
    if (!rest.lines.empty()) found.push_back(std::move(rest));
  }
  return found;
}

}  // namespace quillet
