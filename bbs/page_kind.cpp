#include "bbs/page_kind.h"

#include <string_view>

#include "bbs/page_flags.h"
#include "bbs/page_tests.h"

namespace quillet {
namespace {

constexpr int kFirstListRow = 2;
constexpr int kLastListRow = 22;
// "●", a list's cursor, and " ◆", which begins a message that waits for a key.
constexpr std::string_view kBullet = "\xA1\xB4";
constexpr std::string_view kMessage = " \xA1\xBB";

// Where these flags are set, keys make up an answer.
constexpr std::uint32_t kAnsweredPages =
    PF_PUSH_LINE | PF_PUSH_CONFIRM | PF_PUSH_OVER_READER | PF_ANIMATION_PROMPT;
// The notice in front of a disputed article looks like a reader, but has nothing to read on in.
constexpr std::uint32_t kWaitingPages = PF_PAUSE | PF_ANYKEY_BANNER | PF_DISPUTED_NOTICE;

bool Has(const ScreenSnapshot& screen, std::uint32_t flags) {
  return (screen.pageFlags & flags) != 0;
}

bool IsLetterOrDigit(char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9');
}

// The classifier looks for no field on a reader's page, though prompts lie over that one too, above its
// status line, which is black on white itself.
bool IsFieldOverReader(const ScreenSnapshot& screen) {
  return Has(screen, PF_READING) && screen.CursorInside() && screen.cursorRow < kBottomRow &&
         screen.AttrAt(screen.cursorRow, screen.cursorCol) == kAttrInputField;
}

// Push refusals too, which are flagged as push lines.
bool IsMessage(const ScreenSnapshot& screen) {
  return screen.cursorRow == kBottomRow && screen.cursorCol == kCols - 1 &&
         RowStartsWith(screen, kBottomRow, 0, kMessage);
}

// "(X)", the key of a menu's line, follows at the column or behind blanks.
bool NamesKey(std::string_view row, std::size_t col) {
  const std::size_t open = row.find_first_not_of(' ', col);
  return open != std::string_view::npos && open + 2 < row.size() && row[open] == '(' &&
         IsLetterOrDigit(row[open + 1]) && row[open + 2] == ')';
}

// A cursor mark ends at the column, and behind it comes the key of a menu's line.
bool IsChosenMenuLine(std::string_view row, std::size_t col) {
  const bool mark = row[col] == '>' || (col > 0 && row.substr(col - 1, kBullet.size()) == kBullet);
  return mark && NamesKey(row, col + 1);
}

bool HasChosenMenuLine(std::string_view row) {
  for (std::size_t col = 0; col < row.size(); ++col)
    if (IsChosenMenuLine(row, col)) return true;
  return false;
}

bool IsMenu(const ScreenSnapshot& screen) {
  if (!Has(screen, PF_STAR_LINE))
    return screen.CursorInside() &&
           IsChosenMenuLine(screen.RowText(screen.cursorRow), static_cast<std::size_t>(screen.cursorCol));
  // The cursor is the message's.
  for (int row = kFirstListRow; row <= kLastListRow; ++row)
    if (HasChosenMenuLine(screen.RowText(row))) return true;
  return false;
}

PageKind KindOfList(const ScreenSnapshot& screen) {
  if (Has(screen, PF_ARTICLE_LIST)) return PageKind::kArticleList;
  return IsMenu(screen) ? PageKind::kMenu : PageKind::kList;
}

}  // namespace

PageKind KindOf(const ScreenSnapshot& screen) {
  if (Has(screen, PF_INPUT_FIELD) || IsFieldOverReader(screen)) return PageKind::kTyping;
  if (IsMessage(screen)) return PageKind::kPause;
  if (Has(screen, kAnsweredPages)) return PageKind::kTyping;
  if (Has(screen, kWaitingPages)) return PageKind::kPause;
  if (Has(screen, PF_READING)) return PageKind::kReader;
  if (Has(screen, PF_EDITOR)) return PageKind::kEditor;
  if (Has(screen, PF_LIST_CURSOR)) return KindOfList(screen);
  return PageKind::kOther;
}

}  // namespace quillet
