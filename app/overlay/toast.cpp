#include "app/overlay/toast.h"

#include <cmath>
#include <utility>

#include <QFontMetricsF>

#include "render/paint/card_painter.h"

namespace quillet {
namespace {

// Long enough to read a line of a dozen characters twice.
constexpr int kShownMs = 4000;

// Of the panel's letters.
constexpr double kToastTextSize = 0.9;
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

void Toast::Paint(QPainter& painter, const QRectF& area, qreal unit,
                  const panel_look::Colours& colours) const {
  if (text_.isEmpty()) return;
  const qreal size = std::round(panel_look::TextSize(unit) * kToastTextSize);
  painter.save();
  QFont font = painter.font();
  font.setPixelSize(static_cast<int>(size));
  painter.setFont(font);
  const qreal picture = image_ ? std::round(size * kPictureStep) : 0;
  const qreal textWidth = std::ceil(QFontMetricsF(font).horizontalAdvance(text_));
  QRectF box(0, 0, textWidth + picture + 2 * kToastPadding * size, std::ceil(size * kToastHeight));
  box.moveCenter(QPointF(area.center().x(), 0));
  box.moveBottom(std::round(area.bottom() - unit * kAboveFoot));
  panel_look::PaintBox(painter, box, size, colours.border, colours.fill);
  QPointF at(box.left() + size * kToastPadding, box.center().y());
  if (image_) {
    const qreal side = size * kPicture;
    PaintEmbedded(painter, QRectF(at.x(), at.y() - side / 2, side, side), *image_,
                  colours.busy.rgb() & 0xFFFFFF, images_);
    at.rx() += picture;
  }
  painter.setPen(colours.line);
  painter.drawText(QRectF(at.x(), box.top(), textWidth + size, box.height()),
                   Qt::AlignLeft | Qt::AlignVCenter, text_);
  painter.restore();
}

}  // namespace quillet
