// What page is showing: byte tests at fixed places of the grid, each a pure function of a snapshot. The
// patterns are converted to Big5 once, at construction, so that a test allocates nothing; the character
// tables must be loaded before. Safe from any thread once made.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/screen_snapshot.h"

namespace quillet {

// Behind its finished status line the reader parks the cursor at this column or further right.
inline constexpr int kReaderCursorCol = 69;

class PageTests {
 public:
  PageTests();

  enum class ReaderForm {
    kPlain,  // the bottom row reads as the reader's status line
    kStrict  // and the cursor is parked behind it: the page is complete
  };
  bool IsReader(const ScreenSnapshot& screen, ReaderForm form) const;
  // What the strict form asks of the cursor.
  static bool IsParkedBehindReader(const ScreenSnapshot& screen);
  bool IsReaderWithHelpFooter(const ScreenSnapshot& screen) const;
  // Only meaningful on a reader page.
  bool IsReaderTop(const ScreenSnapshot& screen) const;
  bool IsListCursor(const ScreenSnapshot& screen) const;
  // The help line or the bottom prompt; the strict form wants both and the list's cursor.
  bool IsArticleList(const ScreenSnapshot& screen) const;
  bool IsArticleListStrict(const ScreenSnapshot& screen) const;
  bool IsPushLine(const ScreenSnapshot& screen) const;
  bool IsPushConfirm(const ScreenSnapshot& screen) const;
  bool IsMailMenu(const ScreenSnapshot& screen) const;
  bool IsEditor(const ScreenSnapshot& screen) const;
  bool IsInputField(const ScreenSnapshot& screen) const;
  bool IsStarLine(const ScreenSnapshot& screen) const;
  bool IsAnyKeyBanner(const ScreenSnapshot& screen) const;
  bool IsPause(const ScreenSnapshot& screen) const;
  bool IsAnimationPrompt(const ScreenSnapshot& screen) const;
  bool IsDisputedNotice(const ScreenSnapshot& screen) const;

 private:
  // A text at a place, already in Big5.
  struct Probe {
    int row;
    int col;
    std::string big5;
  };
  static bool Matches(const ScreenSnapshot& screen, const Probe& probe);
  static bool AnyMatches(const ScreenSnapshot& screen, const std::vector<Probe>& probes);

  Probe reader_, readerHelp_, lineRangeStart_, pageOne_;
  std::vector<Probe> promptsOverReader_;
  Probe helpLine_, selectPrompt_, mailMenu_, editor_, anyKey_;
  std::vector<Probe> pushLines_, pushEchoes_, disputed_, pauseExceptions_, animations_, animationPrompts_;
  Probe bracketTitle_;
  std::string pushConfirm_, bullet_, star_;
};

// The bytes of `big5` stand at (row, col); a text that would run past column 79 does not match, nor does a
// place outside the screen.
bool RowStartsWith(const ScreenSnapshot& screen, int row, int col, std::string_view big5);
// The same for a text of the client, of which at most `length` units are compared; converts, so not for the
// classifier's own path.
bool RowStartsWith(const ScreenSnapshot& screen, int row, int col, std::u16string_view text,
                   std::size_t length = std::u16string_view::npos);

}  // namespace quillet
