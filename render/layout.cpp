#include "render/layout.h"

#include <algorithm>

namespace quillet {
namespace {

constexpr int kMinimumFontSize = 12;
constexpr int kScreenRows = 24;
// A window no screen can show; bounds the growth of the row, and keeps every product below within an int.
constexpr int kMaximumSide = 1 << 16;
constexpr int kMaximumSpacing = 1000;

// What sets the ordinary and the narrow layout apart: the first row height is twice the smaller of
// width / widthDivisor and height / heightDivisor, and never more than twice the latter.
struct Frame {
  int widthDivisor;
  int heightDivisor;
  int wideCells;    // double-width characters that must fit the width
  int sideMargins;  // on each side, in units of height / heightDivisor
};
constexpr Frame kOrdinaryFrame = {84, 48, 40, 2};
constexpr Frame kNarrowFrame = {66, 4, 33, 0};

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

// The row grows as long as its double-width characters and the margins fit the width.
int RowHeightOf(int width, int height, int lineSpacing, const Frame& frame) {
  const int a = width / frame.widthDivisor;
  const int b = height / frame.heightDivisor;
  int row = 2 * std::min(a, b);
  while (row < 2 * b &&
         2 * (HalfCellOf(row + 1, lineSpacing) * frame.wideCells + frame.sideMargins * b) <= width)
    ++row;
  return std::min(row, 2 * b);
}

// The smallest glyphs keep their room.
int Zoomed(int rowHeight, int percent) {
  constexpr int kLeastPercent = 10;
  const int zoomed = rowHeight * std::clamp(percent, kLeastPercent, 100) / 100;
  return std::max(zoomed, std::min(rowHeight, kMinimumFontSize));
}

// Glyphs as high as their rows: the spacings have no say.
void SizeFitted(Layout& layout, int width, int height, int zoomPercent) {
  layout.rowHeight = Zoomed(2 * std::min(width / 80, height / 48), zoomPercent) / 2 * 2;
  layout.fontSize = std::max(layout.rowHeight, kMinimumFontSize);
  layout.pushFontSize = layout.fontSize;
}

void SizeSpaced(Layout& layout, int width, int height, const LayoutInput& input) {
  const Frame& frame = input.mode == LayoutMode::kNarrow ? kNarrowFrame : kOrdinaryFrame;
  layout.rowHeight = Zoomed(RowHeightOf(width, height, input.lineSpacing, frame), input.zoomPercent);
  layout.fontSize = FontSizeOf(layout.rowHeight, input.lineSpacing);
  layout.pushFontSize = FontSizeOf(layout.rowHeight, input.pushLineSpacing);
}

int RowsWithin(int height, int rowHeight) {
  constexpr int kFewest = 2;
  return rowHeight > 0 ? std::clamp(height / rowHeight, kFewest, kScreenRows) : kScreenRows;
}

void Place(Layout& layout, int width, int height, const LayoutInput& input) {
  if (input.atTopLeft) return;
  const int restHeight = height - kScreenRows * layout.rowHeight;
  if (input.mode == LayoutMode::kNarrow) {
    layout.originY = restHeight;
    return;
  }
  layout.originX = (width - 40 * layout.fontSize) / 2;
  layout.pushOriginX = std::min(layout.originX, (width - 40 * layout.pushFontSize) / 2);
  layout.originY = restHeight / 2;
}

}  // namespace

Layout RecalcLayout(const LayoutInput& input) {
  const int width = std::clamp(input.width, 1, kMaximumSide);
  const int height = std::clamp(input.height, 1, kMaximumSide);
  Layout layout;
  if (input.mode == LayoutMode::kFitted)
    SizeFitted(layout, width, height, input.zoomPercent);
  else
    SizeSpaced(layout, width, height, input);
  layout.halfCell = layout.fontSize / 2;
  layout.rowsInSight = RowsWithin(height, layout.rowHeight);
  Place(layout, width, height, input);
  return layout;
}

int FirstInSight(const Layout& layout) {
  return kScreenRows - layout.rowsInSight;
}

int RowTop(const Layout& layout, int row) {
  const int leftOut = layout.originY < 0 ? 0 : FirstInSight(layout);
  return layout.originY + (row - leftOut) * layout.rowHeight;
}

int RowAt(const Layout& layout, int y) {
  const int height = std::max(layout.rowHeight, 1);
  const int below = y - RowTop(layout, 0);
  return below < 0 ? -((height - 1 - below) / height) : below / height;
}

RowGrid GridOf(const Layout& layout, RowSize size) {
  if (size == RowSize::kPush) return {layout.pushOriginX, layout.pushFontSize / 2};
  return {layout.originX, layout.halfCell};
}

}  // namespace quillet
