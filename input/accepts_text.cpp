#include "input/accepts_text.h"

#include <string_view>

#include "bbs/page_tests.h"

namespace quillet {
namespace {

// A field with no room for two characters beside its cursor is for a letter.
constexpr int kNarrowestForText = 4;
// The push begins by asking for its kind.
constexpr std::u16string_view kPushQuestion = u"您覺得這篇文章";

// Of the field that the cursor is in; 0: it is in none.
int FieldCells(const ScreenSnapshot& screen) {
  if (!screen.CursorInside()) return 0;
  const auto isField = [&screen](int col) {
    return col >= 0 && col < kCols && screen.AttrAt(screen.cursorRow, col) == kAttrInputField;
  };
  if (!isField(screen.cursorCol)) return 0;
  int first = screen.cursorCol;
  int last = screen.cursorCol + 1;
  while (isField(first - 1))
    --first;
  while (isField(last))
    ++last;
  return last - first;
}

bool AsksForLetter(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  if (page.Shows(PF_PUSH_CONFIRM | PF_ANIMATION_PROMPT)) return true;
  if (page.Shows(PF_PUSH_LINE) && RowStartsWith(screen, kBottomRow, 0, kPushQuestion)) return true;
  const int cells = FieldCells(screen);
  return cells > 0 && cells < kNarrowestForText;
}

}  // namespace

bool AcceptsText(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  switch (page.kind) {
    case PageKind::kTyping:
      return !AsksForLetter(screen, page);
    case PageKind::kEditor:
    case PageKind::kOther:
      return true;
    case PageKind::kMenu:
    case PageKind::kList:
    case PageKind::kArticleList:
    case PageKind::kReader:
    case PageKind::kPause:
      break;
  }
  return false;
}

}  // namespace quillet
