#include "app/overlay/search_bar.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>

#include "app/messages/article_messages.h"

namespace quillet {
namespace {

// More than a line of the terminal holds.
constexpr int kLongestText = 100;
// In letters' sizes.
constexpr double kHeight = 2.0;
constexpr double kGap = 0.5;
constexpr double kWidestField = 26;

}  // namespace

SearchBar::SearchBar(QWidget& parent) : QWidget(&parent), colours_(&LoginFormColoursFor(false)) {
  setAttribute(Qt::WA_NoMousePropagation);
  setCursor(Qt::ArrowCursor);
  hide();
}

// Its parts take a tenth of a start's time, and most people never look for anything in their first second.
void SearchBar::Build() {
  if (field_ != nullptr) return;
  label_ = new QLabel(SearchMessages::Label());
  field_ = new QLineEdit;
  tally_ = new QLabel;
  previous_ = new QPushButton(QStringLiteral("▲"));
  next_ = new QPushButton(QStringLiteral("▼"));
  auto* const row = new QHBoxLayout(this);
  for (QWidget* const part : std::initializer_list<QWidget*>{label_, field_, previous_, next_, tally_})
    row->addWidget(part, part == field_ ? 1 : 0);
  row->addStretch();
  label_->setBuddy(field_);
  field_->setMaxLength(kLongestText);
  field_->setAccessibleName(label_->text());
  field_->setPlaceholderText(SearchMessages::Hint());
  field_->installEventFilter(this);
  previous_->setToolTip(SearchMessages::Previous());
  next_->setToolTip(SearchMessages::Next());
  for (QPushButton* const button : {previous_, next_}) {
    button->setFocusPolicy(Qt::NoFocus);
    button->setFlat(true);
  }
  connect(field_, &QLineEdit::textChanged, this, &SearchBar::TextChanged);
  connect(previous_, &QPushButton::clicked, this, [this] { emit StepWanted(SearchStep::kPrevious); });
  connect(next_, &QPushButton::clicked, this, [this] { emit StepWanted(SearchStep::kNext); });
}

void SearchBar::Open(const QString& proposed) {
  Build();
  TakePlace();
  if (!open_) {
    const QSignalBlocker silent(field_);
    field_->setText(proposed);
  }
  open_ = true;
  show();
  raise();
  field_->setFocus(Qt::ShortcutFocusReason);
  field_->selectAll();
}

void SearchBar::Close() {
  if (!open_) return;
  open_ = false;
  if (field_->hasFocus() || window()->focusWidget() == field_) parentWidget()->setFocus();
  hide();
}

void SearchBar::Tell(const QString& tally, bool found) {
  if (tally_ == nullptr) return;
  tally_->setText(tally);
  QPalette palette = LoginFormPalette(*colours_);
  if (!found) palette.setColor(QPalette::WindowText, colours_->panel.problem);
  tally_->setPalette(palette);
}

void SearchBar::Place(const OverlayPlace& place) {
  place_ = place;
  if (open_) TakePlace();
}

void SearchBar::TakePlace() {
  const double letter = std::round(panel_look::TextSize(place_.unit));
  const LoginFormColours& colours = LoginFormColoursFor(place_.work);
  if (std::exchange(letter_, letter) != letter || colours_ != &colours) SetLook(place_.font, colours);
  const auto height = std::max({static_cast<int>(std::ceil(letter * kHeight)),
                                static_cast<int>(std::ceil(place_.unit)), layout()->minimumSize().height()});
  const int free = place_.area.height() - height;
  const int top = std::max(0, std::min(static_cast<int>(std::floor(place_.footTop)), free));
  setGeometry(0, top, place_.area.width(), height);
}

void SearchBar::SetLook(const QFont& font, const LoginFormColours& colours) {
  colours_ = &colours;
  const QFont letters = panel_look::Sized(font, letter_);
  const auto gap = static_cast<int>(letter_ * kGap);
  setPalette(LoginFormPalette(colours));
  for (QWidget* const part : std::initializer_list<QWidget*>{label_, field_, previous_, next_, tally_}) {
    part->setFont(letters);
    StyleLoginControl(*part, letter_, colours);
    part->setPalette(LoginFormPalette(colours));
  }
  field_->setMaximumWidth(static_cast<int>(letter_ * kWidestField));
  for (QPushButton* const button : {previous_, next_})
    button->setFixedWidth(static_cast<int>(letter_ * kHeight));
  layout()->setContentsMargins(gap, 1, gap, 1);
  layout()->setSpacing(gap);
}

// ---- Keys

bool SearchBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) return OnFieldKey(*static_cast<QKeyEvent*>(event));
  if (event->type() == QEvent::FocusOut && open_) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const bool stays = reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
                       reason == Qt::MenuBarFocusReason;
    if (!stays) QMetaObject::invokeMethod(this, &SearchBar::Left, Qt::QueuedConnection);
  }
  return QWidget::eventFilter(watched, event);
}

bool SearchBar::OnFieldKey(const QKeyEvent& event) {
  const bool back = event.modifiers().testFlag(Qt::ShiftModifier);
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (event.isAutoRepeat()) return true;
      if (back)
        emit StepWanted(SearchStep::kPrevious);
      else
        emit Confirmed();
      return true;
    case Qt::Key_Escape:
      if (!event.isAutoRepeat()) emit Dismissed();
      return true;
    case Qt::Key_F3:
      emit StepWanted(back ? SearchStep::kPrevious : SearchStep::kNext);
      return true;
    case Qt::Key_Up:
      emit StepWanted(SearchStep::kPrevious);
      return true;
    case Qt::Key_Down:
      emit StepWanted(SearchStep::kNext);
      return true;
    case Qt::Key_PageUp:
      emit PagesWanted(-1);
      return true;
    case Qt::Key_PageDown:
      emit PagesWanted(1);
      return true;
    default:
      return false;
  }
}

// What the field has no use for is none of the terminal's: it would go to the BBS.
void SearchBar::keyPressEvent(QKeyEvent* event) {
  event->accept();
}

bool SearchBar::focusNextPrevChild(bool /*next*/) {
  return true;
}

void SearchBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), colours_->panel.fill);
  painter.fillRect(0, 0, width(), 1, colours_->panel.border);
}

}  // namespace quillet
