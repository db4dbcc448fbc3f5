#include "render/shape_glyphs.h"

#include <cmath>

#include "render/box_lines.h"
#include "render/shape_canvas.h"
#include "render/sign_shapes.h"

namespace quillet {
namespace {

constexpr char16_t kFirstBlock = 0x2580;
constexpr char16_t kLastBlock = 0x259F;
constexpr char16_t kFirstTriangle = 0x25E2;
constexpr char16_t kLastTriangle = 0x25E5;

// The pixel at which `eighths` of `size` end.
int Eighths(int size, int eighths) {
  return (size * eighths + 4) / 8;
}

// The quarters of U+2596 to U+259F: 1 upper left, 2 upper right, 4 lower left, 8 lower right.
constexpr int kQuadrants[] = {4, 8, 1, 1 | 4 | 8, 1 | 8, 1 | 2 | 4, 1 | 2 | 8, 2, 2 | 4, 2 | 4 | 8};

void DrawQuadrants(int quarters, ShapeCanvas& canvas) {
  const int middleX = Eighths(canvas.Width(), 4);
  const int middleY = Eighths(canvas.Height(), 4);
  if (quarters & 1) canvas.Fill(0, 0, middleX, middleY);
  if (quarters & 2) canvas.Fill(middleX, 0, canvas.Width(), middleY);
  if (quarters & 4) canvas.Fill(0, middleY, middleX, canvas.Height());
  if (quarters & 8) canvas.Fill(middleX, middleY, canvas.Width(), canvas.Height());
}

void DrawBlock(char16_t unit, ShapeCanvas& canvas) {
  const int width = canvas.Width();
  const int height = canvas.Height();
  if (unit == 0x2580) {
    canvas.Fill(0, 0, width, Eighths(height, 4));
  } else if (unit <= 0x2588) {
    canvas.Fill(0, std::min(Eighths(height, 0x2588 - unit), height - 1), width, height);
  } else if (unit <= 0x258F) {
    canvas.Fill(0, 0, std::max(Eighths(width, 0x2590 - unit), 1), height);
  } else if (unit == 0x2590) {
    canvas.Fill(Eighths(width, 4), 0, width, height);
  } else if (unit <= 0x2593) {
    canvas.Fill(0, 0, width, height, static_cast<std::uint8_t>(64 * (unit - 0x2590)));
  } else if (unit == 0x2594) {
    canvas.Fill(0, 0, width, std::max(Eighths(height, 1), 1));
  } else if (unit == 0x2595) {
    canvas.Fill(width - std::max(Eighths(width, 1), 1), 0, width, height);
  } else {
    DrawQuadrants(kQuadrants[unit - 0x2596], canvas);
  }
}

// Half of the cell, cut from corner to corner. Order: lower right, lower left, upper left, upper right.
void DrawTriangle(char16_t unit, ShapeCanvas& canvas) {
  const double width = canvas.Width();
  const double height = canvas.Height();
  const double length = std::hypot(width, height);
  const bool rising = unit == 0x25E2 || unit == 0x25E4;  // cut along "/"
  const bool lower = unit == 0x25E2 || unit == 0x25E3;
  canvas.Paint([&](double x, double y) {
    const double below = rising ? x * height + y * width - width * height : y * width - x * height;
    return (lower ? below : -below) / length;
  });
}

// Dashes and rules that faces leave short of the cell's edges, although people build lines of them.
enum class Rule { kNone, kMiddle, kTop, kBottomRow, kUpright };

Rule RuleOf(char16_t unit) {
  switch (unit) {
    case 0x2014:  // em dash
    case 0x2015:  // horizontal bar
      return Rule::kMiddle;
    case 0xFFE3:  // fullwidth macron
      return Rule::kTop;
    case 0xFF3F:  // fullwidth low line
    case 0x02CD:  // modifier letter low macron
      return Rule::kBottomRow;
    case 0xFF5C:  // fullwidth vertical line
    case 0xFE31:  // vertical em dash
      return Rule::kUpright;
    default:
      return Rule::kNone;
  }
}

void DrawRule(Rule rule, ShapeCanvas& canvas) {
  const int width = canvas.Width();
  const int height = canvas.Height();
  const int thickness = LightThickness(width);
  if (rule == Rule::kUpright)
    canvas.Fill((width - thickness) / 2, 0, (width - thickness) / 2 + thickness, height);
  else if (rule == Rule::kTop)
    canvas.Fill(0, 0, width, thickness);
  else if (rule == Rule::kBottomRow)
    canvas.Fill(0, height - thickness, width, height);
  else
    canvas.Fill(0, (height - thickness) / 2, width, (height - thickness) / 2 + thickness);
}

bool Within(char16_t unit, char16_t first, char16_t last) {
  return unit >= first && unit <= last;
}

}  // namespace

bool IsFilledShape(char16_t unit) {
  return Within(unit, kFirstBlock, kLastBlock) || Within(unit, kFirstTriangle, kLastTriangle);
}

bool IsShape(char16_t unit) {
  return Within(unit, kFirstBoxLine, kLastBoxLine) || IsFilledShape(unit) || RuleOf(unit) != Rule::kNone ||
         IsSignUnit(unit);
}

bool DrawShape(char16_t unit, const CoverageTile& tile) {
  if (!IsShape(unit)) return false;
  ShapeCanvas canvas(tile);
  if (const Rule rule = RuleOf(unit); rule != Rule::kNone)
    DrawRule(rule, canvas);
  else if (IsSignUnit(unit))
    DrawSign(unit, canvas);
  else if (unit <= kLastBoxLine)
    DrawBoxLine(unit, canvas);
  else if (unit <= kLastBlock)
    DrawBlock(unit, canvas);
  else
    DrawTriangle(unit, canvas);
  return true;
}

}  // namespace quillet
