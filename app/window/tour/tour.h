// A walk through the demo BBS by key presses into the real window, with a picture of each page: shown where
// there is no display, and the maker of the documentation's pictures. User-interface thread, with the window
// shown and connected.
#pragma once

#include <functional>
#include <vector>

#include <QString>

#include "app/window/main_frame.h"

namespace quillet {

// One key press: a character, or a key of the toolkit.
struct TourKey {
  int key = 0;
  QString text;
  Qt::KeyboardModifiers modifiers;
};

struct TourStep {
  QString name;  // of the picture; empty: none is taken
  std::vector<TourKey> keys;
  std::function<bool(const CQuillView&)> arrived;
  // Pressed on pages that stand between, as often as it takes; nothing when key is 0.
  TourKey onTheWay;
};

// login, menus, lists, an article, a push prompt, the editor, out again.
std::vector<TourStep> DemoTour();

enum class TourPicture { kWindow, kView };

struct TourSettings {
  QString folder;  // made when it does not exist
  TourPicture picture = TourPicture::kWindow;
  QSize view{1280, 720};  // whatever the screen's size is
  QString only;           // ends after the step of this name, whose picture is the only one
  QString prefix;         // of the pictures' names
};

struct TourResult {
  bool ok = false;
  QString message;       // where the pictures are, or which page did not come
  QStringList pictures;  // full paths, in order
};

// Saves "01-name.png" and so on.
TourResult WalkTour(CMainFrame& frame, const TourSettings& settings,
                    const std::vector<TourStep>& steps = DemoTour());

// A key press and release, delivered to the window as the system would.
void PressKey(CMainFrame& frame, const TourKey& key);

// Handles events until `done` holds. False when that took longer than `milliseconds`.
bool HandleEventsUntil(const std::function<bool()>& done, int milliseconds);

}  // namespace quillet
