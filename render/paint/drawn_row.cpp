#include "render/paint/drawn_row.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace quillet {
namespace {

RowChange CellChange(const RowLook& before, const RowLook& now) {
  RowChange change;
  for (int col = 0; col < kCols; ++col) {
    const auto index = static_cast<std::size_t>(col);
    if (before[index] == now[index]) continue;
    change.first = std::min(change.first, col);
    change.last = col + 1;
  }
  if (change.Empty()) return change;
  if (now[static_cast<std::size_t>(change.first)].part == CellPart::kTrail) --change.first;
  if (now[static_cast<std::size_t>(change.last - 1)].part == CellPart::kLead) ++change.last;
  return change;
}

bool SameMarks(const DrawnRow& before, const DrawnRow& now) {
  const PageRow& a = before.page;
  const PageRow& b = now.page;
  return a.pennants == b.pennants && a.tag == b.tag && a.age == b.age &&
         (a.age.empty() || AgeColumn(a) == AgeColumn(b)) &&
         (a.tag.empty() || (a.tagCol == b.tagCol && a.tagEnd == b.tagEnd)) &&
         before.extras.rightInset == now.extras.rightInset;
}

// A mark lies over cells that change.
bool TouchesMark(const RowChange& change, const PageRow& page, bool pennantsOnCells) {
  return (!page.tag.empty() && change.last > page.tagCol) || (!page.age.empty() && change.last > kAgeCol) ||
         (page.pennants != 0 && pennantsOnCells);
}

}  // namespace

bool SameRow(const PageRow& one, const PageRow& other) {
  static_assert(std::has_unique_object_representations_v<PageCell>);
  return std::memcmp(one.cells.data(), other.cells.data(), sizeof one.cells) == 0 && one.size == other.size &&
         one.pennants == other.pennants && one.tagCol == other.tagCol && one.tagEnd == other.tagEnd &&
         one.tag == other.tag && one.age == other.age;
}

int AgeColumn(const PageRow& page) {
  const bool free = page.cells[kAgeCol].byte == ' ' && page.cells[kAgeCol + 1].byte == ' ';
  return free ? kAgeCol : kCols;
}

RowChange ChangeOf(const DrawnRow& before, const DrawnRow& now, bool pennantsOnCells) {
  RowChange change = CellChange(before.look, now.look);
  change.band = before.page.size != now.page.size || !(before.margin == now.margin) ||
                !SameMarks(before, now) || !(before.extras.strip == now.extras.strip) ||
                (!change.Empty() && !now.extras.strip.size.IsEmpty()) ||
                (!change.Empty() && TouchesMark(change, now.page, pennantsOnCells));
  return change;
}

}  // namespace quillet
