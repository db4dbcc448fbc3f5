#include "input/text/line_characters.h"

#include <algorithm>

#include "core/charset.h"

namespace quillet {
namespace {

constexpr bool IsControl(std::uint8_t byte) {
  return byte < ' ' || byte == 0x7F;
}

int WidthAt(const ScreenRow& text, int col) {
  return text[static_cast<std::size_t>(col)] >= 0x80 && col + 1 < kCols ? 2 : 1;
}

char16_t UnitOf(const ScreenRow& text, ColumnSpan cols) {
  const auto first = static_cast<std::size_t>(cols.first);
  if (IsControl(text[first])) return u' ';
  const std::span<const std::uint8_t> bytes(text.data() + first,
                                            static_cast<std::size_t>(cols.last - cols.first));
  const std::u16string units = FromBig5(bytes, 0, bytes.size());
  return units.empty() ? char16_t{0} : units.front();
}

}  // namespace

std::vector<LineCharacter> CharactersOf(const ArticleLine& line, ColumnSpan range) {
  std::vector<LineCharacter> characters;
  const int last = std::min(range.last, kCols);
  int col = CharacterBoundary(line.text, range.first);
  while (col < last) {
    const ColumnSpan cols{col, col + WidthAt(line.text, col)};
    characters.push_back({cols, UnitOf(line.text, cols), line.attr[static_cast<std::size_t>(col)]});
    col = cols.last;
  }
  return characters;
}

int CharacterBoundary(const ScreenRow& text, int col) {
  if (col >= kCols) return kCols;
  int boundary = 0;
  while (boundary < col)
    boundary += WidthAt(text, boundary);
  return boundary;
}

int NearestBoundary(const ScreenRow& text, int halves) {
  int boundary = 0;
  while (boundary < kCols) {
    const int next = boundary + WidthAt(text, boundary);
    if (halves < boundary + next) break;  // left of the middle
    boundary = next;
  }
  return boundary;
}

int BoundaryBefore(const ScreenRow& text, int col) {
  int boundary = 0;
  for (int next = 0; next < std::min(col, kCols); next += WidthAt(text, next))
    boundary = next;
  return boundary;
}

int EndOfText(const ArticleLine& line) {
  const std::vector<LineCharacter> characters = CharactersOf(line);
  const auto last = std::find_if(characters.rbegin(), characters.rend(),
                                 [](const LineCharacter& character) { return !character.IsBlank(); });
  return last == characters.rend() ? 0 : last->cols.last;
}

}  // namespace quillet
