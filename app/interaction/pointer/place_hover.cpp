#include "app/interaction/pointer/place_hover.h"

#include <algorithm>
#include <utility>

#include "app/messages/place_messages.h"
#include "app/overlay/hover_label.h"
#include "render/places/parse_ipv4.h"

namespace quillet {
namespace {

CellRange Both(CellRange one, CellRange other) {
  if (one.IsEmpty()) return other;
  return {std::min(one.first, other.first), std::max(one.last, other.last)};
}

}  // namespace

PlaceHover::PlaceHover(const PictureLines& text, PlaceLookup places, const Settings& settings)
    : text_(text), places_(std::move(places)), settings_(settings) {}

int PlaceHover::RowAt(const std::optional<CellPosition>& cell) const {
  if (!cell || cell->row < 0 || cell->row >= kRows) return -1;
  return shown_[static_cast<std::size_t>(cell->row)].cells.Has(cell->col) ? cell->row : -1;
}

bool PlaceHover::SetPointer(std::optional<CellPosition> cell) {
  const int row = RowAt(cell);
  return std::exchange(row_, row) != row;
}

AddressInLine PlaceHover::AddressAt(int row) const {
  const int line = text_.LineDrawnAtRow(row);
  return line >= 0 && line < text_.Count() ? text_.Address(line) : AddressInLine{};
}

std::u16string PlaceHover::PlaceOf(int row, CellRange cells) const {
  const std::string_view bytes = BytesOf(text_.Line(text_.LineDrawnAtRow(row)).text);
  return places_(ParseIPv4(bytes.substr(static_cast<std::size_t>(cells.first),
                                        static_cast<std::size_t>(cells.last - cells.first))));
}

void PlaceHover::Decorate(Page& page) {
  for (int row = 0; row < kRows; ++row) {
    const auto at = static_cast<std::size_t>(row);
    shown_[at] = {};
    const AddressInLine address = AddressAt(row);
    if (address.cells.IsEmpty()) continue;
    shown_[at].hasAddress = true;
    if (!settings_.ipToName) continue;
    shown_[at].place = PlaceOf(row, address.cells);
    PageRow laid = page[at];
    shown_[at].cells = Both(LayPlace(laid, address.cells, shown_[at].place, address.spot), address.cells);
    if (row != row_) page[at] = std::move(laid);
  }
}

bool PlaceHover::HasAddresses() const {
  return std::any_of(shown_.begin(), shown_.end(), [](const Shown& shown) { return shown.hasAddress; });
}

QString PlaceHover::Told() const {
  if (row_ < 0) return {};
  const std::u16string& place = shown_[static_cast<std::size_t>(row_)].place;
  return place.empty() ? QString() : DescribePlace(place);
}

QRectF PlaceHover::Bounds(const OverlayPlace& place) const {
  const QString told = Told();
  return told.isEmpty() ? QRectF() : HoverLabel(told, row_, place).Box();
}

void PlaceHover::Paint(QPainter& painter, const OverlayPlace& place) {
  const QString told = Told();
  if (!told.isEmpty()) HoverLabel(told, row_, place).Paint(painter, place.Colours());
}

}  // namespace quillet
