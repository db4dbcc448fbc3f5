#include "app/ime_adapter.h"

#include <algorithm>

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QInputMethod>

#include "input/key_control.h"
#include "render/paint/font_chain.h"

namespace quillet {

QPoint CompositionPoint(const Layout& layout, int cursorRow, int cursorCol) {
  const int row = std::clamp(cursorRow, 0, kRows - 1);
  const int col = std::clamp(cursorCol, 0, kCols - 1);
  const int width = layout.halfCell;
  const int height = layout.rowHeight;
  return {col * width + layout.originX, row * height + (height - 2 * width) / 2 + layout.originY};
}

void ImeAdapter::UpdatePosition(int cursorRow, int cursorCol, Move move) {
  const QPoint point = CompositionPoint(surface_.CurrentLayout(), cursorRow, cursorCol);
  if (point == point_ && move == Move::kIfChanged) return;
  if (IsComposing()) widget_.update();
  point_ = point;
  row_ = std::clamp(cursorRow, 0, kRows - 1);
  col_ = std::clamp(cursorCol, 0, kCols - 1);
  QGuiApplication::inputMethod()->update(Qt::ImCursorRectangle | Qt::ImFont);
}

QString ImeAdapter::Handle(const QInputMethodEvent& event) {
  const bool wasComposing = IsComposing();
  preedit_ = event.preeditString();
  if (wasComposing || IsComposing()) widget_.update();
  return QString::fromStdU16String(CleanPaste(event.commitString().toStdU16String()));
}

std::optional<QVariant> ImeAdapter::Query(Qt::InputMethodQuery query) const {
  switch (query) {
    case Qt::ImEnabled:
      return true;
    case Qt::ImCursorRectangle: {
      // The box of a double-width character: candidate windows then stand below the whole glyph.
      const qreal scale = surface_.Scale();
      const qreal size = surface_.CurrentLayout().fontSize / scale;
      return QRectF(QPointF(point_) / scale, QSizeF(size, size)).toAlignedRect();
    }
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

QFont ImeAdapter::Font() const {
  QFont font;
  font.setFamilies(FaceFamilies(family_));
  font.setStyleHint(QFont::Monospace);
  font.setPixelSize(std::max(1, qRound(surface_.CurrentLayout().fontSize / surface_.Scale())));
  return font;
}

QRectF ImeAdapter::PreeditRect() const {
  const qreal width = QFontMetricsF(Font()).horizontalAdvance(preedit_);
  QRectF rect = surface_.CellRect(row_, col_);
  rect.setWidth(width + 2);
  // A long composition near the right edge moves left rather than out of sight.
  rect.moveLeft(std::max(0.0, std::min(rect.left(), widget_.width() - rect.width())));
  return rect;
}

void ImeAdapter::Paint(QPainter& painter) const {
  if (!IsComposing()) return;
  constexpr QColor kBackground(0x2B, 0x33, 0x3E);
  constexpr QColor kText(0xFF, 0xFF, 0xFF);
  const QRectF rect = PreeditRect();
  painter.save();
  painter.fillRect(rect, kBackground);
  painter.setPen(kText);
  painter.setFont(Font());
  painter.drawText(rect.adjusted(1, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   preedit_);
  const qreal thickness = std::max(1.0, rect.height() / 16);
  painter.fillRect(QRectF(rect.left(), rect.bottom() - thickness, rect.width(), thickness), kText);
  painter.restore();
}

}  // namespace quillet
