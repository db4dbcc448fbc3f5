#include "bbs/screen_fields.h"

#include <algorithm>
#include <limits>
#include <span>

#include "core/ascii.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr bool IsRow(int row) {
  return row >= 0 && row < kRows;
}

int Width(std::uint8_t firstByte) {
  return firstByte < 0x80 ? 1 : 2;
}

// The first column at or behind `col` where a character begins.
int CharacterStart(const ScreenRow& text, int col) {
  col = std::max(col, 0);
  return col >= kCols || IsCharacterStart(text, col) ? col : col + 1;
}
int CharacterStart(const ScreenSnapshot& screen, int row, int col) {
  return CharacterStart(screen.text[static_cast<std::size_t>(row)], col);
}

int AddDigit(int number, std::uint8_t digit) {
  constexpr int kLargest = std::numeric_limits<int>::max();
  const int value = digit - '0';
  return number > (kLargest - value) / 10 ? kLargest : 10 * number + value;
}

int SkipBlanks(const ScreenSnapshot& screen, int row, int col, int last) {
  while (col <= last && screen.TextAt(row, col) == ' ')
    ++col;
  return col;
}

}  // namespace

std::u16string FieldText(const ScreenSnapshot& screen, int row, int first, int last, Trim trim) {
  if (!IsRow(row)) return {};
  return FieldText(screen.text[static_cast<std::size_t>(row)], {first, std::min(last, kCols - 1) + 1}, trim);
}

std::u16string FieldText(const ScreenRow& text, CellRange range, Trim trim) {
  const std::span<const std::uint8_t> cells(text.data(), kCols);
  const int from = CharacterStart(text, range.first);
  const int behind = std::min(range.last, kCols);
  if (from >= behind) return {};
  std::u16string field = FromBig5(cells, static_cast<std::size_t>(from), static_cast<std::size_t>(behind));
  std::erase(field, u'\0');
  if (trim == Trim::kNo) return field;
  const std::u16string_view inner = Trimmed(field);
  return inner.size() == field.size() ? field : std::u16string(inner);
}

CellRange WithoutBlanks(const ScreenRow& text, CellRange range) {
  const auto isBlank = [&text](int col) { return text[static_cast<std::size_t>(col)] == ' '; };
  while (!range.IsEmpty() && isBlank(range.first))
    ++range.first;
  while (!range.IsEmpty() && isBlank(range.last - 1))
    --range.last;
  return range;
}

std::optional<int> FindCharacter(const ScreenSnapshot& screen, int row, int from, int last, char wanted) {
  if (!IsRow(row)) return std::nullopt;
  last = std::min(last, kCols - 1);
  for (int col = CharacterStart(screen, row, from); col <= last; col += Width(screen.TextAt(row, col)))
    if (screen.TextAt(row, col) == static_cast<std::uint8_t>(wanted)) return col;
  return std::nullopt;
}

std::optional<int> FindLastCharacter(const ScreenSnapshot& screen, int row, int from, int last, char wanted) {
  for (int col = std::min(last, kCols - 1); col >= from; --col)
    if (IsCharacter(screen, row, col, wanted)) return col;
  return std::nullopt;
}

std::optional<int> FindText(const ScreenSnapshot& screen, int row, int from, std::string_view big5) {
  if (!IsRow(row) || big5.empty()) return std::nullopt;
  const std::string_view cells = screen.RowText(row);
  for (int col = CharacterStart(screen, row, from); col < kCols; col += Width(screen.TextAt(row, col)))
    if (cells.substr(static_cast<std::size_t>(col), big5.size()) == big5) return col;
  return std::nullopt;
}

bool IsCharacterStart(const ScreenSnapshot& screen, int row, int col) {
  return IsRow(row) && IsCharacterStart(screen.text[static_cast<std::size_t>(row)], col);
}

bool IsCharacterStart(const ScreenRow& text, int col) {
  if (col < 0 || col >= kCols) return false;
  // A byte without the high bit always ends a character, so only the run of bytes with it decides.
  int run = col;
  while (run > 0 && text[static_cast<std::size_t>(run - 1)] >= 0x80)
    --run;
  return (col - run) % 2 == 0;
}

bool IsCharacter(const ScreenSnapshot& screen, int row, int col, char wanted) {
  return IsRow(row) && col >= 0 && col < kCols &&
         screen.TextAt(row, col) == static_cast<std::uint8_t>(wanted) && IsCharacterStart(screen, row, col);
}

bool IsBlankBetween(const ScreenSnapshot& screen, int row, int first, int last) {
  last = std::min(last, kCols - 1);
  return !IsRow(row) || SkipBlanks(screen, row, std::max(first, 0), last) > last;
}

int FieldNumber(const ScreenSnapshot& screen, int row, int col, int last) {
  if (!IsRow(row) || col < 0) return 0;
  last = std::min(last, kCols - 1);
  int number = 0;
  for (col = SkipBlanks(screen, row, col, last); col <= last && IsAsciiDigit(screen.TextAt(row, col)); ++col)
    number = AddDigit(number, screen.TextAt(row, col));
  return number;
}

std::optional<int> WholeNumber(const ScreenSnapshot& screen, int row, int first, int last) {
  if (!IsRow(row) || first < 0) return std::nullopt;
  last = std::min(last, kCols - 1);
  const int begin = SkipBlanks(screen, row, first, last);
  int end = begin;
  while (end <= last && IsAsciiDigit(screen.TextAt(row, end)))
    ++end;
  if (end == begin || SkipBlanks(screen, row, end, last) <= last) return std::nullopt;
  return FieldNumber(screen, row, begin, end - 1);
}

}  // namespace quillet
