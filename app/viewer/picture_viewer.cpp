#include "app/viewer/picture_viewer.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QtMath>

#include "app/messages/picture_messages.h"
#include "app/overlay/form_style.h"

namespace quillet {
namespace {

constexpr QColor kCurtain(0, 0, 0, 225);
constexpr QColor kCaptionGround(0x1B, 0x1F, 0x26, 235);
// Degrees of a wheel's notch, as the toolkit counts them.
constexpr double kNotch = QWheelEvent::DefaultDeltasPerStep;
// A window lower than so many captions has none.
constexpr double kFewestCaptions = 4;
// In letters' sizes.
constexpr double kBarWidth = 16;
constexpr double kBarHeight = 0.3;
constexpr double kBelowWords = 1.6;
constexpr int kSaidMs = 6000;

// Those beside it are ready when one goes on.
constexpr int kNeighbours[] = {1, -1};

bool IsFarFrom(const QPointF& one, const QPointF& other) {
  return (one - other).manhattanLength() >= QApplication::startDragDistance();
}

PixelSize Plain(QSize size) {
  return {size.width(), size.height()};
}

}  // namespace

PictureViewer::PictureViewer(PictureStore& store, const Settings& settings, QWidget& view, Handlers handlers)
    : QWidget(&view), store_(store), settings_(settings), view_(view), handlers_(std::move(handlers)) {
  setAttribute(Qt::WA_NoMousePropagation);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setContextMenuPolicy(Qt::PreventContextMenu);  // the right button is released for it
  hide();
  connect(&store_, &PictureStore::Changed, this, &PictureViewer::OnPictureChanged);
  saidLongEnough_.setSingleShot(true);
  connect(&saidLongEnough_, &QTimer::timeout, this, [this] { Say({}); });
}

// ---- Which picture

void PictureViewer::Open(std::vector<QString> links, const QString& link) {
  if (settings_.work || links.empty()) return;
  links_ = std::move(links);
  sinceOpened_.start();
  const auto found = std::find(links_.begin(), links_.end(), link);
  TakePlace();
  show();
  raise();
  setFocus();
  GoTo(found == links_.end() ? 0 : static_cast<std::size_t>(found - links_.begin()));
  emit Changed();
}

void PictureViewer::Close() {
  if (!IsOpen()) return;
  links_.clear();
  said_.clear();
  grip_.reset();
  shown_.Forget();
  store_.SetWishes(PictureUser::kViewer, {});
  if (hasFocus() || window()->focusWidget() == this) view_.setFocus();
  hide();
  emit Changed();
}

void PictureViewer::GoTo(std::size_t at) {
  at_ = at;
  known_ = {};
  said_.clear();
  grip_.reset();
  shown_.Forget();
  zoom_.SetPicture({});
  FollowSize();
  Want();
  ShowOtherwise();
}

// Beyond the last one there is nothing: going round would hide where the article ends.
void PictureViewer::StepBy(int step) {
  const auto wanted = static_cast<std::ptrdiff_t>(at_) + step;
  const auto last = static_cast<std::ptrdiff_t>(links_.size()) - 1;
  const auto at = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(wanted, 0, last));
  if (at != at_) GoTo(at);
}

PictureNow PictureViewer::Now() const {
  const PixelSize bounds = zoom_.WantedBounds();
  return store_.Look(Link(), {bounds.width, bounds.height});
}

void PictureViewer::OnPictureChanged(const QString& link) {
  if (!IsOpen() || link != Link()) return;
  FollowSize();
  ShowOtherwise();
}

void PictureViewer::FollowSize() {
  const QSize size = Now().size;
  if (size.isEmpty() || std::exchange(known_, size) == size) return;
  zoom_.SetPicture(Plain(size));
  Want();
}

void PictureViewer::Want() {
  if (!IsOpen()) return;
  const PixelSize bounds = zoom_.WantedBounds();
  std::vector<PictureWish> wishes{{.link = Link(),
                                   .bounds = {bounds.width, bounds.height},
                                   .motion = isSeen_ ? Motion::kPlays : Motion::kStill}};
  const QSize room = (PictureArea().size() * devicePixelRatioF()).toSize();
  for (const int step : kNeighbours) {
    const std::size_t beside = at_ + static_cast<std::size_t>(step);
    if (beside < links_.size()) wishes.push_back({.link = links_[beside], .bounds = room});
  }
  store_.SetWishes(PictureUser::kViewer, std::move(wishes));
}

void PictureViewer::SetSeen(bool seen) {
  if (std::exchange(isSeen_, seen) != seen) Want();
}

void PictureViewer::ShowOtherwise() {
  SetShape();
  PlaceRetry();
  update();
}

