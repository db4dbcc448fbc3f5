#include "bbs/automation/board_entry.h"

#include "bbs/automation/dialogue.h"
#include "core/charset.h"

namespace quillet {
namespace {

using namespace std::chrono_literals;

constexpr std::u16string_view kBoardListTitle = u"【看板列表】";
// A prompt that has not taken the name by then does not want it; it is left with kCancelKey.
constexpr std::chrono::milliseconds kAnswerLimit = 5s;
// kCancelKey makes the BBS skip what it shows when a board is entered; so often the same other page may
// answer it before that page is what the BBS wants to show.
constexpr std::chrono::milliseconds kSkipInterval = 100ms;
constexpr int kMostSkips = 20;

enum class Reply { kNone, kBoardList, kOther };

Reply ConfirmName(ScreenWaits& waits) {
  if (waits.WaitForProbes(Want::kNoMatch, {{0, 0, std::u16string(kBoardListTitle)}}) == 0)
    return Reply::kNone;
  const PageTests& pages = waits.Pages();
  const auto asking = [&](const ScreenSnapshot& screen) { return pages.IsInputField(screen); };
  if (!waits.WaitUntil(asking)) return Reply::kNone;

  const std::string boardList = ToBig5(kBoardListTitle);
  const std::string leaveHint = ToBig5(u"[←]離開");
  bool isBoardList = false;
  const auto end = std::chrono::steady_clock::now() + kAnswerLimit;
  const auto answered = [&](const ScreenSnapshot& screen) {
    isBoardList = RowStartsWith(screen, 0, 0, std::string_view(boardList));
    const bool pauses = screen.cursorRow == kBottomRow && screen.cursorCol == kCols - 1;
    return isBoardList || pauses || RowStartsWith(screen, 1, 0, std::string_view(leaveHint)) ||
           pages.IsListCursor(screen) || std::chrono::steady_clock::now() > end;
  };
  if (Dialogue(waits).Press("\r", answered, asking) == Dialogue::Answer::kNone) return Reply::kNone;
  return isBoardList ? Reply::kBoardList : Reply::kOther;
}

bool KeepAskingForList(ScreenWaits& waits) {
  const PageTests& pages = waits.Pages();
  int others = 0;
  while (waits.IsAlive()) {
    const ScreenSnapshot& screen = waits.Look();
    const bool settled = waits.Settled();
    if (settled && pages.IsArticleListStrict(screen)) return true;
    const bool other = settled && pages.IsListCursor(screen) && !pages.IsArticleList(screen);
    others = other ? others + 1 : 0;
    if (others > kMostSkips) return false;
    waits.Send(kCancelKey);
    waits.Sleep(kSkipInterval);
  }
  return false;
}

}  // namespace

bool EnterBoardFromPrompt(ScreenWaits& waits, BoardName name) {
  bool selected = name == BoardName::kAlreadyEntered;
  if (name == BoardName::kAtPrompt) {
    const Reply reply = ConfirmName(waits);
    if (reply == Reply::kNone) return false;
    selected = reply == Reply::kBoardList;
  }
  if (selected) waits.Send("\r");
  return KeepAskingForList(waits);
}

}  // namespace quillet
