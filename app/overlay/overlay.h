// What lies over the terminal, whatever it is: it may draw itself over the picture or be a part of the window
// of its own, keep the mouse or what is typed from the terminal, and have keys of its own. The overlay stack
// goes through them. User-interface thread.
#pragma once

#include <QFont>
#include <QPainter>
#include <QRect>

#include "app/overlay/panel_look.h"
#include "input/pre_translation.h"

namespace quillet {

// Where the terminal stands in the view and how the view looks, for all that lies over it. In widget units.
struct OverlayPlace {
  QRect area{};        // the view
  double unit = 16;    // the height of the terminal's rows
  double footTop = 0;  // the upper edge of its bottom row
  QFont font{};        // the view's
  bool work = false;   // in disguise

  const panel_look::Colours& Colours() const { return panel_look::ColoursFor(work); }

  bool operator==(const OverlayPlace&) const = default;
};

class Overlay {
 public:
  virtual ~Overlay() = default;

  // No click and no wheel turn reaches the terminal, from before it is seen on. It lies over the whole of it.
  virtual bool KeepsMouse() const { return false; }
  // No text reaches the BBS.
  virtual bool KeepsTyping() const { return false; }

  // Takes its place; what draws itself over the picture is told its place when it draws.
  virtual void Place(const OverlayPlace& /*place*/) {}
  // Where it draws over the picture now; empty: nowhere.
  virtual QRectF Bounds(const OverlayPlace& /*place*/) const { return {}; }
  // Within the bounds. Leaves the painter as it was.
  virtual void Paint(QPainter& /*painter*/, const OverlayPlace& /*place*/) {}

  // Adds what deciding about a key has to know of it.
  virtual void TellKeys(WindowState& /*state*/) const {}
  // The route of the keys that are its own; kToolkit: it has none.
  virtual KeyRoute OwnKeys() const { return KeyRoute::kToolkit; }
  // One of these. Returns whether it was consumed.
  virtual bool OnKey(int /*virtualKey*/) { return false; }
};

}  // namespace quillet
