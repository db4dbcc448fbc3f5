#include "app/interaction/ime_adapter.h"

#include <algorithm>
#include <utility>

#include <QGuiApplication>
#include <QInputMethod>

#include "input/key_control.h"
#include "platform/composition_font.h"
#include "render/paint/font_chain.h"

namespace quillet {
void ImeAdapter::ApplySettings(const DisplaySettings& settings) {
  family_ = QString::fromStdU16String(settings.font);
  palette_ = PaletteKindFor(settings);
  painter_.SetFaces(family_, settings.smoothFont);
}

void ImeAdapter::UpdatePosition(int cursorRow, int cursorCol, Move move, RowSize size) {
  const ImePlacement place = PlaceComposition(surface_.CurrentLayout(), size, cursorRow, cursorCol);
  if (place == place_ && size == size_ && move == Move::kIfChanged) return;
  UpdateBox();
  place_ = place;
  size_ = size;
  row_ = std::clamp(cursorRow, 0, kBottomRow);
  col_ = std::clamp(cursorCol, 0, kCols - 1);
  UpdateBox();
  QGuiApplication::inputMethod()->update(Qt::ImCursorRectangle | Qt::ImAnchorRectangle | Qt::ImFont);
  SetCompositionFont(widget_.effectiveWinId(), family_.toStdU16String(), place.size);
}

void ImeAdapter::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  if (!enabled) End();
  enabled_ = enabled;
  QGuiApplication::inputMethod()->update(Qt::ImEnabled);
}

void ImeAdapter::End() {
  if (!IsComposing()) return;
  UpdateBox();
  composition_ = {};
  cells_ = {};
  QGuiApplication::inputMethod()->reset();
}

QString ImeAdapter::Handle(const QInputMethodEvent& event) {
  Composition composition = ReadComposition(event);
  if (composition != composition_) {
    UpdateBox();
    composition_ = std::move(composition);
    cells_ = LayOut(composition_);
    UpdateBox();
    QGuiApplication::inputMethod()->update(Qt::ImCursorRectangle | Qt::ImAnchorRectangle);
  }
  return QString::fromStdU16String(CleanPaste(event.commitString().toStdU16String()));
}

std::optional<QVariant> ImeAdapter::Query(Qt::InputMethodQuery query) const {
  switch (query) {
    case Qt::ImEnabled:
      return enabled_;
    case Qt::ImCursorRectangle:
    case Qt::ImAnchorRectangle:
      return CursorRectangle().toAlignedRect();
    case Qt::ImFont:
      return Font();
    case Qt::ImHints:
      return static_cast<int>(Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);
    case Qt::ImCursorPosition:
    case Qt::ImAnchorPosition:
      return 0;
    case Qt::ImSurroundingText:
    case Qt::ImCurrentSelection:
      return QString();
    default:
      return std::nullopt;
  }
}

CompositionFit ImeAdapter::Fit() const {
  const ColumnRange visible = VisibleColumns(surface_.CurrentLayout(), size_, surface_.Picture().width());
  return FitComposition(cells_.total, cells_.caret, col_, visible);
}

int ImeAdapter::CaretColumn() const {
  if (!IsComposing()) return col_;
  const CompositionFit fit = Fit();
  return fit.col + cells_.caret - fit.skipped;
}

// As high as the whole row, so that candidate windows stand below it or above it but never on it.
QRectF ImeAdapter::CursorRectangle() const {
  const Layout& layout = surface_.CurrentLayout();
  const ImePlacement place = PlaceComposition(layout, size_, row_, CaretColumn());
  const int top = RowTop(layout, row_);
  const QRect box =
      QRect(place.x, place.y, place.size, place.size) | QRect(place.x, top, place.size, layout.rowHeight);
  const qreal scale = surface_.Scale();
  return {box.x() / scale, box.y() / scale, box.width() / scale, box.height() / scale};
}

QFont ImeAdapter::Font() const {
  const ImePlacement place = PlaceComposition(surface_.CurrentLayout(), size_, row_, col_);
  QFont font;
  font.setFamilies(FaceFamilies(family_));
  font.setStyleHint(QFont::Monospace);
  font.setPixelSize(std::max(1, qRound(place.size / surface_.Scale())));
  return font;
}

QRect ImeAdapter::Box() const {
  const Layout& layout = surface_.CurrentLayout();
  const CompositionFit fit = Fit();
  const int half = PlaceComposition(layout, size_, row_, 0).size / 2;
  return {layout.originX + fit.col * half, RowTop(layout, row_), fit.shown * half, layout.rowHeight};
}

void ImeAdapter::UpdateBox() {
  widget_.update(Bounds({}).toAlignedRect());
}

QRectF ImeAdapter::Bounds(const OverlayPlace& /*place*/) const {
  if (!IsComposing()) return {};
  const QRectF box = Box();
  const qreal scale = surface_.Scale();
  return {box.topLeft() / scale, box.size() / scale};
}

void ImeAdapter::Paint(QPainter& painter, const OverlayPlace& /*place*/) {
  if (!IsComposing()) return;
  const QRect box = Box();
  const Layout& layout = surface_.CurrentLayout();
  const int em = PlaceComposition(layout, size_, row_, 0).size;
  const QImage& picture = painter_.Draw({composition_, Fit(), {em, layout.rowHeight}, palette_});
  painter.save();
  // In device pixels a copy is a copy, whatever the scale factor.
  painter.scale(1 / surface_.Scale(), 1 / surface_.Scale());
  painter.drawImage(box.topLeft(), picture);
  painter.restore();
}

}  // namespace quillet
