#include "core/screen_snapshot.h"

#include <cstring>
#include <type_traits>

namespace quillet {

// LiveScreen and the posted copies move snapshots as bytes.
static_assert(std::is_trivially_copyable_v<ScreenSnapshot>);

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
  std::uint8_t* const cells = text[static_cast<std::size_t>(row)].data();
  std::uint8_t* const colours = attr[static_cast<std::size_t>(row)].data();
  const std::size_t from = fromCol < 0 ? 0 : static_cast<std::size_t>(fromCol);
  std::memset(cells + from, ' ', kCols - from);
  std::memset(colours + from, kAttrBlank, kCols - from);
}

void ScreenSnapshot::MoveRowsDown(int first, int count) {
  if (first < 0) first = 0;
  if (count <= 0 || first + count >= kRows) return;
  const auto from = static_cast<std::size_t>(first);
  const auto to = static_cast<std::size_t>(first + count);
  const std::size_t size = (kRows - to) * kRowStride;
  std::memmove(text[to].data(), text[from].data(), size);
  std::memmove(attr[to].data(), attr[from].data(), size);
}

void ScreenSnapshot::ScrollUp() {
  constexpr std::size_t kSize = (kRows - 1) * sizeof(ScreenRow);
  std::memmove(text[0].data(), text[1].data(), kSize);
  std::memmove(attr[0].data(), attr[1].data(), kSize);
  BlankRow(kRows - 1, 0);
}

}  // namespace quillet
