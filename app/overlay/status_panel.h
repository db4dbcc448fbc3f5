// The panel that lies over the screen while there is something to say about the connection. Keeps what is
// said and whether it is shown; draws it. User-interface thread.
#pragma once

#include <QElapsedTimer>
#include <QPainter>
#include <QRectF>

#include "app/messages/panel_text.h"
#include "app/overlay/panel_look.h"

namespace quillet {

class StatusPanel {
 public:
  // What the connection says; a text other than the last one shows the panel again after a dismissal.
  void SetSession(PanelText text);
  // Lies before the connection's panel until it is dismissed. Notices queue up.
  void AddNotice(PanelText text);

  // What the panel says now; no title when there is nothing to say.
  const PanelText& Text() const;
  // Something lies before the connection's panel.
  bool HasNotice() const;
  // There is something to say and it was not dismissed. A busy panel waits a moment first, so that a quick
  // connection flashes nothing.
  bool IsShown() const;
  // Shown or about to be; keys belong to the panel.
  bool IsActive() const { return !Text().title.isEmpty() && !dismissed_; }
  bool IsBusy() const { return IsActive() && Text().tone == PanelTone::kBusy; }

  void Dismiss();
  void Recall() { dismissed_ = false; }

  // `area` is the whole client area, `unit` the height of its text rows, both in the painter's units.
  void Paint(QPainter& painter, const QRectF& area, qreal unit, const panel_look::Colours& colours) const;

 private:
  PanelText session_;
  QList<PanelText> notices_;
  bool dismissed_ = false;
  QElapsedTimer sinceShown_;
};

}  // namespace quillet
