#include "render/layout.h"

#include <algorithm>

namespace quillet {
namespace {

constexpr int kMinimumFontSize = 12;
// A window no screen can show; keeps every product below within an int.
constexpr int kMaximumSide = 1 << 20;
constexpr int kMaximumSpacing = 1000;

// The width of a half-width cell as a share of the row height.
double CellRatio(int spacing) {
  return 0.5 - 0.02 * std::clamp(spacing, -kMaximumSpacing, kMaximumSpacing);
}

int HalfCellOf(int rowHeight, int spacing) {
  return static_cast<int>(rowHeight * CellRatio(spacing));
}

int FontSizeOf(int rowHeight, int spacing) {
  return std::max(2 * HalfCellOf(rowHeight, spacing), kMinimumFontSize);
}

}  // namespace

Layout RecalcLayout(const LayoutInput& input) {
  const int width = std::clamp(input.width, 1, kMaximumSide);
  const int height = std::clamp(input.height, 1, kMaximumSide);
  const int a = width / 84;
  const int b = height / 48;

  int row = 2 * std::min(a, b);
  // The row grows as long as 40 double-width characters and a margin of a row on each side fit the width.
  while (row < 2 * b && 2 * (HalfCellOf(row + 1, input.lineSpacing) * 40 + 2 * b) <= width)
    ++row;

  Layout layout;
  layout.rowHeight = std::min(row, 2 * b);
  layout.fontSize = FontSizeOf(layout.rowHeight, input.lineSpacing);
  layout.pushFontSize = FontSizeOf(layout.rowHeight, input.pushLineSpacing);
  layout.halfCell = layout.fontSize / 2;
  layout.originX = (width - 40 * layout.fontSize) / 2;
  layout.originY = (height - 24 * layout.rowHeight) / 2;
  return layout;
}

}  // namespace quillet
