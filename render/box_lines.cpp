#include "render/box_lines.h"

#include <array>
#include <cmath>

namespace quillet {
namespace {

// The arms of each character from the centre to the left, right, top and bottom edge: '0' none, '1' light,
// '2' heavy, '3' double. Dashes, arcs and diagonals have rows of their own below.
constexpr std::array<const char*, 128> kArms = {
    "1100", "2200", "0011", "0022", "1100", "2200", "0011", "0022",  // 2500
    "1100", "2200", "0011", "0022", "0101", "0201", "0102", "0202",  // 2508
    "1001", "2001", "1002", "2002", "0110", "0210", "0120", "0220",  // 2510
    "1010", "2010", "1020", "2020", "0111", "0211", "0121", "0112",  // 2518
    "0122", "0221", "0212", "0222", "1011", "2011", "1021", "1012",  // 2520
    "1022", "2021", "2012", "2022", "1101", "2101", "1201", "2201",  // 2528
    "1102", "2102", "1202", "2202", "1110", "2110", "1210", "2210",  // 2530
    "1120", "2120", "1220", "2220", "1111", "2111", "1211", "2211",  // 2538
    "1121", "1112", "1122", "2121", "1221", "2112", "1212", "2221",  // 2540
    "2212", "2122", "1222", "2222", "1100", "2200", "0011", "0022",  // 2548
    "3300", "0033", "0301", "0103", "0303", "3001", "1003", "3003",  // 2550
    "0310", "0130", "0330", "3010", "1030", "3030", "0311", "0133",  // 2558
    "0333", "3011", "1033", "3033", "3301", "1103", "3303", "3310",  // 2560
    "1130", "3330", "3311", "1133", "3333", "0000", "0000", "0000",  // 2568
    "0000", "0000", "0000", "0000", "1000", "0010", "0100", "0001",  // 2570
    "2000", "0020", "0200", "0002", "1200", "0012", "2100", "0021",  // 2578
};

enum Weight { kNone, kLight, kHeavy, kDouble };

struct Arms {
  Weight left, right, up, down;
};

Arms ArmsOf(char16_t unit) {
  const char* arms = kArms[static_cast<std::size_t>(unit - kFirstBoxLine)];
  const auto weight = [arms](int index) { return static_cast<Weight>(arms[index] - '0'); };
  return {weight(0), weight(1), weight(2), weight(3)};
}

// Where the lines of one direction run, measured across them.
struct Lane {
  int size;    // of the cell
  int light;   // thickness of a light line and of each strand of a double one
  int heavy;   // thickness of a heavy line
  int spread;  // from the centre line to either strand of a double line

  // First pixel of a line: strand -1, 0 or 1.
  int Start(int strand) const { return (size - light) / 2 + strand * spread; }
  int HeavyStart() const { return (size - heavy) / 2; }
};

Lane LaneOf(int size, int width) {
  const int light = LightThickness(width);
  const int spread = std::max(light + (light == 1 ? 1 : 0), (width + 6) / 12);
  return {size, light, 2 * light + (light == 1 ? 1 : 0), spread};
}

// The strand of the crossing lines at which a strand of an arm begins: -1 is the far side of the centre, seen
// from the arm. `beside` is the crossing arm on this strand's side, `across` the other one, `opposite` the
// arm that continues this one. kThrough: the strand runs on to the far side.
constexpr int kThrough = -1;

int BeginOfSingle(Weight up, Weight down, bool continued) {
  if (up == kDouble && down == kDouble) return continued ? kThrough : 1;
  if (up == kDouble || down == kDouble) return kThrough;
  return 0;
}

int BeginOfStrand(Weight beside, Weight across) {
  if (beside == kDouble) return 1;
  return across == kDouble ? kThrough : 0;
}

// Draws along x or along y with the same rules.
class Pen {
 public:
  Pen(ShapeCanvas& canvas, bool vertical) : canvas_(canvas), vertical_(vertical) {}
  void Fill(int from, int to, int start, int thickness) {
    if (vertical_)
      canvas_.Fill(start, from, start + thickness, to);
    else
      canvas_.Fill(from, start, to, start + thickness);
  }

