// How an automation follows the BBS: waits on the live screen until a page or a text shows. One object per
// run, on the run's worker thread; it belongs to the connection that was up when it was made and ends with
// it. No wait has a time-out of its own unless it is given one: each ends by success, by the end of the
// connection, or when the run is cancelled (the user typed, the window closes), which looks like an end of
// the connection. Whoever owns the run cancels and joins it before the session connects anew.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bbs/page_tests.h"
#include "core/term_session.h"

namespace quillet {

struct ScreenProbe {
  std::uint8_t row = 0;
  std::uint8_t col = 0;
  std::u16string text;
};

// Ctrl+C, with which the BBS lets one out of its prompts.
inline constexpr std::string_view kCancelKey = "\x03";

// What probes wait for.
enum class Want { kMatch, kNoMatch };
enum class ArticlePart { kTop, kEnd };

// Probes whose texts have been converted, so that a look at the screen costs only comparisons.
class ProbeList {
 public:
  explicit ProbeList(const std::vector<ScreenProbe>& probes);
  // 1-based place of the first probe that is as wanted; 0 when there is none.
  int First(const ScreenSnapshot& screen, Want want) const;

 private:
  struct Prepared {
    int row;
    int col;
    std::string big5;
  };
  std::vector<Prepared> probes_;
};

class ScreenWaits {
 public:
  // `cancelled` may be set from any thread; all three outlive the object.
  ScreenWaits(TermSession& session, const PageTests& pages, const std::atomic<bool>& cancelled);

  TermSession& Session() { return session_; }
  const PageTests& Pages() const { return pages_; }

  // The run goes on: it is not cancelled, has time left, and its own connection is up.
  bool IsAlive() const;
  // From now on the run has only so much time left, whatever it waits for.
  void EndAfter(std::chrono::milliseconds limit);
  // Ends the run's own connection without waiting for it.
  void Disconnect();
  // Sleeps in small steps; false when the run ended meanwhile.
  bool Sleep(std::chrono::milliseconds time) const;
  // Queued for sending, only while the run is alive.
  void Send(std::string_view bytes);
  void SendText(std::u16string_view text);

  // Copies the latest screen. The reference is valid for the object's life, its contents until the next look,
  // which every wait takes.
  const ScreenSnapshot& Look();
  // What was seen by the last look; after a wait that succeeded, what it waited for.
  const ScreenSnapshot& Seen() const { return copy_.screen; }
  // No batch was being parsed during the last look.
  bool Settled() const { return copy_.settled; }
  // The page flags of what was seen last, computed here while the session's own classification is suspended.
  std::uint32_t Flags();

  using Condition = std::function<bool(const ScreenSnapshot&)>;
  using Milliseconds = std::chrono::milliseconds;
  // Looks between batches, every `interval`; false when the run ended.
  bool WaitUntil(const Condition& holds, Milliseconds interval = Milliseconds(5));
  // The same for at most `limit`: false also when it did not come about; IsAlive tells the two apart.
  bool WaitAtMost(Milliseconds limit, const Condition& holds, Milliseconds interval = Milliseconds(5));
  bool WaitForListCursor();
  // 1-based place of the first probe that is as wanted, on a page whose drawing is complete; 0 when the run
  // ended.
  int WaitForProbes(Want want, const std::vector<ScreenProbe>& probes);

  // From a list's cursor. False when the run ended or the article is empty: then the BBS's message stays.
  bool OpenArticleUnderCursor(ArticlePart part);
  // Until the digits typed at a list stand on the bottom row, and then until the list has taken them.
  bool WaitForNumberEcho(int number);
  // Dismisses instant messages that lie over the bottom rows; whether there was one that nobody had
  // dismissed. kUntilGone stays until the page flags say that none is left, and repeats the key meanwhile,
  // however slow the line: for who may type it at whatever lies beneath.
  enum class StarLine { kOnlyPending, kUntilGone };
  bool ResendWhileInterrupted(StarLine until);
  // Waits until no instant message lies over the screen, with one key for each that has been shown: a second
  // key would be typed at what lies beneath. Only a message that nothing has become of within
  // kDismissalLimit is told again, a few times. False when one stays, or the run ended.
  bool DismissMessages();
  static constexpr std::chrono::milliseconds kDismissalLimit{3000};

  // What dismisses a message or a pause.
  static constexpr std::string_view kDismissKey = "\n";

 private:
  bool IsReadyForProbes(const ScreenSnapshot& screen) const;
  bool IsStarLinePending();
  void Dismiss();

  TermSession& session_;
  const PageTests& pages_;
  const std::atomic<bool>& cancelled_;
  const unsigned connection_;  // TermSession::connectionNumber of its own connection
  std::optional<std::chrono::steady_clock::time_point> end_;
  LiveScreen::Copy copy_;
  bool dismissed_ = false;              // a star line was dismissed,
  std::uint32_t dismissedVersion_ = 0;  // on this screen
  std::chrono::steady_clock::time_point dismissedAt_{};
  std::string bracket_, emptyArticle_, message_;
};

}  // namespace quillet
