#include "render/row_cells.h"

#include "render/sign_shapes.h"

namespace quillet {
namespace {

constexpr bool IsLead(unsigned byte) {
  return byte >= 0x81 && byte <= 0xFE;
}

constexpr bool IsTrail(unsigned byte) {
  return byte >= 0x40 && byte != 0x7F && byte != 0xFF;
}

constexpr bool IsPrintableAscii(unsigned byte) {
  return byte >= 0x20 && byte < 0x7F;
}

bool BeginsSign(const std::array<PageCell, kCols>& row, std::size_t col) {
  return IsSign(row[col].fore) && col + 1 < kCols && row[col + 1].fore == row[col].fore;
}

char16_t UnitOfSign(std::uint8_t sign) {
  return sign == kPictureSign ? kPictureSignUnit : kVideoSignUnit;
}

char16_t UnitOfPair(unsigned lead, unsigned trail, const CharsetTables& tables) {
  const char16_t unit = tables.big5ToUnicode[lead + 256 * trail];
  return unit == 0 ? kUnknownUnit : unit;
}

}  // namespace

RowCells DecodeRow(const std::array<PageCell, kCols>& row, const CharsetTables& tables) {
  RowCells cells;
  for (std::size_t col = 0; col < kCols; ++col) {
    const unsigned byte = row[col].byte;
    if (BeginsSign(row, col)) {
      const char16_t unit = UnitOfSign(row[col].fore);
      cells[col] = {unit, CellPart::kLead};
      cells[++col] = {unit, CellPart::kTrail};
    } else if (IsLead(byte) && col + 1 < kCols && IsTrail(row[col + 1].byte)) {
      const char16_t unit = UnitOfPair(byte, row[col + 1].byte, tables);
      cells[col] = {unit, CellPart::kLead};
      cells[++col] = {unit, CellPart::kTrail};
    } else if (IsPrintableAscii(byte)) {
      cells[col].unit = static_cast<char16_t>(byte);
    }
  }
  return cells;
}

}  // namespace quillet
