// The push prompt drawn over an open article: known only from what the screen showed before, so the handler
// of each classified screen says it, with the flags that it gave the previous one. Pure; any thread.
#pragma once

#include <cstdint>

#include "bbs/page_flags.h"
#include "core/screen_snapshot.h"

namespace quillet {

// Sets or clears PF_PUSH_OVER_READER in `screen`. `previousFlags` are those of the screen before, this bit
// included.
inline void MarkPushOverReader(std::uint32_t previousFlags, ScreenSnapshot& screen) {
  const bool over =
      (screen.pageFlags & PF_PUSH_LINE) != 0 && (previousFlags & (PF_READING | PF_PUSH_OVER_READER)) != 0;
  screen.pageFlags &= ~std::uint32_t{PF_PUSH_OVER_READER};
  if (over) screen.pageFlags |= PF_PUSH_OVER_READER;
}

}  // namespace quillet
