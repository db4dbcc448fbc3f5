// Pages for tests that want everything a row can carry at once: any bytes, colours, styles, sizes and marks.
#pragma once

#include <random>

#include "render/paint/frame_painter.h"

namespace quillet {

class RandomPage {
 public:
  explicit RandomPage(unsigned seed) : random_(seed) {}

  unsigned Pick(unsigned count) { return static_cast<unsigned>(random_() >> 7) % count; }

  // Changes some of what `frame` shows.
  void Scribble(FrameState& frame) {
    for (unsigned changes = Pick(60); changes > 0; --changes)
      ScribbleCell(frame.page[Pick(kRows)]);
    for (unsigned changes = Pick(4); changes > 0; --changes)
      ScribbleMarks(frame.page[Pick(kRows)]);
    for (unsigned changes = Pick(4); changes > 0; --changes)
      ScribbleGround(frame.page[Pick(kRows)]);
    frame.caretRow = static_cast<int>(Pick(28)) - 2;
    frame.caretCol = static_cast<int>(Pick(84)) - 2;
    frame.caretShape = Pick(2) == 0 ? CaretShape::kLine : CaretShape::kBlock;
    frame.blinkOff = Pick(2) == 0;
    if (Pick(8) == 0) frame.progress = Pick(11) / 10.0;
    if (Pick(8) == 0) frame.rightInset = static_cast<int>(Pick(60)) - 10;
  }

 private:
  // Now and then a whole character, so that pairs are frequent.
  void ScribbleCell(PageRow& row) {
    const std::size_t col = Pick(kCols);
    row.cells[col] = Cell(Pick(256));
    if (col + 1 == kCols || Pick(3) == 0) return;
    row.cells[col] = Cell(0xA1 + Pick(40));
    row.cells[col + 1] = Cell(0x40 + Pick(63));
  }

  PageCell Cell(unsigned byte) {
    const unsigned back = Pick(3) == 0 ? Pick(256) : 16;
    return {static_cast<std::uint8_t>(byte), static_cast<std::uint8_t>(Pick(50)),
            static_cast<std::uint8_t>(back), static_cast<std::uint8_t>(Pick(8))};
  }

  void ScribbleMarks(PageRow& row) {
    const std::u16string tags[] = {u"", u"", u"不錯的人",
                                   u"always argues about commas, semicolons and colons"};
    const std::u16string ages[] = {u"", u"5分鐘前", u"1個半小時前", u"12年前"};
    row.size = Pick(2) == 0 ? RowSize::kPush : RowSize::kOrdinary;
    row.pennants = static_cast<std::uint8_t>(Pick(3) == 0 ? Pick(256) : 0);
    row.tag = tags[Pick(4)];
    row.tagCol = static_cast<std::uint8_t>(Pick(90));
    row.tagEnd = static_cast<std::uint8_t>(Pick(2) == 0 ? kCols : Pick(90));
    row.age = ages[Pick(4)];
  }

  // The grounds of whole rows, as push lines and captions have; and the end of a row without the rest.
  void ScribbleGround(PageRow& row) {
    const std::uint8_t grounds[] = {16, 24, 24, 25};
    const std::uint8_t ground = grounds[Pick(4)];
    const std::uint8_t styles[] = {0, 0, CS_BAR, CS_HOVER};
    const std::uint8_t style = styles[Pick(4)];
    for (std::size_t col = Pick(2) == 0 ? 0 : 79; col < kCols; ++col) {
      row.cells[col].back = ground;
      row.cells[col].style = style;
    }
  }

  std::minstd_rand random_;
};

}  // namespace quillet
