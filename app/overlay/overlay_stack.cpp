#include "app/overlay/overlay_stack.h"

#include <algorithm>

namespace quillet {

void OverlayStack::PlaceAll(const OverlayPlace& place) {
  const bool isOther = place != place_;
  place_ = place;
  for (Entry& entry : entries_) {
    entry.overlay->Place(place);
    if (isOther) Update(entry, Seen(*entry.overlay));
  }
}

void OverlayStack::Paint(QPainter& painter, const QRegion& dirty) {
  for (const Entry& entry : entries_)
    if (dirty.intersects(Seen(*entry.overlay))) entry.overlay->Paint(painter, place_);
}

void OverlayStack::Review() {
  for (Entry& entry : entries_)
    if (const QRect now = Seen(*entry.overlay); now != entry.painted) Update(entry, now);
}

void OverlayStack::Repaint(const Overlay& overlay) {
  for (Entry& entry : entries_)
    if (entry.overlay == &overlay) Update(entry, Seen(overlay));
}

void OverlayStack::Update(Entry& entry, const QRect& now) {
  view_.update(entry.painted);
  view_.update(now);
  entry.painted = now;
}

QRect OverlayStack::Seen(const Overlay& overlay) const {
  const bool hidden = overlay.KeepsMouse() && &overlay != Covering();
  return hidden ? QRect() : overlay.Bounds(place_).toAlignedRect();
}

const Overlay* OverlayStack::Covering() const {
  const auto found = std::find_if(entries_.rbegin(), entries_.rend(),
                                  [](const Entry& entry) { return entry.overlay->KeepsMouse(); });
  return found == entries_.rend() ? nullptr : found->overlay;
}

bool OverlayStack::KeepsTyping() const {
  return std::any_of(entries_.begin(), entries_.end(),
                     [](const Entry& entry) { return entry.overlay->KeepsTyping(); });
}

void OverlayStack::TellKeys(WindowState& state) const {
  for (const Entry& entry : entries_)
    entry.overlay->TellKeys(state);
}

bool OverlayStack::OnKey(const KeyDecision& decision) {
  for (const Entry& entry : entries_)
    if (entry.overlay->OwnKeys() == decision.route) return entry.overlay->OnKey(decision.action.virtualKey);
  return false;
}

}  // namespace quillet
