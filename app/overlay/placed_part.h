// A part of the view that lies over the terminal and needs no more of an overlay than its place.
// User-interface thread.
#pragma once

#include <functional>
#include <utility>

#include "app/overlay/overlay.h"

namespace quillet {

class PlacedPart : public Overlay {
 public:
  explicit PlacedPart(std::function<void(const OverlayPlace&)> place) : place_(std::move(place)) {}

  void Place(const OverlayPlace& place) override { place_(place); }

 private:
  std::function<void(const OverlayPlace&)> place_;
};

}  // namespace quillet
