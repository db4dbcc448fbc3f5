// A line over the terminal that says what has just happened and goes by itself. User-interface thread.
#pragma once

#include <functional>
#include <optional>

#include <QPainter>
#include <QRectF>
#include <QString>
#include <QTimer>

#include "app/overlay/panel_look.h"
#include "render/paint/embedded_images.h"

namespace quillet {

class Toast {
 public:
  // `images` outlives the toast. `changed`: it has appeared or gone, the area has to be painted anew.
  Toast(EmbeddedImages& images, std::function<void()> changed);

  // Takes the place of the one before.
  void Show(const QString& text, std::optional<EmbeddedImage> image = std::nullopt);
  void Hide();
  // Empty: none is shown.
  const QString& Text() const { return text_; }

  // `area` is the whole client area, `unit` the height of its text rows, both in the painter's units.
  void Paint(QPainter& painter, const QRectF& area, qreal unit, const panel_look::Colours& colours) const;

 private:
  EmbeddedImages& images_;
  std::function<void()> changed_;
  QString text_;
  std::optional<EmbeddedImage> image_;
  QTimer end_;
};

}  // namespace quillet
