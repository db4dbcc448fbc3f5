// A page as the view gets it: of the known BBS, marked by the classifier.
#pragma once

#include "bbs/screen_classifier.h"
#include "tests/support/screen_builder.h"
#include "tests/support/understanding.h"

namespace quillet {

inline ScreenSnapshot Classified(ScreenSnapshot screen) {
  static const PageTests tests;
  screen.sessionState = SessionState::kConnected;
  screen.isBbsSite = 1;
  ClassifyScreen(tests, screen, ScreenReason::kUpdated);
  return screen;
}

inline ScreenSnapshot Classified(const ScreenBuilder& page) {
  return Classified(page.screen);
}

}  // namespace quillet
