// A picture over the whole terminal, for a link on a page that is no article shown whole: fitted into the
// view, until the next key or click. User-interface thread.
#pragma once

#include <functional>

#include <QObject>
#include <QString>
#include <QWidget>

#include "app/overlay/overlay.h"
#include "media/fetch/picture_store.h"
#include "render/paint/scaled_copy.h"
#include "settings/settings.h"

namespace quillet {

class ScreenPicture : public QObject, public Overlay {
  Q_OBJECT

 public:
  // All outlive the object. It lies over `view`.
  ScreenPicture(PictureStore& store, const Settings& settings, QWidget& view);

  // Nothing in disguise.
  void Open(const QString& link);
  void Close();
  bool IsOpen() const { return !link_.isEmpty(); }
  // A failure is tried again, else it closes.
  void Click();

  bool KeepsMouse() const override { return IsOpen(); }
  bool KeepsTyping() const override { return IsOpen(); }
  void Place(const OverlayPlace& place) override;
  QRectF Bounds(const OverlayPlace& place) const override;
  void Paint(QPainter& painter, const OverlayPlace& place) override;
  void TellKeys(WindowState& state) const override;
  KeyRoute OwnKeys() const override { return KeyRoute::kPicture; }
  bool OnKey(int virtualKey) override;

 signals:
  // It looks otherwise, has come or gone.
  void Changed();

 private:
  void Want();
  PictureNow Now() const { return store_.Look(link_, bounds_); }
  void PaintWords(QPainter& painter, const OverlayPlace& place, const PictureNow& now) const;

  PictureStore& store_;
  const Settings& settings_;
  QWidget& view_;
  QString link_;          // empty: closed
  PictureBounds bounds_;  // device pixels
  ScaledCopy scaled_;
};

}  // namespace quillet