 private:
  ShapeCanvas& canvas_;
  bool vertical_;
};

// One direction of a character: the two arms along it and the two that cross it.
struct Direction {
  Weight low, high;            // the arms to the left and right, or up and down
  Weight crossLow, crossHigh;  // the arms up and down, or left and right
  Lane along;                  // lanes of the lines that cross
  Lane across;                 // lanes of the lines drawn here
};

// The pixels between which the crossing lines lie, for a line that has to reach their outer edge.
struct Junction {
  int from, to;
};

Junction JunctionOf(const Direction& d) {
  if (d.crossLow == kHeavy || d.crossHigh == kHeavy)
    return {d.along.HeavyStart(), d.along.HeavyStart() + d.along.heavy};
  return {d.along.Start(0), d.along.Start(0) + d.along.light};
}

void DrawStrand(Pen& pen, const Direction& d, int strand, int begin, bool high) {
  const int start = d.across.Start(strand);
  const Junction junction = JunctionOf(d);
  const bool centre = begin == 0;
  if (high)
    pen.Fill(centre ? junction.from : d.along.Start(begin), d.along.size, start, d.across.light);
  else
    pen.Fill(0, centre ? junction.to : d.along.Start(-begin) + d.along.light, start, d.across.light);
}

void DrawArm(Pen& pen, const Direction& d, bool high) {
  const Weight weight = high ? d.high : d.low;
  const bool continued = (high ? d.low : d.high) != kNone;
  const Junction junction = JunctionOf(d);
  if (weight == kHeavy) {
    const int from = high ? junction.from : 0;
    pen.Fill(from, high ? d.along.size : junction.to, d.across.HeavyStart(), d.across.heavy);
  } else if (weight == kLight) {
    DrawStrand(pen, d, 0, BeginOfSingle(d.crossLow, d.crossHigh, continued), high);
  } else if (weight == kDouble) {
    DrawStrand(pen, d, -1, BeginOfStrand(d.crossLow, d.crossHigh), high);
    DrawStrand(pen, d, 1, BeginOfStrand(d.crossHigh, d.crossLow), high);
  }
}

void DrawArms(const Arms& arms, ShapeCanvas& canvas) {
  const Lane columns = LaneOf(canvas.Width(), canvas.Width());
  const Lane rows = LaneOf(canvas.Height(), canvas.Width());
  Pen horizontal(canvas, false);
  Pen vertical(canvas, true);
  const Direction along{arms.left, arms.right, arms.up, arms.down, columns, rows};
  const Direction down{arms.up, arms.down, arms.left, arms.right, rows, columns};
  for (const bool high : {false, true}) {
    DrawArm(horizontal, along, high);
    DrawArm(vertical, down, high);
  }
}

// Dashes in a cell, 0 when the character is none.
int DashesOf(char16_t unit) {
  if (unit >= 0x2504 && unit <= 0x2507) return 3;
  if (unit >= 0x2508 && unit <= 0x250B) return 4;
  if (unit >= 0x254C && unit <= 0x254F) return 2;
  return 0;
}

// Each dash is followed by a gap of half its length, shared between both ends of the cell.
void DrawDashes(char16_t unit, int count, ShapeCanvas& canvas) {
  const Arms arms = ArmsOf(unit);
  const bool vertical = arms.up != kNone;
  const Lane along = LaneOf(vertical ? canvas.Height() : canvas.Width(), canvas.Width());
  const Lane across = LaneOf(vertical ? canvas.Width() : canvas.Height(), canvas.Width());
  const bool heavy = arms.left == kHeavy || arms.up == kHeavy;
  Pen pen(canvas, vertical);
  const double period = static_cast<double>(along.size) / count;
  for (int dash = 0; dash < count; ++dash) {
    const int from = static_cast<int>(std::lround(period * (dash + 1.0 / 6)));
    const int to = static_cast<int>(std::lround(period * (dash + 5.0 / 6)));
    pen.Fill(from, std::max(to, from + 1), heavy ? across.HeavyStart() : across.Start(0),
             heavy ? across.heavy : across.light);
  }
}

// A quarter of a circle about the middle of two edges, with straight ends where the cell is not square.
void DrawArc(bool toRight, bool toBottom, ShapeCanvas& canvas) {
  const Lane columns = LaneOf(canvas.Width(), canvas.Width());
  const Lane rows = LaneOf(canvas.Height(), canvas.Width());
  const double half = columns.light / 2.0;
  const double lineX = columns.Start(0) + half;
  const double lineY = rows.Start(0) + half;
  const double reachX = toRight ? canvas.Width() - lineX : lineX;
  const double reachY = toBottom ? canvas.Height() - lineY : lineY;
  // One pixel short, so that the last pixel at either edge is straight and meets its neighbour.
  const double radius = std::max(std::min(reachX, reachY) - 1, half);
  canvas.Paint([&](double x, double y) {
    // Distances from the crossing of the two lines, towards the arms.
    const double u = toRight ? x - lineX : lineX - x;
    const double v = toBottom ? y - lineY : lineY - y;
    if (u >= radius) return half - std::abs(v);
    if (v >= radius) return half - std::abs(u);
    return half - std::abs(radius - std::hypot(radius - u, radius - v));
  });
}

// From corner to corner; `rising` is the stroke of "/".
void DrawDiagonal(bool rising, ShapeCanvas& canvas) {
  const double width = canvas.Width();
  const double height = canvas.Height();
  const double half = LightThickness(canvas.Width()) / 2.0 + 0.1;
  const double length = std::hypot(width, height);
  canvas.Paint([&](double x, double y) {
    const double cross = rising ? x * height + y * width - width * height : x * height - y * width;
    return half - std::abs(cross) / length;
  });
}

}  // namespace

int LightThickness(int width) {
  return std::max(1, (2 * width + 15) / 30);
}

void DrawBoxLine(char16_t unit, ShapeCanvas& canvas) {
  if (const int dashes = DashesOf(unit)) {
    DrawDashes(unit, dashes, canvas);
  } else if (unit >= 0x256D && unit <= 0x2570) {
    DrawArc(unit == 0x256D || unit == 0x2570, unit <= 0x256E, canvas);
  } else if (unit >= 0x2571 && unit <= 0x2573) {
    if (unit != 0x2572) DrawDiagonal(true, canvas);
    if (unit != 0x2571) DrawDiagonal(false, canvas);
  } else {
    DrawArms(ArmsOf(unit), canvas);
  }
}

}  // namespace quillet
