#include "render/paint/row_marks.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "render/contrast.h"

namespace quillet {
namespace {

constexpr int kPennants = 7;
// Foregrounds of the palette for the flags 1 to 7; the fourth is dark blue, which has a shade of its own.
constexpr std::uint8_t kPennantFore[kPennants] = {9, 10, 11, 12, 13, 14, 15};
constexpr int kBlueFlag = 4;
constexpr int kNarrowestFlag = 5;

constexpr int kSmallestAge = 10;    // em in device pixels
constexpr double kAgeSize = 0.625;  // of the row's letters: rounded, still six tenths of their height
// What is left of its width at least when an age is pushed together: of the em, and in device pixels.
constexpr double kAgeCondensed = 0.44;
constexpr double kNarrowestAge = 8;
// The first of these with which an age can be read.
constexpr double kAgeOpacities[] = {0.7, 0.8, 0.9, 1};
constexpr std::uint8_t kAgeFore = 14;
constexpr int kAgeEnd = 2;  // device pixels that stay free before the right edge

constexpr std::uint8_t kTagGround = 41;
constexpr std::uint8_t kTagFore = 15;
constexpr int kSmallestTag = 6;
// How far the middle of Chinese characters lies above the baseline, as a share of the em.
constexpr double kInkMiddle = 0.38;

int CountOf(std::uint8_t pennants) {
  return std::popcount(static_cast<unsigned>(pennants & 0xFE));
}

double AgeOpacity(std::uint32_t ground, std::uint32_t colour) {
  const auto* const readable =
      std::find_if(std::begin(kAgeOpacities), std::end(kAgeOpacities) - 1, [=](double opacity) {
        const auto share = static_cast<unsigned>(std::lround(opacity * 256));
        return Contrast(ground, MixColours(ground, colour, share)) >= kReadableContrast;
      });
  return *readable;
}

}  // namespace

bool PennantsFit(std::uint8_t pennants, int room) {
  return room >= kNarrowestFlag * CountOf(pennants);
}

int PennantsWidth(std::uint8_t pennants, int height, int room) {
  const int count = CountOf(pennants);
  if (count == 0 || !PennantsFit(pennants, room)) return 0;
  return count * std::min(std::max(kNarrowestFlag, height * 2 / 5), room / count);
}

std::uint32_t RowMarks::PennantColour(int number) const {
  if (number == kBlueFlag) return kit_.colours.ReadableBlue();
  return kit_.colours.At(kPennantFore[number - 1]);
}

// The colours tell the flags apart; a palette of black and white has none.
bool RowMarks::HasColours() const {
  return kit_.colours.At(kPennantFore[0]) != kit_.colours.At(kPennantFore[1]);
}

void RowMarks::PaintPennants() {
  const int count = CountOf(row_.page.pennants);
  if (count == 0) return;
  if (PennantsFit(row_.page.pennants, place_.left))
    PaintFlags(count);
  else if (HasColours())
    PaintSegments();
  else
    PaintSquares();
}

void RowMarks::PaintFlags(int count) {
  const int pitch = PennantsWidth(row_.page.pennants, place_.height, place_.left) / count;
  const int width = std::max(pitch - std::max(1, pitch / 6), 1);
  const int height = std::min(place_.height * 3 / 5, 2 * width);
  int x = place_.left - count * pitch;
  for (int number = 1; number <= kPennants; ++number) {
    if (!HasPennant(number)) continue;
    PaintFlag({x, place_.top + (place_.height - height) / 2, width, height}, PennantColour(number));
    x += pitch;
  }
}

// A pole and a pennant that narrows to a point at two thirds of its height.
void RowMarks::PaintFlag(const QRect& area, std::uint32_t colour) {
  const int pole = std::max(1, area.width() / 7);
  const QSize size(std::max(area.width() - pole, 1), std::max(area.height() * 2 / 3, 1));
  kit_.canvas.Fill({area.left(), area.top(), pole, area.height()}, colour);
  kit_.canvas.BlendOver({area.left() + pole, area.top()}, kit_.labels.Shape(MarkShape::kPennant, size).View(),
                        colour);
}

// Bars at the foot of the first cells.
void RowMarks::PaintSegments() {
  const int pitch = place_.halfCell;
  const int width = std::max(pitch - std::max(1, pitch / 6), 1);
  const int height = std::max(2, place_.height / 8);
  int x = std::max(place_.left, 0);
  for (int number = 1; number <= kPennants; ++number) {
    if (!HasPennant(number)) continue;
    kit_.canvas.Fill({x, place_.top + place_.height - height, width, height}, PennantColour(number));
    x += pitch;
  }
}

// Without colours the place tells which flag it is: that of the first cell is flag 1. Hollow, so that a row
// of them is no underline.
void RowMarks::PaintSquares() {
  const int line = std::max(1, place_.height / 24);
  const int side = std::max(place_.height / 6, 3 * line);
  const int top = place_.top + place_.height - side;
  for (int number = 1; number <= kPennants; ++number) {
    if (!HasPennant(number)) continue;
    const QRect square(place_.X(number - 1) + (place_.halfCell - side) / 2, top, side, side);
    kit_.canvas.Fill(square, PennantColour(number));
    kit_.canvas.Fill(square.adjusted(line, line, -line, -line), row_.margin.background);
  }
}

void RowMarks::PaintAge(GlyphSheet& sheet) {
  if (row_.page.age.empty()) return;
  const int gap = (place_.halfCell + 1) / 2;
  const int left = std::max(place_.X(AgeColumn(row_.page)), 0) + gap;
  const int room = kit_.rightEdge - kAgeEnd - left;
  const int em = std::max(static_cast<int>(std::ceil(kAgeSize * 2 * place_.halfCell)), kSmallestAge);
  const std::uint32_t colour = kit_.colours.At(kAgeFore);
  const double narrowest = std::max(kAgeCondensed * em, kNarrowestAge);
  const Label* label =
      kit_.labels.Condensed(row_.page.age, em, narrowest, room, AgeOpacity(row_.margin.background, colour));
  if (label == nullptr) return;
  kit_.canvas.BlendOver({left, place_.top + sheet.Baseline() - label->baseline}, label->ink.View(), colour);
}

void RowMarks::PaintTag(RowPainter& cells) {
  const int col = row_.page.tagCol;
  if (row_.page.tag.empty() || col >= kCols) return;
  const int gap = std::max(1, place_.height / 12);
  const int height = place_.height - 2 * gap;
  const int em = std::min(static_cast<int>(std::lround(height * 0.72)), height);
  if (em < kSmallestTag) return;
  const int padding = (em + 2) / 3;
  const int left = std::max(place_.X(col), 0);
  const int end = row_.page.tagEnd;
  const int right = end >= kCols ? kit_.rightEdge : std::min(kit_.rightEdge, place_.X(std::max(end, col)));
  const Label* label = kit_.labels.Elided(row_.page.tag, em, right - left - 2 * padding, 1);
  if (label == nullptr) return;

  const std::uint32_t page = kit_.colours.At(16);
  const std::uint32_t tint = kit_.colours.At(kTagGround);
  const std::uint32_t ground = tint == page ? kit_.colours.Bar() : tint;
  const QSize size(label->ink.Width() + 2 * padding, height);
  PaintTagGround(left + size.width(), cells);
  kit_.canvas.BlendOver({left, place_.top + gap}, kit_.labels.Shape(MarkShape::kBox, size).View(), ground);
  const int baseline = static_cast<int>(std::lround(place_.top + place_.height / 2.0 + em * kInkMiddle));
  kit_.canvas.BlendOver({left + padding, baseline - label->baseline}, label->ink.View(),
                        ReadableOn(ground, kit_.colours.At(kTagFore)));
}

// Whole characters from where the tag begins up to `right`, and all of an age that it reaches.
void RowMarks::PaintTagGround(int right, RowPainter& cells) {
  const auto isTrail = [this](int col) {
    return col < kCols && row_.look[static_cast<std::size_t>(col)].part == CellPart::kTrail;
  };
  int first = row_.page.tagCol;
  int last = (right - place_.left + place_.halfCell - 1) / place_.halfCell;
  if (isTrail(first)) --first;
  if (isTrail(last)) ++last;
  QRect under = place_.Cells(first, last);
  if (!row_.page.age.empty() && last > AgeColumn(row_.page)) under.setRight(kit_.canvas.Width() - 1);
  kit_.canvas.ClipTo(under);
  cells.PaintMargins(row_.margin);
  cells.PaintGround(row_.look);
}

}  // namespace quillet
