// The margin in which the buttons beside the page may stand, and what the picture shows there. Pure.
#pragma once

#include <QRect>
#include <QRegion>

#include "render/layout.h"
#include "render/page_row.h"

namespace quillet {

// In the view's units.
struct SideRoom {
  enum class Wish { kShown, kHidden };

  QRect margin;     // left of the page
  int flag = 0;     // how wide a flag is that stands in it, at the page
  QRegion marks{};  // flags that stand in it
  Wish wish = Wish::kShown;

  bool operator==(const SideRoom&) const = default;
};

// `windowHeight` in device pixels, as the layout; `scale` of them are one unit.
SideRoom SideRoomOf(const Layout& layout, const Page& page, int windowHeight, double scale);

}  // namespace quillet