QString PictureViewer::Caption() const {
  if (!IsOpen() || !said_.isEmpty()) return said_;
  return DescribeLookedAt({.number = static_cast<int>(at_) + 1,
                           .count = static_cast<int>(links_.size()),
                           .percent = qRound(zoom_.Factor() * 100),
                           .link = Link()},
                          Now());
}

void PictureViewer::Say(const QString& words) {
  said_ = words;
  if (!words.isEmpty()) saidLongEnough_.start(kSaidMs);
  update();
}

// ---- Keys

bool PictureViewer::event(QEvent* event) {
  // Menus would take keys that mean something else here, and some that reach the BBS.
  if (event->type() == QEvent::ShortcutOverride &&
      !handlers_.isForWindow(*static_cast<const QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void PictureViewer::keyPressEvent(QKeyEvent* event) {
  if (handlers_.isForWindow(*event)) return event->ignore();
  event->accept();
  const Qt::KeyboardModifiers held = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
  if (held == Qt::ControlModifier && !event->isAutoRepeat()) OnControlKey(event->key());
  if (held != Qt::NoModifier) return;
  const bool acts = event->key() == Qt::Key_Space || event->key() == Qt::Key_Escape;
  if (acts && event->isAutoRepeat()) return;
  OnPlainKey(event->key());
}

bool PictureViewer::OnControlKey(int key) {
  if (key != Qt::Key_C && key != Qt::Key_S) return false;
  handlers_.perform(key == Qt::Key_C ? Command::kCopyPicture : Command::kSavePicture);
  return true;
}

bool PictureViewer::OnPlainKey(int key) {
  const int all = static_cast<int>(links_.size());
  switch (key) {
    case Qt::Key_Escape:
    case Qt::Key_Q:
      Close();
      return true;
    case Qt::Key_Left:
    case Qt::Key_PageUp:
      StepBy(-1);
      return true;
    case Qt::Key_Right:
    case Qt::Key_PageDown:
      StepBy(1);
      return true;
    case Qt::Key_Home:
      StepBy(-all);
      return true;
    case Qt::Key_End:
      StepBy(all);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (retry_ != nullptr && retry_->isVisible()) retry_->click();
      return true;
    case Qt::Key_Space:
      zoom_.ToggleActualSize(zoom_.Middle());
      break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      zoom_.ZoomBy(1, zoom_.Middle());
      break;
    case Qt::Key_Minus:
    case Qt::Key_Underscore:
      zoom_.ZoomBy(-1, zoom_.Middle());
      break;
    case Qt::Key_0:
      zoom_.Fit();
      break;
    default:
      return false;
  }
  Want();
  ShowOtherwise();
  return true;
}

bool PictureViewer::focusNextPrevChild(bool /*next*/) {
  return true;
}

// Something else of the window has the keyboard now: the login form, a list.
void PictureViewer::focusOutEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  const bool stays = reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
                     reason == Qt::MenuBarFocusReason;
  if (!stays) QMetaObject::invokeMethod(this, &PictureViewer::Leave, Qt::QueuedConnection);
  QWidget::focusOutEvent(event);
}

void PictureViewer::Leave() {
  if (IsOpen() && !hasFocus() && window()->focusWidget() != this) Close();
}

// ---- The mouse

ZoomPoint PictureViewer::InRoom(const QPointF& at) const {
  const QPointF point = at * devicePixelRatioF();
  return {point.x(), point.y()};
}

void PictureViewer::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) grip_ = Grip{.from = event->position(), .last = event->position()};
  SetShape();
}

void PictureViewer::mouseMoveEvent(QMouseEvent* event) {
  if (!grip_ || !event->buttons().testFlag(Qt::LeftButton)) return;
  grip_->drags = grip_->drags || IsFarFrom(grip_->from, event->position());
  if (!grip_->drags) return;
  const QPointF way =
      (event->position() - std::exchange(grip_->last, event->position())) * devicePixelRatioF();
  zoom_.MoveBy(way.x(), way.y());
  update();
}

void PictureViewer::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::RightButton) return handlers_.menu(event->globalPosition().toPoint());
  if (event->button() != Qt::LeftButton) return;
  const std::optional<Grip> grip = std::exchange(grip_, std::nullopt);
  SetShape();
  if (!grip || grip->drags) return;
  if (!zoom_.Place().Holds(InRoom(event->position()))) Close();
}

// The click that has opened it may have been meant as the first of two.
void PictureViewer::mouseDoubleClickEvent(QMouseEvent* event) {
  const ZoomPoint at = InRoom(event->position());
  if (event->button() != Qt::LeftButton || !zoom_.Place().Holds(at)) return;
  if (sinceOpened_.elapsed() < QApplication::doubleClickInterval()) return;
  zoom_.ToggleActualSize(at);
  Want();
  ShowOtherwise();
}

