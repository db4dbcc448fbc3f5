// A small sign in the corner of the terminal while an automation works for the user: what it does, and how to
// take over. User-interface thread.
#pragma once

#include <QElapsedTimer>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "app/overlay/panel_look.h"

namespace quillet {

class ActivityBadge {
 public:
  // Empty: nothing goes on. Returns whether it is another text than before.
  bool SetText(const QString& text);
  const QString& Text() const { return text_; }
  // After a moment only: what is done at once needs no sign.
  bool IsShown() const;

  // `area` is the whole client area, `unit` the height of its text rows, both in the painter's units.
  void Paint(QPainter& painter, const QRectF& area, qreal unit, const panel_look::Colours& colours) const;

 private:
  QString text_;
  QElapsedTimer since_;
};

}  // namespace quillet
