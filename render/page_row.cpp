#include "render/page_row.h"

#include "render/palette.h"

namespace quillet {

PageRow PlainRow(const ScreenRow& text, const ScreenRow& attr) {
  PageRow row;
  for (std::size_t col = 0; col < kCols; ++col) {
    PageCell& cell = row.cells[col];
    cell.byte = text[col];
    cell.fore = static_cast<std::uint8_t>(ForegroundIndex(attr[col]));
    cell.back = static_cast<std::uint8_t>(BackgroundIndex(attr[col]));
    if ((attr[col] & kAttrBlink) != 0) cell.style = CS_BLINK;
  }
  return row;
}

Page PlainPage(const ScreenSnapshot& screen) {
  Page page;
  for (std::size_t row = 0; row < kRows; ++row)
    page[row] = PlainRow(screen.text[row], screen.attr[row]);
  return page;
}

}  // namespace quillet
