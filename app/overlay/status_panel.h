// The panel that lies over the screen while there is something to say about the connection. Keeps what is
// said and whether it is shown; draws it. User-interface thread.
#pragma once

#include <functional>
#include <utility>

#include <QElapsedTimer>

#include "app/messages/panel_text.h"
#include "app/overlay/overlay.h"

namespace quillet {

class StatusPanel : public Overlay {
 public:
  // `answered`: Enter or Esc has been pressed; what is left to do where it was not about the panel alone.
  explicit StatusPanel(std::function<void(PanelAction)> answered) : answered_(std::move(answered)) {}

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

  bool KeepsMouse() const override { return IsActive(); }
  // It dims what it lies over.
  QRectF Bounds(const OverlayPlace& place) const override;
  void Paint(QPainter& painter, const OverlayPlace& place) override;
  void TellKeys(WindowState& state) const override;
  KeyRoute OwnKeys() const override { return KeyRoute::kNotice; }
  bool OnKey(int virtualKey) override;
  // Something has been typed to the site that cannot be sent. It is an answer where any key is one, unless it
  // was meant for the page that the panel came over.
  void OnTyped();

 private:
  std::function<void(PanelAction)> answered_;
  PanelText session_;
  QList<PanelText> notices_;
  bool dismissed_ = false;
  QElapsedTimer sinceShown_;
  QElapsedTimer sinceTyped_;
};

}  // namespace quillet
