#include "render/row_look.h"

#include <cmath>

#include "render/shape_glyphs.h"

namespace quillet {
namespace {

constexpr char16_t kIdeographicSpace = 0x3000;
constexpr int kBlue = 4;
constexpr int kBrightBlue = 12;
constexpr int kBlackBackground = 16;
// Contrast on black 4.8 and 8.0; still told apart from each other and from cyan.
constexpr std::uint32_t kLighterBlue = 0x4C72E0;
constexpr std::uint32_t kLighterBrightBlue = 0x7C9BFF;
// Below this contrast a bar in the character's own colour is easily missed.
constexpr double kCaretContrast = 2.5;

bool IsBlank(char16_t unit) {
  return unit == u' ' || unit == kIdeographicSpace;
}

// Blocks keep their colour: in a picture they lie beside backgrounds of the same blue.
std::uint32_t ForegroundColour(char16_t unit, std::uint8_t attr, const LookOptions& options) {
  const int index = ForegroundIndex(attr);
  if (options.lighterDarkBlue && BackgroundIndex(attr) == kBlackBackground && !IsFilledShape(unit)) {
    if (index == kBlue) return kLighterBlue;
    if (index == kBrightBlue) return kLighterBrightBlue;
  }
  return (*options.palette)[static_cast<std::size_t>(index)];
}

double LinearChannel(std::uint32_t byte) {
  const double share = static_cast<double>(byte) / 255;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double Luminance(std::uint32_t colour) {
  return 0.2126 * LinearChannel(colour >> 16 & 0xFF) + 0.7152 * LinearChannel(colour >> 8 & 0xFF) +
         0.0722 * LinearChannel(colour & 0xFF);
}

// WCAG 2 contrast ratio, 1 to 21.
double Contrast(std::uint32_t one, std::uint32_t other) {
  const double a = Luminance(one) + 0.05;
  const double b = Luminance(other) + 0.05;
  return a > b ? a / b : b / a;
}

void MarkCaret(int caretCol, RowLook& row) {
  if (caretCol < 0 || caretCol >= kCols) return;
  const auto col = static_cast<std::size_t>(caretCol);
  row[col].caret = true;
  if (row[col].part == CellPart::kLead) row[col + 1].caret = true;
  if (row[col].part == CellPart::kTrail) row[col - 1].caret = true;
}

}  // namespace

RowLook ResolveRow(const ScreenRow& text, const ScreenRow& attr, int caretCol, const CharsetTables& tables,
                   const LookOptions& options) {
  const RowCells cells = DecodeRow(text, tables);
  RowLook row;
  for (std::size_t col = 0; col < kCols; ++col) {
    const bool hidden = options.blinkOff && (attr[col] & kAttrBlink) != 0;
    row[col].part = cells[col].part;
    row[col].unit = hidden || IsBlank(cells[col].unit) ? char16_t{0} : cells[col].unit;
    row[col].background = (*options.palette)[static_cast<std::size_t>(BackgroundIndex(attr[col]))];
  }
  MarkCaret(caretCol, row);
  for (std::size_t col = 0; col < kCols; ++col) {
    CellLook& cell = row[col];
    if (cell.unit != 0 || cell.caret) cell.foreground = ForegroundColour(cell.unit, attr[col], options);
  }
  return row;
}

std::uint32_t CaretColour(const CellLook& cell) {
  if (Contrast(cell.foreground, cell.background) >= kCaretContrast) return cell.foreground;
  return Luminance(cell.background) > 0.18 ? 0x000000 : 0xFFFFFF;
}

}  // namespace quillet
