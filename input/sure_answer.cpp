#include "input/sure_answer.h"

#include "bbs/page_tests.h"
#include "bbs/screen_fields.h"
#include "core/key_sequence.h"
#include "input/accepts_text.h"

namespace quillet {
namespace {

constexpr int kFirstLine = 3;  // below the heads of a list

// Up and down come around at the ends of a list or menu, unless it is of a single line.
bool HasNeighbours(const ScreenSnapshot& screen) {
  const auto hasLine = [&screen](int row) {
    return row >= kFirstLine && row < kBottomRow && !IsBlankBetween(screen, row, 0, kCols - 1);
  };
  return hasLine(screen.cursorRow - 1) || hasLine(screen.cursorRow + 1);
}

// What is typed there shows nowhere.
bool AsksForPassword(const ScreenSnapshot& screen) {
  constexpr int kPasswordRow = 21;
  return RowStartsWith(screen, kPasswordRow, 0, u"請輸入您的密碼");
}

}  // namespace

bool IsSurelyAnswered(const ScreenSnapshot& screen, const UnderstoodPage& page, const KeyAction& action) {
  if (action.bytes == "\r") return true;
  if (action.kind == KeyActionKind::kSendText && AcceptsText(screen, page)) return !AsksForPassword(screen);
  const PageKind kind = page.kind;
  const bool isList = kind == PageKind::kList || kind == PageKind::kArticleList;
  switch (action.virtualKey) {
    case kKeyUp:
    case kKeyDown:
      if ((isList || kind == PageKind::kMenu) && HasNeighbours(screen)) return true;
      break;
    case kKeyRight:
      if (isList || kind == PageKind::kMenu) return true;
      break;
    case kKeyLeft:
      // The first of the menus is left for nowhere.
      if (isList || kind == PageKind::kReader) return true;
      break;
    default:
      break;
  }
  return kind == PageKind::kPause;
}

}  // namespace quillet
