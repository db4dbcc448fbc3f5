#include "input/sure_answer.h"

#include "core/key_sequence.h"

namespace quillet {
namespace {

constexpr int kFirstLine = 3;  // below the heads of a list

// Up and down come around at the ends of a list or menu, unless it is of a single line.
bool HasNeighbours(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  const auto hasLine = [&page](int row) {
    return row >= kFirstLine && row < kBottomRow && !page.Line(row).isBlank;
  };
  return hasLine(screen.cursorRow - 1) || hasLine(screen.cursorRow + 1);
}

}  // namespace

bool IsSurelyAnswered(const ScreenSnapshot& screen, const UnderstoodPage& page, const KeyAction& action) {
  if (action.bytes == "\r") return true;
  if (action.kind == KeyActionKind::kSendText && page.typing == Typing::kText)
    return page.question != PageQuestion::kPassword;
  const PageKind kind = page.kind;
  const bool isList = kind == PageKind::kList || kind == PageKind::kArticleList;
  switch (action.virtualKey) {
    case kKeyUp:
    case kKeyDown:
      if ((isList || kind == PageKind::kMenu) && HasNeighbours(screen, page)) return true;
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
