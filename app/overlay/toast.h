// A line over the terminal that says what has just happened and goes by itself. User-interface thread.
#pragma once

#include <functional>
#include <optional>

#include <QString>
#include <QTimer>

#include "app/overlay/overlay.h"
#include "render/paint/embedded_images.h"

namespace quillet {

class Toast : public Overlay {
 public:
  // `images` outlives the toast. `changed`: it has appeared or gone, the area has to be painted anew.
  Toast(EmbeddedImages& images, std::function<void()> changed);

  // Takes the place of the one before.
  void Show(const QString& text, std::optional<EmbeddedImage> image = std::nullopt);
  void Hide();
  // Empty: none is shown.
  const QString& Text() const { return text_; }

  QRectF Bounds(const OverlayPlace& place) const override;
  void Paint(QPainter& painter, const OverlayPlace& place) override;

 private:
  // Where everything stands, in the painter's units.
  struct Shape {
    QFont font;
    double letter;   // the size of the letters
    double picture;  // the room that the picture takes before the text
    double textWidth;
    QRectF box;
  };
  Shape ShapeAt(const OverlayPlace& place) const;

  EmbeddedImages& images_;
  std::function<void()> changed_;
  QString text_;
  std::optional<EmbeddedImage> image_;
  QTimer end_;
};

}  // namespace quillet
