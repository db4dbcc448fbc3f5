// The input method's side of the view: where its windows go, what it composes, what it commits. The text
// under composition is drawn over the row at the BBS cursor, where it will land, in the grid's glyphs.
// User-interface thread.
#pragma once

#include <optional>

#include <QFont>
#include <QInputMethodEvent>
#include <QString>
#include <QVariant>

#include "app/overlay/overlay.h"
#include "app/page/frame_surface.h"
#include "render/ime_placement.h"
#include "render/paint/composition_painter.h"

namespace quillet {

class ImeAdapter : public Overlay {
 public:
  ImeAdapter(QWidget& widget, const FrameSurface& surface) : widget_(widget), surface_(surface) {}

  void ApplySettings(const DisplaySettings& settings);

  enum class Move { kIfChanged, kForced };
  // Tells the input method where the cursor is now and in which size the row is that it stands in; a
  // composition goes along. kForced after a relayout, when sizes may differ though the place does not.
  void UpdatePosition(int cursorRow, int cursorCol, Move move, RowSize size = RowSize::kOrdinary);

  // While something else lies over the screen nothing can be composed, and what was is given up.
  void SetEnabled(bool enabled);
  // Gives up what is being composed: the keyboard goes elsewhere.
  void End();

  // Takes the composition and returns what was committed, cleaned of control characters.
  QString Handle(const QInputMethodEvent& event);
  // The answer to a query, or nothing for a query that is the widget's own matter.
  std::optional<QVariant> Query(Qt::InputMethodQuery query) const;

  bool IsComposing() const { return !composition_.text.isEmpty(); }
  const QString& Preedit() const { return composition_.text; }
  // Where the composition is drawn, in device pixels; empty when there is none.
  QRect Box() const;
  QRectF Bounds(const OverlayPlace& place) const override;
  void Paint(QPainter& painter, const OverlayPlace& place) override;

 private:
  CompositionFit Fit() const;
  int CaretColumn() const;
  QRectF CursorRectangle() const;  // widget units
  QFont Font() const;
  void UpdateBox();

  QWidget& widget_;
  const FrameSurface& surface_;
  CompositionPainter painter_;
  QString family_;
  PaletteKind palette_ = PaletteKind::kNormal;
  bool enabled_ = true;
  Composition composition_;
  CompositionCells cells_;
  ImePlacement place_;
  RowSize size_ = RowSize::kOrdinary;
  int row_ = 0;
  int col_ = 0;
};

}  // namespace quillet
