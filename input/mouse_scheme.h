// What the mouse does, by the scheme that the user has chosen for the gesture and by the kind of page: tables
// and pure functions over them. The pointer control turns the toolkit's events into these and carries the
// answers out. User-interface thread.
#pragma once

#include <string>

#include "bbs/understood_page.h"
#include "core/screen_snapshot.h"
#include "input/wheel_steps.h"
#include "settings/settings.h"

namespace quillet {

// Whose lines the window shows.
enum class Picture { kScreen, kArticle };

// Where on the page a click or the pointer is.
struct PointerPlace {
  Picture picture = Picture::kScreen;
  // Of the BBS's screen, or of the window while it shows the local article; -1: none.
  int row = 0;
  int col = 0;              // 0-79; -1 left of the page, kCols right of it
  bool upperHalf = false;   // of the window
  bool leftMargin = false;  // in the strip at the left edge that goes back
};

// The kind of page that hands act upon: under an instant message it is one that waits, or is typed at.
PageKind PageUnderHands(Picture picture, const UnderstoodPage& page);

enum class MouseActionKind {
  kNone,
  kSend,         // `bytes` go to the BBS
  kMoveCursor,   // the BBS's cursor goes to (row, col): the editor
  kScrollLines,  // the local article by `lines`, positive down
  kScrollPages,  // by `lines` pages, positive down
  kScrollToEnd   // to its begin where `lines` is -1, to its end where it is 1
};

// Whether what is decided upon a page may be repeated before the BBS has answered.
enum class Repeat {
  kFreely,
  kAfterAnswer,  // the page may be left by it, and the next one would take the repetition otherwise
  kByNewGesture  // the same; and the next press of a double click was not meant for the next page either
};

struct MouseAction {
  MouseActionKind kind = MouseActionKind::kNone;
  std::string bytes{};
  int row = 0;
  int col = 0;
  int lines = 0;
  Repeat repeat = Repeat::kFreely;

  bool operator==(const MouseAction&) const = default;
};

// What the pointer looks like where a click would do something.
enum class PointerShape { kOrdinary, kHand, kBack, kUp, kDown, kText };

// A plain click of the left button that neither a caption nor a link took.
MouseAction DecideClick(const PointerPlace& place, const ScreenSnapshot& screen, const UnderstoodPage& page,
                        const Settings& settings);
// Such a click would open the line of a list, or the item of a menu, that it lies on.
bool OpensLine(const PointerPlace& place, const ScreenSnapshot& screen, const UnderstoodPage& page,
               const Settings& settings);
PointerShape ShapeAt(const PointerPlace& place, const ScreenSnapshot& screen, const UnderstoodPage& page,
                     const Settings& settings);

enum class HeldButton { kNone, kLeft, kRight };
MouseAction DecideWheel(const WheelTurn& turn, HeldButton held, Picture picture, const ScreenSnapshot& screen,
                        const UnderstoodPage& page, const Settings& settings);

enum class SideButtonPressed { kBack, kForward };
MouseAction DecideSideButton(SideButtonPressed button, Picture picture, const ScreenSnapshot& screen,
                             const UnderstoodPage& page, const Settings& settings);

}  // namespace quillet
