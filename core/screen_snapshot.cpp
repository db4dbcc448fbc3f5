#include "core/screen_snapshot.h"

#include <cstring>
#include <type_traits>

#include "core/byte_words.h"

namespace quillet {

// LiveScreen and the posted copies move snapshots as bytes.
static_assert(std::is_trivially_copyable_v<ScreenSnapshot>);

namespace {

// Blanks the `kSize` cells from `from` on and the last `kSize` ones: a few wide stores.
template <std::size_t kSize>
void BlankBothEnds(ScreenRow& cells, ScreenRow& colours, std::size_t from) {
  std::memset(cells.data() + from, ' ', kSize);
  std::memset(cells.data() + kCols - kSize, ' ', kSize);
  std::memset(colours.data() + from, kAttrBlank, kSize);
  std::memset(colours.data() + kCols - kSize, kAttrBlank, kSize);
}

}  // namespace

void ScreenSnapshot::Clear() {
  for (ScreenRow& row : text) {
    row.fill(' ');
    row[kRowEnd] = '\0';
  }
  for (ScreenRow& row : attr)
    row.fill(kAttrBlank);
}

void ScreenSnapshot::BlankRow(int row, int fromCol) {
  if (row < 0 || row >= kRows || fromCol >= kCols) return;
  ScreenRow& cells = text[static_cast<std::size_t>(row)];
  ScreenRow& colours = attr[static_cast<std::size_t>(row)];
  const std::size_t from = fromCol < 0 ? 0 : static_cast<std::size_t>(fromCol);
  const std::size_t room = kCols - from;
  // What compilers make of one memset with an unknown size of up to 80 takes longer to start than to run.
  if (room >= 64) {
    BlankBothEnds<64>(cells, colours, from);
  } else if (room >= 32) {
    BlankBothEnds<32>(cells, colours, from);
  } else if (room >= 16) {
    BlankBothEnds<16>(cells, colours, from);
  } else if (room >= 8) {
    BlankBothEnds<8>(cells, colours, from);
  } else {
    constexpr std::size_t kLastWord = kCols - 8;
    const std::uint64_t behind = ~std::uint64_t{0} << (8 * (from - kLastWord));
    StoreMasked(cells.data() + kLastWord, RepeatByte(' '), behind);
    StoreMasked(colours.data() + kLastWord, RepeatByte(kAttrBlank), behind);
  }
}

void ScreenSnapshot::MoveRowsDown(int first, int count) {
  if (first < 0) first = 0;
  if (count <= 0 || first + count >= kRows) return;
  const auto from = static_cast<std::size_t>(first);
  const std::size_t to = from + static_cast<std::size_t>(count);
  const std::size_t size = (kRows - to) * kRowStride;
  std::memmove(text[to].data(), text[from].data(), size);
  std::memmove(attr[to].data(), attr[from].data(), size);
}

void ScreenSnapshot::ScrollUp() {
  constexpr std::size_t kSize = (kRows - 1) * sizeof(ScreenRow);
  std::memmove(text[0].data(), text[1].data(), kSize);
  std::memmove(attr[0].data(), attr[1].data(), kSize);
  BlankRow(kBottomRow, 0);
}

}  // namespace quillet
