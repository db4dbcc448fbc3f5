// Draws the grid into an image of its own and keeps it current: it compares the wanted frame with the one it
// drew last and redraws the rows that changed. User-interface thread.
#pragma once

#include <memory>
#include <vector>

#include <QImage>
#include <QRect>
#include <QRegion>

#include "render/layout.h"
#include "render/page_row.h"
#include "render/paint/backdrop_painter.h"
#include "render/paint/frame_picture.h"
#include "render/row_look.h"
#include "settings/display_settings.h"

namespace quillet {

// What one frame looks like; a frame is a function of this value and the painter's settings alone.
struct FrameState {
  Page page;
  int caretRow = -1;  // outside 0-23: no caret
  int caretCol = 0;
  CaretShape caretShape = CaretShape::kLine;
  bool blinkOff = false;  // blinking text is in its invisible half
  double progress = 0;    // 0 to 1: how far down the text is; moves the backdrop of kMovingCrop
  int rightInset = 0;     // device pixels at the right edge that ages keep away from
  std::vector<FramePicture> pictures{};  // over the cells of their rows; no two in one row
};

class FramePainter {
 public:
  FramePainter();
  ~FramePainter();

  // Takes font, spacing, palette choice. The next Update draws everything.
  void ApplySettings(const DisplaySettings& settings);
  // The next Update draws everything if it is another mode.
  void SetLayoutMode(LayoutMode mode);
  // Not drawn in disguise. The next Update draws everything.
  void SetBackdrop(Backdrop backdrop);
  // The client area in device pixels; sizes below 1 count as 1. Recomputes the layout; the next Update draws
  // everything if it changed.
  void Resize(int width, int height);

  // Brings the image up to `frame`. Returns what changed, in device pixels of the whole client area; empty
  // when nothing did.
  QRegion Update(const FrameState& frame);

  // Draws common characters of the current size into the cache, so that the first page that shows them does
  // not wait for them. Works about `milliseconds` long; returns true while there is more to do. To be called
  // when the event loop is idle, again after every Resize and ApplySettings.
  bool WarmUp(int milliseconds);

  // The whole client area, origin margins included, opaque RGB32 without a device pixel ratio.
  const QImage& Image() const;
  const Layout& CurrentLayout() const;
  // The cell's rectangle in device pixels, of the size that its row was drawn with last.
  QRect CellRect(int row, int col) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace quillet
