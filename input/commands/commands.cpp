#include "input/commands/commands.h"

#include <algorithm>
#include <utility>

#include "core/key_sequence.h"
#include "settings/files/text_lines.h"

namespace quillet {
namespace {

// Without a connection this is what is missing, whatever else is.
constexpr Conditions kOfConnection{Condition::kConnected, Condition::kHasLine, Condition::kBegun,
                                   Condition::kArticle, Condition::kLocalArticle};
constexpr Conditions kOfAutomation{Condition::kAutomation, Condition::kCodeOutOfReach};

std::u16string_view WordsOf(std::u16string_view text, const OtherWords& other, const CommandState& state) {
  return !other.text.empty() && state.holds.Has(other.when) ? other.text : text;
}

std::u16string_view PrefixOf(Modifier modifier) {
  switch (modifier) {
    case Modifier::kShift:
      return u"Shift+";
    case Modifier::kControl:
      return u"Ctrl+";
    case Modifier::kControlShift:
      return u"Ctrl+Shift+";
    case Modifier::kAlt:
      return u"Alt+";
    case Modifier::kControlAlt:
      return u"Ctrl+Alt+";
    case Modifier::kNone:
    case Modifier::kOther:
      break;
  }
  return {};
}

void Fill(std::u16string& text, std::u16string_view place, const std::u16string& words) {
  if (const std::size_t at = text.find(place); at != text.npos) text.replace(at, place.size(), words);
}

}  // namespace

Refusal WhyNot(Command command, const CommandState& state) {
  if (command == Command::kNone) return Refusal::kNotNow;
  const CommandRow& row = RowOf(command);
  const Conditions missing = row.needs.Without(state.holds);
  if (missing.HasAny(kOfConnection) && !state.holds.Has(Condition::kConnected)) return Refusal::kNotConnected;
  if (!missing.IsEmpty() || !state.holds.HasAll(row.shown)) return Refusal::kNotNow;
  if (!row.pages.IsEmpty() && !row.pages.Has(state.page)) return Refusal::kNotNow;
  if (!state.holds.HasAny(row.notWhile)) return Refusal::kNone;
  return row.notWhile.HasAny(kOfAutomation) ? Refusal::kBusy : Refusal::kNotNow;
}

bool IsMarked(Command command, const CommandState& state) {
  const CommandRow& row = RowOf(command);
  return row.mark != Mark::kNone && state.holds.Has(row.markedWhile);
}

Command CommandForKey(const KeyPress& press) {
  for (const CommandRow& row : AllCommands()) {
    const bool given = std::any_of(row.keys.begin(), row.keys.end(),
                                   [&](const KeyChord& chord) { return chord.IsPressedBy(press); });
    if (given && row.holder == KeyHolder::kTerminal) return row.command;
  }
  return Command::kNone;
}

Command CommandForArticleKey(const KeyPress& press) {
  if (press.control || press.alt || press.text.size() != 1) return Command::kNone;
  const std::span<const CommandRow> rows = AllCommands();
  const auto found = std::find_if(
      rows.begin(), rows.end(), [&](const CommandRow& row) { return row.articleKey == press.text.front(); });
  return found == rows.end() || found->articleKey == 0 ? Command::kNone : found->command;
}

bool IsShown(const MenuEntry& entry, const CommandState& state) {
  return state.holds.HasAll(entry.shown) && state.holds.HasAll(RowOf(entry.command).shown);
}

std::u16string TextOf(const MenuEntry& entry, const CommandState& state, const CommandWords& words) {
  const CommandRow& row = RowOf(entry.command);
  std::u16string text(entry.text.empty() ? WordsOf(row.text, row.other, state) : entry.text);
  Fill(text, u"{engine1}", words.firstEngine);
  Fill(text, u"{engine2}", words.secondEngine);
  Fill(text, u"{id}", words.id);
  // Last: it may hold anything.
  Fill(text, u"{selection}", words.selection);
  return text;
}

std::u16string WithoutLetter(std::u16string_view text) {
  text = text.substr(0, text.rfind(u"(&"));
  if (text.ends_with(u'…')) text.remove_suffix(1);
  return std::u16string(text);
}

std::u16string NameOf(Command command, const CommandState& state) {
  const CommandRow& row = RowOf(command);
  return WithoutLetter(row.caption.other.text.empty() ? row.text : CaptionOf(command, state));
}

std::u16string NameOf(const KeyChord& chord) {
  constexpr int kBeforeF1 = kKeyF1 - 1;
  if (chord.virtualKey == 0) return {};
  std::u16string name(PrefixOf(chord.modifier));
  if (chord.virtualKey == kKeyPlus) return name + u"+";
  if (chord.virtualKey == kKeyMinus) return name + u"-";
  if (chord.virtualKey >= kKeyF1) return name + u"F" + ToText(chord.virtualKey - kBeforeF1);
  if (chord.virtualKey == kKeyInsert) return name + u"Ins";
  if (chord.virtualKey == kKeyTab) return name + u"Tab";
  return name + static_cast<char16_t>(chord.virtualKey);
}

std::u16string TipOf(Command command, const CommandState& state) {
  const CommandRow& row = RowOf(command);
  std::u16string key(row.siteKeyName);
  if (key.empty()) key = NameOf(row.keys.front());
  if (row.articleKey != 0 && state.page == PageKind::kReader) key = row.articleKey;
  return key.empty() ? NameOf(command, state) : NameOf(command, state) + u" (" + key + u")";
}

std::u16string_view CaptionOf(Command command, const CommandState& state) {
  const Caption& caption = RowOf(command).caption;
  return state.holds.HasAll(caption.shown) ? WordsOf(caption.text, caption.other, state)
                                           : std::u16string_view();
}

}  // namespace quillet
