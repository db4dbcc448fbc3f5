#include "bbs/automation/push_pages.h"

#include <algorithm>

#include "core/ascii.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::u16string_view kChoices[kPushKinds] = {u"值得推薦", u"給它噓聲", u"只加→註解"};
// What the BBS says when a push is too early.
constexpr std::u16string_view kTooEarly[] = {u"請再等", u"短時間內大量推文", u"間隔太近"};
constexpr std::u16string_view kWait = u"請再等";
constexpr int kSecondsPerMinute = 60;

std::u16string BottomText(const ScreenSnapshot& screen) {
  std::u16string text = FromBig5(screen.RowText(kBottomRow));
  std::erase(text, u'\0');
  return text;
}

bool IsFieldCell(const ScreenSnapshot& screen, int col) {
  return screen.AttrAt(kBottomRow, col) == kAttrInputField;
}

}  // namespace

PushPages::PushPages(const PageTests& pages)
    : pages_(pages),
      question_(ToBig5(u"您覺得這篇文章")),
      confirmation_(ToBig5(u" 確定[y/N]:")),
      message_(ToBig5(u" ◆")),
      marks_{ToBig5(u"推 "), ToBig5(u"噓 "), ToBig5(u"→ ")} {}

// ---- The question for the kind

bool PushPages::IsKindQuestion(const ScreenSnapshot& screen) const {
  if (!RowStartsWith(screen, kBottomRow, 0, std::string_view(question_))) return false;
  if (screen.cursorRow != kBottomRow || screen.cursorCol < 1 || screen.cursorCol >= kCols) return false;
  // The cursor comes to rest behind the question mark.
  const std::string_view before =
      screen.RowText(kBottomRow).substr(0, static_cast<std::size_t>(screen.cursorCol));
  const std::size_t last = before.find_last_not_of(' ');
  return last != before.npos && before[last] == '?';
}

char PushPages::KeyFor(const ScreenSnapshot& screen, PushKind kind) const {
  const std::u16string row = BottomText(screen);
  const std::size_t at = row.find(kChoices[static_cast<std::size_t>(kind)]);
  if (at == row.npos || at < 2 || row[at - 1] != u'.' || !IsAsciiDigit(row[at - 2])) return 0;
  return static_cast<char>(row[at - 2]);
}

// ---- The field for the words

std::optional<PushKind> PushPages::KindOfField(const ScreenSnapshot& screen) const {
  for (std::size_t kind = 0; kind < marks_.size(); ++kind)
    if (RowStartsWith(screen, kBottomRow, 0, std::string_view(marks_[kind])))
      return static_cast<PushKind>(kind);
  return std::nullopt;
}

bool PushPages::IsTextField(const ScreenSnapshot& screen) const {
  return screen.cursorRow == kBottomRow && KindOfField(screen) && pages_.IsInputField(screen) &&
         !IsConfirmation(screen) && !IsConfirmed(screen);
}

bool PushPages::IsEmptyTextField(const ScreenSnapshot& screen) const {
  if (!IsTextField(screen) || IsFieldCell(screen, screen.cursorCol - 1)) return false;
  const auto col = static_cast<std::size_t>(screen.cursorCol);
  const auto columns = static_cast<std::size_t>(FieldColumns(screen));
  const std::string_view field = screen.RowText(kBottomRow).substr(col, columns);
  return field.find_first_not_of(' ') == field.npos;
}

int PushPages::FieldColumns(const ScreenSnapshot& screen) {
  int end = std::max(0, screen.cursorCol);
  while (end < kCols && IsFieldCell(screen, end))
    ++end;
  return std::max(0, end - screen.cursorCol - 1);
}

// Words that read like the question are in the field, the question is not.
bool PushPages::IsConfirmation(const ScreenSnapshot& screen) const {
  const int start = screen.cursorCol - static_cast<int>(confirmation_.size());
  return screen.cursorRow == kBottomRow && KindOfField(screen) &&
         RowStartsWith(screen, kBottomRow, start, std::string_view(confirmation_)) &&
         !IsFieldCell(screen, screen.cursorCol - 1);
}

bool PushPages::IsConfirmed(const ScreenSnapshot& screen) const {
  return screen.cursorRow == kBottomRow && pages_.IsPushConfirm(screen) &&
         !IsFieldCell(screen, screen.cursorCol - 2);
}

// ---- Messages

bool PushPages::IsMessage(const ScreenSnapshot& screen) const {
  return screen.cursorRow == kBottomRow && screen.cursorCol == kCols - 1 &&
         RowStartsWith(screen, kBottomRow, 0, std::string_view(message_));
}

std::u16string PushPages::WordsOf(const ScreenSnapshot& screen) {
  std::u16string words = BottomText(screen);
  if (const std::size_t mark = words.find(u'◆'); mark != words.npos) words.erase(0, mark + 1);
  if (const std::size_t hint = words.rfind(u'[');
      hint != words.npos && words.find(u"任意鍵", hint) != words.npos)
    words.erase(hint);
  return std::u16string(Trimmed(words));
}

std::optional<int> PushPages::SecondsToWait(std::u16string_view words) {
  const auto says = [words](std::u16string_view text) { return words.find(text) != words.npos; };
  if (std::none_of(std::begin(kTooEarly), std::end(kTooEarly), says)) return std::nullopt;
  const std::size_t wait = words.find(kWait);
  if (wait == words.npos) return kUsualWait;
  std::size_t at = wait + kWait.size();
  while (at < words.size() && words[at] == u' ')
    ++at;
  constexpr int kMost = 100'000;
  int number = 0;
  const std::size_t first = at;
  for (; at < words.size() && IsAsciiDigit(words[at]) && number < kMost; ++at)
    number = number * 10 + (words[at] - u'0');
  if (at == first) return kUsualWait;
  const std::u16string_view unit = Trimmed(words.substr(at));
  return unit.starts_with(u'分') ? number * kSecondsPerMinute : number;
}

}  // namespace quillet
