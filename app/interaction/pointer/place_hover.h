// The places that people's addresses belong to, in the picture: over the addresses of push lines, behind the
// lines that name one otherwise. Under the pointer the address comes back, and the place and its marks are
// told at the window's lower edge. User-interface thread.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "app/overlay/overlay.h"
#include "app/page/picture_lines.h"
#include "core/cell_position.h"
#include "render/page_row.h"
#include "settings/settings.h"

namespace quillet {

// What is known of an IPv4 address, first group most significant; see IpLocationDb.
using PlaceLookup = std::function<std::u16string(std::uint32_t address)>;

class PlaceHover : public Overlay {
 public:
  // `text` and `settings` outlive the object.
  PlaceHover(const PictureLines& text, PlaceLookup places, const Settings& settings);

  // `cell`: its row is the picture's; nothing: the pointer is elsewhere. Returns whether the picture is
  // different.
  bool SetPointer(std::optional<CellPosition> cell);
  // Lays the places over a page that was composed, if the user wants them.
  void Decorate(Page& page);
  // The page that was decorated last names somebody's address, whether it is seen or its place.
  bool HasAddresses() const;
  // Something is told of the place under the pointer.
  bool HasLabel() const { return !Told().isEmpty(); }

  QRectF Bounds(const OverlayPlace& place) const override;
  void Paint(QPainter& painter, const OverlayPlace& place) override;

 private:
  // A row whose line names an address.
  struct Shown {
    CellRange cells;  // where its place stands, or would stand; none while places are not wanted
    bool hasAddress = false;
    std::u16string place;
  };
  // The address that the line in a row of the picture names.
  AddressInLine AddressAt(int row) const;
  // What is known of the address in these cells of that row.
  std::u16string PlaceOf(int row, CellRange cells) const;
  int RowAt(const std::optional<CellPosition>& cell) const;

  // What is told; empty: nothing.
  QString Told() const;

  const PictureLines& text_;
  const PlaceLookup places_;
  const Settings& settings_;
  std::array<Shown, kRows> shown_;
  int row_ = -1;  // under the pointer
};

}  // namespace quillet
