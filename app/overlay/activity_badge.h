// A small sign in the corner of the terminal while an automation works for the user: what it does, and how to
// take over. User-interface thread.
#pragma once

#include <QElapsedTimer>
#include <QString>

#include "app/overlay/overlay.h"

namespace quillet {

class ActivityBadge : public Overlay {
 public:
  // Empty: nothing goes on. Returns whether it is another text than before.
  bool SetText(const QString& text);
  const QString& Text() const { return text_; }
  // After a moment only: what is done at once needs no sign.
  bool IsShown() const;

  QRectF Bounds(const OverlayPlace& place) const override;
  void Paint(QPainter& painter, const OverlayPlace& place) override;

 private:
  QString text_;
  QElapsedTimer since_;
};

}  // namespace quillet
