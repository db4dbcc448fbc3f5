// Brings the frame painter's picture to a widget: one picture pixel on one device pixel at every scale
// factor, and repaints of no more than what changed. While the window is idle it lets the painter prepare the
// common characters, so that a page that is new is drawn as fast as one seen before. User-interface thread.
#pragma once

#include <optional>
#include <utility>

#include <QPainter>
#include <QRectF>
#include <QRegion>
#include <QTimer>
#include <QWidget>

#include "core/cell_position.h"
#include "render/paint/frame_painter.h"

namespace quillet {

class FrameSurface {
 public:
  explicit FrameSurface(QWidget& widget);

  void ApplySettings(const DisplaySettings& settings);
  void SetLayoutMode(LayoutMode mode);
  void SetBackdrop(Backdrop backdrop) { painter_.SetBackdrop(std::move(backdrop)); }
  // Follows the widget's size and scale. Returns whether either changed.
  bool FollowWidget();
  // Draws `frame` into the picture and asks the widget to repaint what became different.
  void Refresh(const FrameState& frame);
  // Copies the picture's part under `dirty` (widget units) to the widget.
  void Paint(QPainter& painter, const QRect& dirty) const;

  const QImage& Picture() const { return painter_.Image(); }
  // Device pixels.
  const Layout& CurrentLayout() const { return painter_.CurrentLayout(); }
  // Device pixels per widget unit.
  qreal Scale() const { return scale_; }
  // For an article of which so many rows are in sight.
  PictureRoom RoomForPictures(int rowsInSight) const;
  // A cell in widget units.
  QRectF CellRect(int row, int col) const;
  // The cell under a point in widget units, by the size that the row was drawn with last; none outside the
  // page.
  std::optional<CellPosition> CellAt(const QPointF& at) const;
  // The row under a point in widget units, and how many device pixels the point lies right of the grid's left
  // edge; none outside the page.
  struct PixelInRow {
    int row = 0;
    int x = 0;
  };
  std::optional<PixelInRow> PixelAt(const QPointF& at) const;
  // Where in the rows of cells a point in widget units lies, or the nearest place to it.
  struct Place {
    int row = 0;
    int halves = 0;       // of cells left of it: 0 in the first half of the first cell, at most 2 * kCols
    int rowsOutside = 0;  // how far above (negative) or below the rows in sight; the row is the nearest one
  };
  Place PlaceAt(const QPointF& at) const;
  // Whether a point in widget units lies left of the row's first cell; above and below the page as beside it.
  bool IsLeftOfPage(const QPointF& at) const;

 private:
  void WarmUpSoon();
  // Counted from the page's top, beyond it too.
  int RowAt(qreal y) const;
  // In device pixels from the row's first cell.
  int OffsetInRow(int row, qreal x) const;

  QWidget& widget_;
  FramePainter painter_;
  QTimer warmUp_;
  QSize size_;  // device pixels
  qreal scale_ = 0;
};

}  // namespace quillet
