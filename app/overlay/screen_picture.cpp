#include "app/overlay/screen_picture.h"

#include "app/messages/picture_messages.h"

namespace quillet {
namespace {

constexpr QColor kCurtain(0, 0, 0, 210);

}  // namespace

ScreenPicture::ScreenPicture(PictureStore& store, const Settings& settings, QWidget& view)
    : store_(store), settings_(settings), view_(view) {
  connect(&store_, &PictureStore::Changed, this, [this](const QString& link) {
    if (link == link_) emit Changed();
  });
}

void ScreenPicture::Open(const QString& link) {
  if (settings_.work || link == link_) return;
  link_ = link;
  Want();
  emit Changed();
}

void ScreenPicture::Close() {
  if (!IsOpen()) return;
  link_.clear();
  scaled_.Forget();
  store_.SetWishes(PictureUser::kOverScreen, {});
  emit Changed();
}

void ScreenPicture::Click() {
  if (Now().stage == PictureStage::kFailed)
    store_.TryAgain(link_);
  else
    Close();
}

void ScreenPicture::Place(const OverlayPlace& place) {
  const qreal scale = view_.devicePixelRatioF();
  // A pixel of the picture is one of the screen's, or what the screen makes of it.
  const PictureBounds bounds((QSizeF(place.area.size()) * scale).toSize(), scale);
  if (settings_.work) Close();
  if (bounds == std::exchange(bounds_, bounds) || !IsOpen()) return;
  Want();
}

void ScreenPicture::Want() {
  store_.SetWishes(PictureUser::kOverScreen,
                   {{.link = link_,
                     .bounds = bounds_,
                     .motion = settings_.autoPlayGif ? Motion::kPlays : Motion::kStill}});
}

QRectF ScreenPicture::Bounds(const OverlayPlace& place) const {
  return IsOpen() ? QRectF(place.area) : QRectF();
}

void ScreenPicture::Paint(QPainter& painter, const OverlayPlace& place) {
  painter.fillRect(place.area, kCurtain);
  const PictureNow now = Now();
  if (now.image.isNull()) return PaintWords(painter, place, now);
  const qreal scale = view_.devicePixelRatioF();
  const QImage& shown = scaled_.Of(now.image, FittedSize(now.size, bounds_));
  // In device pixels a copy is a copy, whatever the scale factor.
  painter.save();
  painter.scale(1 / scale, 1 / scale);
  painter.drawImage(
      QPoint((bounds_.most.width() - shown.width()) / 2, (bounds_.most.height() - shown.height()) / 2),
      shown);
  painter.restore();
}

void ScreenPicture::PaintWords(QPainter& painter, const OverlayPlace& place, const PictureNow& now) const {
  painter.save();
  painter.setFont(panel_look::Sized(place.font, panel_look::TextSize(place.unit)));
  painter.setPen(panel_look::kLine);
  painter.drawText(place.area, Qt::AlignCenter | Qt::TextWordWrap, DescribePictureWithoutImage(now));
  painter.restore();
}

void ScreenPicture::TellKeys(WindowState& state) const {
  state.pictureShown = IsOpen();
}

bool ScreenPicture::OnKey(int /*virtualKey*/) {
  Close();
  return true;
}

}  // namespace quillet
