#include "bbs/automation/article_jump.h"

#include <algorithm>

#include "bbs/article_code.h"
#include "bbs/automation/board_entry.h"
#include "bbs/automation/dialogue.h"
#include "bbs/automation/page_walk.h"
#include "core/ascii.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::size_t kMostNameLength = 12;
constexpr int kMostPrompts = 6;

bool IsBoardName(std::u16string_view name) {
  return !name.empty() && name.size() <= kMostNameLength &&
         std::all_of(name.begin(), name.end(), [](char16_t unit) {
           return IsAsciiLetterOrDigit(unit) || unit == u'_' || unit == u'-' || unit == u'.';
         });
}

class ArticleJump {
 public:
  explicit ArticleJump(ScreenWaits& waits)
      : waits_(waits),
        pages_(waits.Pages()),
        walk_(waits),
        boardPrompt_(ToBig5(u"請輸入看板名稱")),
        codePrompt_(ToBig5(u"搜尋文章代碼")),
        unknownCode_(ToBig5(u"找不到這個文章代碼")) {}

  JumpResult Run(std::u16string_view board, std::u16string_view code);

 private:
  using Step = PageWalk::Step;
  Step AskForBoard();
  bool IsInBoard(std::u16string_view board) const;
  JumpResult FindCode(std::u16string_view code);

  Step Failed() const { return waits_.IsAlive() ? Step::kBusy : Step::kEnded; }

  ScreenWaits& waits_;
  const PageTests& pages_;
  PageWalk walk_;
  const std::string boardPrompt_, codePrompt_, unknownCode_;
};

JumpResult ArticleJump::Run(std::u16string_view board, std::u16string_view code) {
  const Step asked = AskForBoard();
  if (asked != Step::kDone) return asked == Step::kBusy ? JumpResult::kBusy : JumpResult::kClosed;
  waits_.SendText(board);
  if (!EnterBoardFromPrompt(waits_, BoardName::kAtPrompt))
    return waits_.IsAlive() ? JumpResult::kNoBoard : JumpResult::kClosed;
  // Where the name was not known, the key that should enter the board may have entered another one.
  return IsInBoard(board) ? FindCode(code) : JumpResult::kNoBoard;
}

// Not every list knows the key for another board; the one from which it was entered may.
ArticleJump::Step ArticleJump::AskForBoard() {
  for (int prompt = 0; prompt < kMostPrompts; ++prompt) {
    const Step reached = walk_.ReachList();
    if (reached != Step::kDone) return reached;
    waits_.Send("s");
    const bool asked = waits_.WaitAtMost(PageWalk::kReaction, [this](const ScreenSnapshot& screen) {
      return pages_.IsInputField(screen) && RowStartsWith(screen, 1, 0, std::string_view(boardPrompt_));
    });
    if (asked) return Step::kDone;
    if (!waits_.IsAlive()) return Step::kEnded;
    if (pages_.IsInputField(waits_.Seen())) walk_.Press(kCancelKey);
    walk_.StepOut();
  }
  return Failed();
}

bool ArticleJump::IsInBoard(std::u16string_view board) const {
  const std::u16string title = FromBig5(waits_.Seen().RowText(0));
  constexpr std::u16string_view kBefore = u"看板《";
  const std::size_t found = title.find(kBefore);
  if (found == std::u16string::npos) return true;  // a list that does not say
  const std::size_t start = found + kBefore.size();
  const std::u16string_view name = std::u16string_view(title).substr(start, title.find(u'》', start) - start);
  return std::equal(name.begin(), name.end(), board.begin(), board.end(),
                    [](char16_t a, char16_t b) { return AsciiLower(a) == AsciiLower(b); });
}

JumpResult ArticleJump::FindCode(std::u16string_view code) {
  waits_.DismissMessages();
  const auto asking = [this](const ScreenSnapshot& screen) {
    return RowStartsWith(screen, kBottomRow, 0, std::string_view(codePrompt_));
  };
  const auto onList = [this](const ScreenSnapshot& screen) { return pages_.IsListCursor(screen); };
  Dialogue dialogue(waits_);
  if (dialogue.Press("#", asking, onList) == Dialogue::Answer::kNone ||
      waits_.WaitForProbes(Want::kMatch, {{kBottomRow, 0, u"搜尋文章代碼"}}) == 0)
    return JumpResult::kClosed;
  waits_.SendText(code);
  const auto taken = [&](const ScreenSnapshot& screen) { return !asking(screen); };
  if (dialogue.Press("\r", taken, asking) == Dialogue::Answer::kNone) return JumpResult::kClosed;
  bool unknown = false;
  const bool answered = waits_.WaitUntil([&](const ScreenSnapshot& screen) {
    unknown = RowStartsWith(screen, kBottomRow - 1, 0, std::string_view(unknownCode_));
    return unknown || onList(screen);
  });
  if (!answered) return JumpResult::kClosed;
  if (!unknown) return JumpResult::kFound;
  // On the list itself the key would open an article.
  if (!onList(waits_.Seen())) waits_.Send(ScreenWaits::kDismissKey);
  return waits_.WaitForListCursor() ? JumpResult::kNotFound : JumpResult::kClosed;
}

}  // namespace

JumpResult JumpToArticle(ScreenWaits& waits, std::u16string_view board, std::u16string_view code) {
  if (!IsBoardName(board)) return JumpResult::kNoBoard;
  if (AidToFileName(code).empty()) return JumpResult::kNotFound;
  if (!waits.IsAlive()) return JumpResult::kClosed;
  return ArticleJump(waits).Run(board, code.substr(0, kAidLength));
}

}  // namespace quillet
