// The live screen of one session and the parser that writes it. It understands exactly the part of ANSI
// that the BBS emits: no scroll region, no wrap, no tab stop, no relative movement, no saved cursor. The
// page tests depend on the exact contents that this produces, so it must not be widened.
//
// Written on the session's receive thread only; other threads read through LiveScreen or a posted copy.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "core/screen_snapshot.h"
#include "core/screen_watcher.h"
#include "core/sequence_memory.h"

namespace quillet {

class TermScreen : public ScreenSnapshot {
 public:
  TermScreen();
  TermScreen(const TermScreen&) = delete;
  TermScreen& operator=(const TermScreen&) = delete;

  // Whom finished screens are handed to; null (the initial value) hands over nothing. Set before the first
  // Feed; not owned.
  void SetWatcher(ScreenWatcher* watcher) { watcher_ = watcher; }

  // Applies one batch as it was read from the transport. A sequence split between batches is completed by
  // the next one. Any bytes whatever are accepted.
  void Feed(std::span<const std::uint8_t> bytes);

  // Hands the screen to the watcher, if there is one.
  void ProcessScreen(ScreenReason reason);

 private:
  // One byte in the state it finds; every other way through the parser must come to the same.
  void Step(std::uint8_t byte);
  void StepGround(std::uint8_t byte);
  void StepAfterEscape(std::uint8_t byte);
  void StepInSequence(std::uint8_t byte);

  const std::uint8_t* FeedWhole(const std::uint8_t* at, const std::uint8_t* last);
  const std::uint8_t* FeedSequence(const std::uint8_t* at);
  const std::uint8_t* FeedText(const std::uint8_t* at, const std::uint8_t* last);
  const std::uint8_t* FeedRowEnd(const std::uint8_t* at, std::size_t count, std::size_t col,
                                 const std::uint8_t* last);

  void Apply(const ControlSequence& sequence);

  void Print(std::uint8_t byte);
  void LineFeed();
  void OpenLine();
  void Ring();

  void PlaceCursor(std::uint8_t rowParam, std::uint8_t colParam);
  void InsertLines(std::int8_t count);
  void HandOverReader();

  bool CursorParked(int fromCol) const;
  bool ShowsCompletePage();
  bool ShowsListPrompt();

  // Bottom-line texts under which an article list is worth looking at, in Big5. Converted when first needed,
  // because the character tables are loaded later than screens may be made.
  struct ListPrompts {
    std::string quickSwitch;
    std::string rating;
  };

  ScreenWatcher* watcher_ = nullptr;
  ListPrompts listPrompts_;
  SequenceMemory sequences_;
};

}  // namespace quillet
