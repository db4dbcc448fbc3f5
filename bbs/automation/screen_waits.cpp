#include "bbs/automation/screen_waits.h"

#include <algorithm>
#include <thread>

#include "bbs/page_flags.h"
#include "bbs/screen_classifier.h"
#include "core/charset.h"

namespace quillet {
namespace {

using namespace std::chrono_literals;

constexpr int kWhite = 7;
// An attribute below it has a black background.
constexpr std::uint8_t kFirstColouredBackground = 0x20;
// So many cells before the cursor may belong to what is being typed at a prompt of the bottom row.
constexpr int kPromptReach = 7;
// The digits typed at a list end before this column of the bottom row.
constexpr int kEndOfDigits = 74;
// Nothing is waited for longer than this in one piece, so that a run ends soon after it is told to.
constexpr std::chrono::milliseconds kSleepStep = 5ms;
// A message is told so often to go before it is left where it is.
constexpr int kMostDismissals = 5;

bool StartsWith(const ScreenSnapshot& screen, int row, const std::string& big5) {
  return RowStartsWith(screen, row, 0, std::string_view(big5));
}

// The cursor stands behind the prompt of an input field on a bar.
bool IsPromptOnBar(const ScreenSnapshot& screen) {
  if (!screen.CursorInside()) return false;
  const int row = screen.cursorRow;
  const int col = screen.cursorCol;
  if (screen.TextAt(row, col) != ' ' || BackgroundOf(screen.AttrAt(row, col)) != kWhite) return false;
  for (int before = col - 1; before >= std::max(0, col - kPromptReach); --before)
    if (screen.AttrAt(row, before) < kFirstColouredBackground) return true;
  return false;
}

}  // namespace

ProbeList::ProbeList(const std::vector<ScreenProbe>& probes) {
  for (const ScreenProbe& probe : probes)
    probes_.push_back({probe.row, probe.col, ToBig5(probe.text)});
}

int ProbeList::First(const ScreenSnapshot& screen, Want want) const {
  for (std::size_t i = 0; i < probes_.size(); ++i) {
    const Prepared& probe = probes_[i];
    const bool matches = RowStartsWith(screen, probe.row, probe.col, std::string_view(probe.big5));
    if (matches == (want == Want::kMatch)) return static_cast<int>(i) + 1;
  }
  return 0;
}

ScreenWaits::ScreenWaits(TermSession& session, const PageTests& pages, const std::atomic<bool>& cancelled)
    : session_(session),
      pages_(pages),
      cancelled_(cancelled),
      connection_(session.connectionNumber),
      bracket_(ToBig5(u"【")),
      emptyArticle_(ToBig5(u" ◆ 此文章無內容 ")),
      message_(ToBig5(u" ◆")) {
  Look();
}

bool ScreenWaits::IsAlive() const {
  return !cancelled_ && session_.state == SessionState::kConnected &&
         session_.connectionNumber == connection_ && (!end_ || std::chrono::steady_clock::now() < *end_);
}

void ScreenWaits::EndAfter(std::chrono::milliseconds limit) {
  end_ = std::chrono::steady_clock::now() + limit;
}

void ScreenWaits::Disconnect() {
  session_.RequestDisconnect(connection_);
}

bool ScreenWaits::Sleep(std::chrono::milliseconds time) const {
  for (; time > 0ms && IsAlive(); time -= kSleepStep)
    std::this_thread::sleep_for(std::min(time, kSleepStep));
  return IsAlive();
}

void ScreenWaits::Send(std::string_view bytes) {
  if (IsAlive()) session_.SendBytes(bytes);
}

void ScreenWaits::SendText(std::u16string_view text) {
  if (IsAlive()) session_.SendText(text);
}

const ScreenSnapshot& ScreenWaits::Look() {
  session_.live.Read(copy_);
  return copy_.screen;
}

std::uint32_t ScreenWaits::Flags() {
  if (copy_.screen.frozen != 0) {
    copy_.screen.frozen = 0;
    ClassifyScreen(pages_, copy_.screen, ScreenReason::kUpdated);
    copy_.screen.frozen = 1;
  }
  return copy_.screen.pageFlags;
}

bool ScreenWaits::WaitUntil(const Condition& holds, Milliseconds interval) {
  while (IsAlive()) {
    Look();
    if (Settled() && holds(copy_.screen)) return true;
    Sleep(interval);
  }
  return false;
}

bool ScreenWaits::WaitAtMost(Milliseconds limit, const Condition& holds, Milliseconds interval) {
  const auto end = std::chrono::steady_clock::now() + limit;
  bool held = false;
  WaitUntil(
      [&](const ScreenSnapshot& screen) {
        held = holds(screen);
        return held || std::chrono::steady_clock::now() >= end;
      },
      interval);
  return held;
}

bool ScreenWaits::WaitForListCursor() {
  return WaitUntil([this](const ScreenSnapshot& screen) { return pages_.IsListCursor(screen); }, 1ms);
}

bool ScreenWaits::IsReadyForProbes(const ScreenSnapshot& screen) const {
  if (!StartsWith(screen, 0, bracket_) || screen.cursorRow < kBottomRow) return true;
  if (pages_.IsAnyKeyBanner(screen)) return true;
  if (StartsWith(screen, kBottomRow, message_) && screen.cursorCol == kCols - 1) return true;
  // An article may begin like a menu; its finished status line says that it is one.
  if (pages_.IsReader(screen, PageTests::ReaderForm::kStrict)) return true;
  // A menu or list whose cursor is still on its way to its place.
  return IsPromptOnBar(screen) || pages_.IsPushLine(screen) || pages_.IsStarLine(screen);
}

int ScreenWaits::WaitForProbes(Want want, const std::vector<ScreenProbe>& probes) {
  const ProbeList list(probes);
  int found = 0;
  WaitUntil([&](const ScreenSnapshot& screen) {
    if (IsReadyForProbes(screen)) found = list.First(screen, want);
    return found != 0;
  });
  return found;
}

bool ScreenWaits::OpenArticleUnderCursor(ArticlePart part) {
  Send("l");
  const auto footer = [](const ScreenSnapshot& screen) {
    return screen.cursorRow == kBottomRow && screen.cursorCol >= kReaderCursorCol;
  };
  if (!WaitUntil(footer, 1ms) || StartsWith(Seen(), kBottomRow, emptyArticle_)) return false;
  if (pages_.IsDisputedNotice(Seen())) Send("\r");
  Send(part == ArticlePart::kTop ? "N" : "N$$");
  const std::uint32_t wanted = part == ArticlePart::kTop ? PF_READ_TOP : PF_READ_END;
  return WaitUntil([&](const ScreenSnapshot&) { return (Flags() & wanted) != 0; });
}

bool ScreenWaits::WaitForNumberEcho(int number) {
  const std::string digits = std::to_string(number);
  const auto col = static_cast<std::uint8_t>(kEndOfDigits - static_cast<int>(digits.size()));
  if (WaitForProbes(Want::kMatch, {{kBottomRow, col, std::u16string(digits.begin(), digits.end())}}) == 0)
    return false;
  return WaitUntil([](const ScreenSnapshot& screen) { return screen.cursorRow != kBottomRow; }, 1ms);
}

bool ScreenWaits::IsStarLinePending() {
  const ScreenSnapshot& screen = Look();
  if (screen.msgCount == 0) return false;
  // The word stays as it was until the next screen is classified.
  return !dismissed_ || (copy_.version != dismissedVersion_ && pages_.IsStarLine(screen));
}

void ScreenWaits::Dismiss() {
  dismissed_ = true;
  dismissedVersion_ = copy_.version;
  dismissedAt_ = std::chrono::steady_clock::now();
  Send(kDismissKey);
}

bool ScreenWaits::DismissMessages() {
  int inVain = 0;
  return WaitUntil(
             [&](const ScreenSnapshot& screen) {
               if (!pages_.IsStarLine(screen) || inVain > kMostDismissals) return true;
               const bool told = dismissed_ && copy_.version == dismissedVersion_;
               if (told && std::chrono::steady_clock::now() - dismissedAt_ < kDismissalLimit) return false;
               ++inVain;
               Dismiss();
               return false;
             },
             1ms) &&
         !pages_.IsStarLine(Seen());
}

bool ScreenWaits::ResendWhileInterrupted(StarLine until) {
  bool resent = false;
  while (IsAlive() && IsStarLinePending()) {
    Dismiss();
    resent = true;
    Sleep(100ms);
  }
  while (until == StarLine::kUntilGone && IsAlive() && (Look(), (Flags() & PF_STAR_LINE) != 0)) {
    Send(kDismissKey);
    Sleep(300ms);
  }
  return resent;
}

}  // namespace quillet
