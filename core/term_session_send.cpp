// The way out: from keys and texts to the transport.
#include <chrono>
#include <cstdlib>

#include "core/charset.h"
#include "core/key_sequence.h"
#include "core/session_link.h"
#include "core/term_session.h"
#include "core/wrap_text.h"
#include "platform/clock.h"

namespace quillet {
namespace {

using Origin = SessionLink::Origin;

// How long the window may be held by a send: short enough not to be felt as a freeze.
constexpr std::chrono::milliseconds kWindowPatience{100};
constexpr std::chrono::milliseconds kReactionInterval{1};

// Where a list shows its cursor and the start of its numbers.
constexpr int kMarkColumn = 5;

MenuMark MarkAtCursor(const ScreenSnapshot& screen) {
  if (screen.cursorRow < 0 || screen.cursorRow >= kRows) return {};
  return {screen.TextAt(screen.cursorRow, kMarkColumn), screen.TextAt(screen.cursorRow, kMarkColumn + 1)};
}

// Without its table every character would become a pair of NULs, which a BBS takes for keys.
std::string Sendable(std::u16string_view text) {
  std::u16string known(text);
  std::erase_if(known, [](char16_t unit) { return unit >= 0x80 && Charset().unicodeToBig5[unit] == 0; });
  return ToBig5(known);
}

void Repeat(std::string& keys, int virtualKey, int times) {
  for (int i = 0; i < times; ++i)
    keys += KeySequence(virtualKey);
}

}  // namespace

bool TermSession::SendKey(int virtualKey, ReactionWait wait) {
  const std::string_view sequence = KeySequence(virtualKey);
  if (sequence.empty()) return false;
  {
    std::lock_guard lock(keyLogLock);
    if (keyLog.size() >= kKeyLogLimit) keyLog.erase(keyLog.begin());
    keyLog.emplace_back(sequence);
  }
  SendBytes(sequence, wait);
  return true;
}

void TermSession::SendBytes(std::string_view bytes, ReactionWait wait) {
  if (bytes.empty()) return;
  idleMark = 0;
  lastSendTick = SteadyMilliseconds();
  ++sentCount;
  const std::shared_ptr<SessionLink> link = Link();
  if (!link) return;
  if (sendDirect) {
    if (state == SessionState::kConnected) SendDirectly(*link, bytes, wait);
    return;
  }
  const SendQueue::Patience patience =
      OnUserInterfaceThread() ? SendQueue::Patience(kWindowPatience) : std::nullopt;
  link->Queue(bytes, patience, OnReceiveThread() ? Origin::kOpening : Origin::kTyped);
}

void TermSession::SendDirectly(SessionLink& link, std::string_view bytes, ReactionWait wait) {
  // The receive thread would wait for what it brings itself.
  const bool waits = wait == ReactionWait::kUntilCursorMoves && !OnReceiveThread();
  LiveScreen::Copy before;
  if (waits) live.Read(before);
  if (OnUserInterfaceThread()) {
    // A peer that does not read would hold a direct write, and with it the window.
    link.Queue(bytes, kWindowPatience, Origin::kTyped);
    link.queue.WaitWritten(kWindowPatience);
  } else {
    link.Write(bytes, OnReceiveThread() ? Origin::kOpening : Origin::kTyped);
  }
  if (waits) WaitForReaction(link, MarkAtCursor(before.screen));
}

void TermSession::WaitForReaction(const SessionLink& link, MenuMark before) {
  const auto started = std::chrono::steady_clock::now();
  LiveScreen::Copy now;
  while (state == SessionState::kConnected && Link().get() == &link) {
    live.Read(now);
    const bool menuShows = !options_.watcher || options_.watcher->IsListCursor(now.screen);
    if (!noSendWait && MarkAtCursor(now.screen) != before && menuShows) return;
    if (OnUserInterfaceThread() && std::chrono::steady_clock::now() - started > kWindowPatience) return;
    std::this_thread::sleep_for(kReactionInterval);
  }
}

void TermSession::SendText(std::u16string_view text, Wrap wrap) {
  const std::string bytes = Sendable(text);
  if (wrap == Wrap::kNone) return SendBytes(bytes);
  SendBytes(
      WrapBig5(bytes, kWrapColumns, wrap == Wrap::kAt78Columns ? LastPiece::kEnded : LastPiece::kLeftOpen));
}

void TermSession::MoveCursorTo(int row, int col, std::optional<CellPosition> start) {
  if (!start) {
    LiveScreen::Copy now;
    live.Read(now);
    start = CellPosition{now.screen.cursorRow, now.screen.cursorCol};
  }
  SendBytes(CursorKeys(*start, {row, col}));
}

std::string CursorKeys(CellPosition from, CellPosition to) {
  std::string keys;
  const int rows = to.row - from.row;
  const int cols = to.col - from.col;
  if (rows != 0) {
    Repeat(keys, kKeyHome, 1);
    Repeat(keys, rows > 0 ? kKeyDown : kKeyUp, std::abs(rows));
    Repeat(keys, kKeyRight, to.col);
  } else {
    Repeat(keys, cols > 0 ? kKeyRight : kKeyLeft, std::abs(cols));
  }
  return keys;
}

}  // namespace quillet
