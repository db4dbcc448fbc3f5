#include "bbs/page_question.h"

#include "bbs/page_flags.h"
#include "bbs/page_tests.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr int kPasswordRow = 21;
constexpr int kLogOutRow = 22;
// A field with no room for two characters beside its cursor is for a letter.
constexpr int kNarrowestForText = 4;

bool StandsIn(const ScreenSnapshot& screen, int row, const std::string& big5) {
  return !big5.empty() && RowStartsWith(screen, row, 0, std::string_view(big5));
}

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

bool AsksForLetter(const ScreenSnapshot& screen, PageQuestion question) {
  if ((screen.pageFlags & (PF_PUSH_CONFIRM | PF_ANIMATION_PROMPT)) != 0) return true;
  if ((screen.pageFlags & PF_PUSH_LINE) != 0 && question == PageQuestion::kPushKind) return true;
  const int cells = FieldCells(screen);
  return cells > 0 && cells < kNarrowestForText;
}

}  // namespace

QuestionReader::QuestionReader()
    : password_(ToBig5(u"請輸入您的密碼")),
      pushKind_(ToBig5(u"您覺得這篇文章")),
      logOutConfirmed_(ToBig5(u"您確定要離開【 奧拉拉文藝坊 】嗎(Y/N)？[N] y")) {}

PageQuestion QuestionReader::Read(const ScreenSnapshot& screen) const {
  if (StandsIn(screen, kLogOutRow, logOutConfirmed_)) return PageQuestion::kLogOutConfirmed;
  if (StandsIn(screen, kBottomRow, pushKind_)) return PageQuestion::kPushKind;
  if (StandsIn(screen, kPasswordRow, password_)) return PageQuestion::kPassword;
  return PageQuestion::kNone;
}

Typing TypingOn(const ScreenSnapshot& screen, PageKind kind, PageQuestion question) {
  switch (kind) {
    case PageKind::kTyping:
      return AsksForLetter(screen, question) ? Typing::kLetter : Typing::kText;
    case PageKind::kEditor:
    case PageKind::kOther:
      return Typing::kText;
    case PageKind::kMenu:
    case PageKind::kList:
    case PageKind::kArticleList:
    case PageKind::kReader:
    case PageKind::kPause:
      break;
  }
  return Typing::kCommands;
}

}  // namespace quillet