void PictureViewer::wheelEvent(QWheelEvent* event) {
  event->accept();
  zoom_.ZoomBy(event->angleDelta().y() / kNotch, InRoom(event->position()));
  Want();
  ShowOtherwise();
}

void PictureViewer::SetShape() {
  if (!zoom_.CanMove())
    unsetCursor();
  else
    setCursor(grip_ ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
}

// ---- Where it stands

void PictureViewer::Place(const OverlayPlace& place) {
  place_ = place;
  if (place.work) Close();
  if (IsOpen()) TakePlace();
}

void PictureViewer::TakePlace() {
  setGeometry(place_.area);
  const QSize room = (PictureArea().size() * devicePixelRatioF()).toSize();
  zoom_.SetRoom(Plain(room), devicePixelRatioF());
  StyleRetry();
  Want();
  ShowOtherwise();
}

double PictureViewer::CaptionHeight() const {
  const double height = panel_look::TextSize(place_.unit) * panel_look::kSignHeight;
  return place_.area.height() < kFewestCaptions * height ? 0 : height;
}

QRectF PictureViewer::PictureArea() const {
  return QRectF(rect()).adjusted(0, 0, 0, -CaptionHeight());
}

// Below the words that say why.
void PictureViewer::PlaceRetry() {
  const bool failed = IsOpen() && Now().stage == PictureStage::kFailed;
  if (failed && retry_ == nullptr) MakeRetry();
  if (retry_ == nullptr) return;
  const double below = panel_look::TextSize(place_.unit) * kBelowWords;
  retry_->move(qRound(PictureArea().center().x() - retry_->width() / 2.0),
               qRound(PictureArea().center().y() + below));
  retry_->setVisible(failed);
}

void PictureViewer::MakeRetry() {
  retry_ = new QPushButton(PictureAgainWord(), this);
  retry_->setFocusPolicy(Qt::NoFocus);
  retry_->setCursor(Qt::ArrowCursor);
  connect(retry_, &QPushButton::clicked, this, [this] { store_.TryAgain(Link()); });
  StyleRetry();
}

void PictureViewer::StyleRetry() {
  if (retry_ == nullptr) return;
  const LoginFormColours& colours = LoginFormColoursFor(false);
  const double letter = panel_look::TextSize(place_.unit);
  retry_->setFont(panel_look::Sized(place_.font, letter));
  StyleLoginControl(*retry_, letter, colours);
  retry_->setPalette(LoginFormPalette(colours));
  retry_->adjustSize();
}

// ---- Drawing

void PictureViewer::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.fillRect(event->rect(), kCurtain);
  const QImage image = Now().image;
  if (image.isNull()) {
    PaintWords(painter);
  } else {
    const qreal scale = devicePixelRatioF();
    painter.save();
    // In device pixels a copy is a copy, whatever the scale factor.
    painter.scale(1 / scale, 1 / scale);
    shown_.Paint(painter, (PictureArea().size() * scale).toSize(), image, zoom_);
    painter.restore();
  }
  PaintCaption(painter);
}

void PictureViewer::PaintWords(QPainter& painter) const {
  const PictureNow now = Now();
  const double letter = panel_look::TextSize(place_.unit);
  painter.setFont(panel_look::Sized(place_.font, letter));
  painter.setPen(panel_look::kLine);
  painter.drawText(PictureArea(), Qt::AlignCenter | Qt::TextWordWrap, DescribePictureToCome(now));
  if (now.stage == PictureStage::kFailed || now.expected <= 0) return;
  QRectF bar(0, 0, std::min(letter * kBarWidth, PictureArea().width()), letter * kBarHeight);
  bar.moveCenter(PictureArea().center() + QPointF(0, letter * kBelowWords));
  painter.fillRect(bar, panel_look::kBorder);
  bar.setWidth(bar.width() * static_cast<double>(std::min(now.received, now.expected)) /
               static_cast<double>(now.expected));
  painter.fillRect(bar, panel_look::kBusy);
}

void PictureViewer::PaintCaption(QPainter& painter) const {
  const double height = CaptionHeight();
  if (height <= 0) return;
  const QRectF line(0, QRectF(rect()).bottom() - height, width(), height);
  const double letter = panel_look::TextSize(place_.unit) * panel_look::kSignTextSize;
  painter.fillRect(line, kCaptionGround);
  painter.setFont(panel_look::Sized(place_.font, letter));
  painter.setPen(panel_look::kLine);
  const QRectF text = line.adjusted(letter, 0, -letter, 0);
  painter.drawText(text, Qt::AlignCenter,
                   painter.fontMetrics().elidedText(Caption(), Qt::ElideRight, qFloor(text.width())));
}

}  // namespace quillet
