// Rasterises common characters while the window is idle, a little at a time. Used by the frame painter.
// User-interface thread.
#pragma once

#include <cstddef>

#include "render/paint/glyph_cache.h"

namespace quillet {

class WarmUpRun {
 public:
  // From the beginning: another size or other faces.
  void Restart() { next_ = 0; }

  // Works until `milliseconds` have passed or the sheet holds `budget` bytes. True while there is more to do.
  bool Continue(GlyphSheet& sheet, int milliseconds, std::size_t budget);

 private:
  std::size_t next_ = 0;
};

}  // namespace quillet
