// The input method's side of the view: where its windows go, what it composes, what it commits. The text
// under composition is drawn at the BBS cursor's cell, where it will land, at the grid's size. User-interface
// thread.
#pragma once

#include <optional>

#include <QFont>
#include <QInputMethodEvent>
#include <QPainter>
#include <QString>
#include <QVariant>

#include "app/frame_surface.h"

namespace quillet {

// The top left corner of the glyph box of the cursor's cell, in device pixels of the client area. The cursor
// is held inside the screen.
QPoint CompositionPoint(const Layout& layout, int cursorRow, int cursorCol);

class ImeAdapter {
 public:
  ImeAdapter(QWidget& widget, const FrameSurface& surface) : widget_(widget), surface_(surface) {}

  void SetFont(const QString& family) { family_ = family; }

  enum class Move { kIfChanged, kForced };
  // Tells the input method where the cursor is now. kForced after a relayout, when sizes may differ though
  // the place does not.
  void UpdatePosition(int cursorRow, int cursorCol, Move move);

  // Takes the composition and returns what was committed, cleaned of control characters.
  QString Handle(const QInputMethodEvent& event);
  // The answer to a query, or nothing for a query that is the widget's own matter.
  std::optional<QVariant> Query(Qt::InputMethodQuery query) const;

  bool IsComposing() const { return !preedit_.isEmpty(); }
  const QString& Preedit() const { return preedit_; }
  void Paint(QPainter& painter) const;

 private:
  QFont Font() const;
  QRectF PreeditRect() const;  // widget units

  QWidget& widget_;
  const FrameSurface& surface_;
  QString family_;
  QString preedit_;
  QPoint point_;  // device pixels
  int row_ = 0;
  int col_ = 0;
};

}  // namespace quillet
