#include "render/place_row.h"

#include <algorithm>
#include <string>

#include "core/charset.h"
#include "render/style_colours.h"

namespace quillet {
namespace {

constexpr std::u16string_view kMarks[] = {u"*VPN", u"*pxy"};
constexpr std::u16string_view kUnknown = u"#未知網域";
constexpr char16_t kUncertain = u'#';
// The BBS's field for an address, which it fills from the right.
constexpr int kFieldColumns = 15;
constexpr std::string_view kEllipsis = "\xA1\x4B";  // "…"

// A place as the row shows it: Big5, and the colours of its columns.
struct ShownPlace {
  std::string bytes;
  std::size_t marked = 0;  // so many of its first columns are marks
};

// Bytes of the longest beginning that ends with a whole character and has no more than `columns`.
std::size_t WholeCharacters(std::string_view big5, std::size_t columns) {
  std::size_t end = 0;
  while (end < big5.size()) {
    const std::size_t width = static_cast<std::uint8_t>(big5[end]) < 0x80 ? 1 : 2;
    if (end + width > columns) break;
    end += width;
  }
  return end;
}

ShownPlace Show(std::u16string_view place) {
  const PlaceText text = ReadPlaceText(place);
  return {.bytes = ToBig5(place), .marked = text.mark.size() + (text.isUncertain ? 1 : 0)};
}

void CutTo(ShownPlace& place, int columns) {
  const auto room = static_cast<std::size_t>(std::max(columns, 0));
  if (place.bytes.size() <= room) return;
  const bool hasSign = room >= kEllipsis.size();
  place.bytes.resize(WholeCharacters(place.bytes, hasSign ? room - kEllipsis.size() : room));
  if (hasSign) place.bytes += kEllipsis;
  place.marked = std::min(place.marked, place.bytes.size());
}

void Write(PageRow& row, int col, const ShownPlace& place) {
  for (std::size_t at = 0; at < place.bytes.size(); ++at) {
    PageCell& cell = row.cells[static_cast<std::size_t>(col) + at];
    cell.byte = static_cast<std::uint8_t>(place.bytes[at]);
    cell.fore = at < place.marked ? kPlaceMark : kQuietText;
  }
}

// With the blanks in front of the address, but for one behind the words.
int FieldBegin(const PageRow& row, CellRange address) {
  const auto isBlank = [&row](int col) { return row.cells[static_cast<std::size_t>(col)].byte == ' '; };
  int first = address.first;
  while (first > 1 && address.last - first < kFieldColumns && isBlank(first - 1) && isBlank(first - 2))
    --first;
  return first;
}

CellRange LayOverAddress(PageRow& row, CellRange address, ShownPlace place) {
  const int begin = FieldBegin(row, address);
  CutTo(place, address.last - begin);
  for (int col = begin; col < address.last; ++col)
    row.cells[static_cast<std::size_t>(col)].byte = ' ';
  const int first = address.last - static_cast<int>(place.bytes.size());
  Write(row, first, place);
  return {first, address.last};
}

int EndOfText(const PageRow& row) {
  int end = kCols;
  while (end > 0 && row.cells[static_cast<std::size_t>(end - 1)].byte == ' ')
    --end;
  return end;
}

}  // namespace

PlaceText ReadPlaceText(std::u16string_view place) {
  PlaceText text;
  for (const std::u16string_view mark : kMarks)
    if (place.starts_with(mark)) text.mark = mark;
  place.remove_prefix(text.mark.size());
  text.isKnown = place != kUnknown;
  text.isUncertain = text.isKnown && place.starts_with(kUncertain);
  if (place.starts_with(kUncertain)) place.remove_prefix(1);
  text.name = place;
  return text;
}

CellRange LayPlace(PageRow& row, CellRange address, std::u16string_view place, PlaceSpot spot) {
  if (address.IsEmpty() || address.first < 0 || address.last > kCols || place.empty()) return {};
  ShownPlace shown = Show(place);
  if (spot == PlaceSpot::kBehindLine) {
    const int first = EndOfText(row) + 1;
    const int last = first + static_cast<int>(shown.bytes.size());
    if (last <= kCols) {
      Write(row, first, shown);
      return {first, last};
    }
  }
  return LayOverAddress(row, address, std::move(shown));
}

}  // namespace quillet
