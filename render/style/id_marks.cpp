#include "render/style/id_marks.h"

#include <algorithm>

#include "core/ascii.h"
#include "core/charset.h"
#include "render/row_cells.h"
#include "render/style_colours.h"

namespace quillet {
namespace {

// Columns for most descriptions, which are drawn smaller than the text.
constexpr int kTagRoom = 10;

// The BBS gives no two users ids that differ in letter case only, and takes either at login.
bool IsSameUser(std::u16string_view one, std::u16string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char16_t a, char16_t b) { return AsciiLower(a) == AsciiLower(b); });
}

bool IsBlank(const RowCell& cell) {
  return cell.unit == u' ' || cell.unit == u'\u3000';
}

int EndOfText(const RowCells& cells, CellRange range) {
  while (!range.IsEmpty() && IsBlank(cells[static_cast<std::size_t>(range.last - 1)]))
    --range.last;
  return range.last;
}

// Behind the text where there is room, else over it, behind the id. A cell is left before the tag; what
// follows it, a wide blank or a character, is not cut in two.
std::uint8_t TagColumn(const PageRow& row, const IdPlace& place) {
  const RowCells cells = DecodeRow(row.cells, Charset());
  const int behindText = EndOfText(cells, place.text) + 1;
  const bool hasRoom = place.text.last - behindText >= kTagRoom;
  const int wanted = hasRoom ? behindText : std::clamp(place.id.last + 1, 0, kCols - 1);
  if (cells[static_cast<std::size_t>(wanted)].part != CellPart::kTrail)
    return static_cast<std::uint8_t>(wanted);
  return static_cast<std::uint8_t>(hasRoom ? wanted + 1 : wanted - 1);
}

void Underline(PageRow& row, CellRange range) {
  for (int col = std::max(range.first, 0); col < std::min(range.last, kCols); ++col)
    row.cells[static_cast<std::size_t>(col)].style |= CS_UNDERLINE;
}

}  // namespace

void MarkId(PageRow& row, const IdPlace& place, std::u16string_view id, const StyleRules& rules) {
  if (id.empty()) return;
  const Settings& settings = *rules.settings;
  const ListEntry* const entry = rules.names->Find(id);
  if (!place.isMasked) {
    if (settings.colorMyId && IsSameUser(id, rules.myId)) Colour(row, place.id, kMyId);
    if (entry != nullptr && entry->underline) Underline(row, place.id);
    // Nothing in a text editor looks like a flag.
    if (entry != nullptr && !settings.work) row.pennants = entry->colours;
  }
  if (rules.reveal == Reveal::kNothing || entry == nullptr || entry->description.empty()) return;
  row.tag = entry->description;
  row.tagCol = TagColumn(row, place);
  row.tagEnd = static_cast<std::uint8_t>(std::clamp(place.text.last, 0, kCols));
}

}  // namespace quillet
