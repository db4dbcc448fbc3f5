#include "render/row_edit.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "render/row_cells.h"
#include "render/style_colours.h"

namespace quillet {
namespace {

// "＊" and "　" in Big5.
constexpr std::uint8_t kWideStar[] = {0xA1, 0xAF};
constexpr std::uint8_t kWideBlank[] = {0xA1, 0x40};

// The characters of a row and the column where each begins.
struct RowText {
  std::array<char16_t, kCols> units;
  std::array<int, kCols + 1> cols;  // with the row's end behind the last one
  std::size_t size = 0;
};

RowText TextOf(const PageRow& row) {
  const RowCells cells = DecodeRow(row.cells, Charset());
  RowText text;
  for (std::size_t col = 0; col < kCols; ++col) {
    if (cells[col].part == CellPart::kTrail) continue;
    text.units[text.size] = cells[col].unit;
    text.cols[text.size] = static_cast<int>(col);
    ++text.size;
  }
  text.cols[text.size] = kCols;
  return text;
}

bool IsWideBlank(const PageRow& row, std::size_t col) {
  return row.cells[col].byte == kWideBlank[0] && row.cells[col + 1].byte == kWideBlank[1];
}

void ColourOnDarkGround(PageRow& row, CellRange range) {
  for (int col = range.first; col < range.last; ++col) {
    PageCell& cell = row.cells[static_cast<std::size_t>(col)];
    if (IsDarkGround(cell.back)) cell.fore = kKeywordColour;
  }
}

bool IsHidable(const PageRow& row, const RowCells& cells, std::size_t col) {
  if (cells[col].part == CellPart::kLead) return !IsWideBlank(row, col);
  return cells[col].part == CellPart::kSingle && cells[col].unit != u' ';
}

void ReplaceText(PageRow& row, CellRange range, HiddenForm form, std::uint8_t style) {
  const RowCells cells = DecodeRow(row.cells, Charset());
  const bool stars = form == HiddenForm::kStars;
  const auto last = static_cast<std::size_t>(std::clamp(range.last, 0, kCols));
  for (auto col = static_cast<std::size_t>(std::max(range.first, 0)); col < last; ++col) {
    if (!IsHidable(row, cells, col)) continue;
    const bool wide = cells[col].part == CellPart::kLead;
    row.cells[col].byte = !stars ? std::uint8_t{' '} : wide ? kWideStar[0] : std::uint8_t{'*'};
    row.cells[col].style |= style;
    if (!wide) continue;
    row.cells[col + 1].byte = stars ? kWideStar[1] : std::uint8_t{' '};
    row.cells[col + 1].style |= style;
  }
}

}  // namespace

void HideText(PageRow& row, CellRange range, HiddenForm form) {
  ReplaceText(row, range, form, CS_HIDDEN);
}

void LeaveOut(PageRow& row, CellRange range) {
  ReplaceText(row, range, HiddenForm::kBlanks, 0);
}

bool ColourKeywords(PageRow& row, const Keywords& keywords) {
  if (keywords.Empty()) return false;
  const RowText text = TextOf(row);
  const std::u16string_view units(text.units.data(), text.size);
  bool found = false;
  for (std::size_t at = 0; at < text.size; ++at) {
    const std::size_t length = keywords.LengthAtBegin(units.substr(at));
    if (length == 0) continue;
    ColourOnDarkGround(row, {text.cols[at], text.cols[at + length]});
    found = true;
  }
  return found;
}

void Colour(PageRow& row, CellRange range, std::uint8_t fore) {
  for (int col = std::max(range.first, 0); col < std::min(range.last, kCols); ++col)
    row.cells[static_cast<std::size_t>(col)].fore = fore;
}

}  // namespace quillet
