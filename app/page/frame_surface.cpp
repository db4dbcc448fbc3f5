#include "app/page/frame_surface.h"

#include <QtMath>

namespace quillet {
namespace {

// The smallest rectangle of whole widget units around one of device pixels.
QRect ToWidgetUnits(const QRect& device, qreal scale) {
  const QPoint topLeft(qFloor(device.left() / scale), qFloor(device.top() / scale));
  const QPoint bottomRight(qCeil((device.right() + 1) / scale) - 1, qCeil((device.bottom() + 1) / scale) - 1);
  return {topLeft, bottomRight};
}

QRect ToDevicePixels(const QRect& rect, qreal scale) {
  const QPoint topLeft(qFloor(rect.left() * scale), qFloor(rect.top() * scale));
  const QPoint bottomRight(qCeil((rect.right() + 1) * scale) - 1, qCeil((rect.bottom() + 1) * scale) - 1);
  return {topLeft, bottomRight};
}

// A resize by hand has ended when no new size has come for so long.
constexpr int kSettledMs = 100;
// One slice of preparing, between two looks at the event queue; shorter than a frame.
constexpr int kWarmUpSliceMs = 4;

}  // namespace

FrameSurface::FrameSurface(QWidget& widget) : widget_(widget) {
  warmUp_.setSingleShot(true);
  QObject::connect(&warmUp_, &QTimer::timeout, [this] {
    if (painter_.WarmUp(kWarmUpSliceMs)) warmUp_.start(0);
  });
}

void FrameSurface::WarmUpSoon() {
  warmUp_.start(kSettledMs);
}

void FrameSurface::ApplySettings(const DisplaySettings& settings) {
  painter_.ApplySettings(settings);
  WarmUpSoon();
}

void FrameSurface::SetLayoutMode(LayoutMode mode) {
  painter_.SetLayoutMode(mode);
  WarmUpSoon();
}

bool FrameSurface::FollowWidget() {
  const qreal scale = widget_.devicePixelRatioF();
  const QSize size(qCeil(widget_.width() * scale), qCeil(widget_.height() * scale));
  if (size == size_ && qFuzzyCompare(scale, scale_)) return false;
  size_ = size;
  scale_ = scale;
  painter_.Resize(size.width(), size.height());
  WarmUpSoon();
  return true;
}

void FrameSurface::Refresh(const FrameState& frame) {
  FollowWidget();
  QRegion dirty;
  for (const QRect& rect : painter_.Update(frame))
    dirty += ToWidgetUnits(rect, scale_);
  if (!dirty.isEmpty()) widget_.update(dirty);
}

void FrameSurface::Paint(QPainter& painter, const QRect& dirty) const {
  painter.save();
  // In device pixels a copy is a copy, whatever the scale factor.
  painter.scale(1 / scale_, 1 / scale_);
  const QRect part = ToDevicePixels(dirty, scale_) & painter_.Image().rect();
  painter.drawImage(part.topLeft(), painter_.Image(), part);
  painter.restore();
}

QRectF FrameSurface::CellRect(int row, int col) const {
  const QRect cell = painter_.CellRect(row, col);
  return {cell.x() / scale_, cell.y() / scale_, cell.width() / scale_, cell.height() / scale_};
}

int FrameSurface::RowAt(qreal y) const {
  return quillet::RowAt(CurrentLayout(), qFloor(y * scale_));
}

int FrameSurface::OffsetInRow(int row, qreal x) const {
  return qFloor(x * scale_) - painter_.CellRect(row, 0).left();
}

std::optional<CellPosition> FrameSurface::CellAt(const QPointF& at) const {
  const int row = RowAt(at.y());
  if (row < 0 || row >= kRows) return std::nullopt;
  const int offset = OffsetInRow(row, at.x());
  const int col = offset / qMax(1, painter_.CellRect(row, 0).width());
  if (offset < 0 || col >= kCols) return std::nullopt;
  return CellPosition{row, col};
}

std::optional<FrameSurface::PixelInRow> FrameSurface::PixelAt(const QPointF& at) const {
  const int row = RowAt(at.y());
  if (row < 0 || row >= kRows) return std::nullopt;
  return PixelInRow{row, qFloor(at.x() * scale_) - qMax(0, CurrentLayout().originX)};
}

PictureRoom FrameSurface::RoomForPictures(int rowsInSight) const {
  const Layout& layout = CurrentLayout();
  const QSize window = painter_.Image().size();
  return {.width = qMin(kCols * layout.halfCell, window.width() - qMax(0, layout.originX)),
          .rowHeight = layout.rowHeight,
          .rows = rowsInSight,
          .windowHeight = window.height(),
          .scale = scale_};
}

FrameSurface::Place FrameSurface::PlaceAt(const QPointF& at) const {
  const int wanted = RowAt(at.y());
  const int row = qBound(FirstInSight(CurrentLayout()), wanted, kBottomRow);
  const int cell = qMax(1, painter_.CellRect(row, 0).width());
  const int halves = qFloor(2.0 * OffsetInRow(row, at.x()) / cell);
  return {.row = row, .halves = qBound(0, halves, 2 * kCols), .rowsOutside = wanted - row};
}

bool FrameSurface::IsLeftOfPage(const QPointF& at) const {
  return OffsetInRow(qBound(0, RowAt(at.y()), kBottomRow), at.x()) < 0;
}

}  // namespace quillet
