#include "app/overlay/toast.h"

#include <cmath>
#include <utility>

#include <QFontMetricsF>

#include "render/paint/card_painter.h"

namespace quillet {
namespace {

// Long enough to read a line of a dozen characters twice.
constexpr int kShownMs = 4000;

// In the toast's letters.
constexpr double kToastHeight = 2.1;
constexpr double kToastPadding = 0.8;
constexpr double kPicture = 1.1;
constexpr double kPictureStep = 1.5;
// In the terminal's rows: above the status line.
constexpr double kAboveFoot = 1.6;

}  // namespace

Toast::Toast(EmbeddedImages& images, std::function<void()> changed)
    : images_(images), changed_(std::move(changed)) {
  end_.setSingleShot(true);
  QObject::connect(&end_, &QTimer::timeout, [this] { Hide(); });
}

void Toast::Show(const QString& text, std::optional<EmbeddedImage> image) {
  text_ = text;
  image_ = image;
  end_.start(kShownMs);
  changed_();
}

void Toast::Hide() {
  if (text_.isEmpty()) return;
  text_.clear();
  end_.stop();
  changed_();
}

QRectF Toast::Bounds(const OverlayPlace& place) const {
  return text_.isEmpty() ? QRectF() : ShapeAt(place).box;
}

Toast::Shape Toast::ShapeAt(const OverlayPlace& place) const {
  const double letter = std::round(panel_look::TextSize(place.unit) * panel_look::kSignTextSize);
  const QFont font = panel_look::Sized(place.font, letter);
  const double picture = image_ ? std::round(letter * kPictureStep) : 0;
  const double textWidth = std::ceil(QFontMetricsF(font).horizontalAdvance(text_));
  const QRectF area = place.area;
  QRectF box(0, 0, textWidth + picture + 2 * kToastPadding * letter, std::ceil(letter * kToastHeight));
  box.moveCenter(QPointF(area.center().x(), 0));
  box.moveBottom(std::round(area.bottom() - place.unit * kAboveFoot));
  return {.font = font, .letter = letter, .picture = picture, .textWidth = textWidth, .box = box};
}

void Toast::Paint(QPainter& painter, const OverlayPlace& place) {
  if (text_.isEmpty()) return;
  const Shape shape = ShapeAt(place);
  const panel_look::Colours& colours = place.Colours();
  painter.save();
  painter.setFont(shape.font);
  panel_look::PaintBox(painter, shape.box, shape.letter, colours.border, colours.fill);
  QPointF at(shape.box.left() + shape.letter * kToastPadding, shape.box.center().y());
  if (image_) {
    const double side = shape.letter * kPicture;
    PaintEmbedded(painter, QRectF(at.x(), at.y() - side / 2, side, side), *image_,
                  colours.busy.rgb() & 0xFFFFFF, images_);
    at.rx() += shape.picture;
  }
  painter.setPen(colours.line);
  painter.drawText(QRectF(at.x(), shape.box.top(), shape.textWidth + shape.letter, shape.box.height()),
                   Qt::AlignLeft | Qt::AlignVCenter, text_);
  painter.restore();
}

}  // namespace quillet
