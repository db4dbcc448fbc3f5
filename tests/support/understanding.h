// What stands on a screen that came alone.
#pragma once

#include "bbs/page_understanding.h"

namespace quillet {

// `screen` is classified.
inline UnderstoodPage Understand(const ScreenSnapshot& screen) {
  static PageUnderstanding understanding;
  return understanding.Look(screen);
}

}  // namespace quillet
