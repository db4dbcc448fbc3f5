#include "app/overlay/side_room.h"

#include <algorithm>
#include <cmath>

#include "render/paint/row_marks.h"

namespace quillet {
namespace {

// What is taken is never smaller than it is drawn, what is free never larger.
int Up(int pixels, double scale) {
  return static_cast<int>(std::ceil(pixels / scale));
}
int Down(int pixels, double scale) {
  return static_cast<int>(std::floor(pixels / scale));
}

}  // namespace

SideRoom SideRoomOf(const Layout& layout, const Page& page, int windowHeight, double scale) {
  constexpr std::uint8_t kOneFlag = 1U << 1;
  const int left = std::max(0, std::min(layout.originX, layout.pushOriginX));
  const int top = std::max(0, layout.originY);
  SideRoom room{.margin = QRect(QPoint(0, Down(top, scale)),
                                QPoint(Down(left, scale) - 1, Down(windowHeight, scale) - 1)),
                .flag = Up(PennantsWidth(kOneFlag, layout.rowHeight, left), scale)};
  for (int row = 0; row < kRows; ++row) {
    const PageRow& shown = page[static_cast<std::size_t>(row)];
    const int end = GridOf(layout, shown.size).left;
    const int width = PennantsWidth(shown.pennants, layout.rowHeight, end);
    const int rowTop = RowTop(layout, row);
    if (width > 0)
      room.marks += QRect(QPoint(Down(end - width, scale), Down(rowTop, scale)),
                          QPoint(Up(end, scale) - 1, Up(rowTop + layout.rowHeight, scale) - 1));
  }
  return room;
}

}  // namespace quillet
