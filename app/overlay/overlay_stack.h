// All that lies over the terminal, one above the other: who is placed, painted and asked in which order. The
// view owns one and goes through it. User-interface thread.
#pragma once

#include <vector>

#include <QPainter>
#include <QRegion>
#include <QWidget>

#include "app/overlay/overlay.h"

namespace quillet {

class OverlayStack {
 public:
  // They lie over `view`, which outlives the stack.
  explicit OverlayStack(QWidget& view) : view_(view) {}

  // Above all others before it; to be there as long as the stack is used.
  void Add(Overlay& overlay) { entries_.push_back({.overlay = &overlay, .painted = {}}); }

  void PlaceAll(const OverlayPlace& place);
  // From the bottom up, over the picture. Of those that keep the mouse only the topmost is seen.
  void Paint(QPainter& painter, const QRegion& dirty);
  // Some may have come, gone or moved: their places are painted anew.
  void Review();
  // This one looks otherwise.
  void Repaint(const Overlay& overlay);

  // One of them keeps the mouse from the terminal.
  bool IsCovered() const { return Covering() != nullptr; }
  bool KeepsTyping() const;
  void TellKeys(WindowState& state) const;
  // Hands a key to the one whose route it is. Nobody's: false.
  bool OnKey(const KeyDecision& decision);

 private:
  struct Entry {
    Overlay* overlay;
    QRect painted;  // where it was seen last
  };
  // The topmost that keeps the mouse; null: none.
  const Overlay* Covering() const;
  QRect Seen(const Overlay& overlay) const;
  void Update(Entry& entry, const QRect& now);

  QWidget& view_;
  OverlayPlace place_;
  std::vector<Entry> entries_;  // from the bottom up
};

}  // namespace quillet
