#include "app/overlay/stall_sign.h"

#include <cmath>
#include <utility>

#include <QPainter>

#include "app/messages/session_messages.h"

namespace quillet {
namespace {

// Of the panel's letters.
constexpr double kSignTextSize = 0.9;
// In the sign's letters.
constexpr double kSignHeight = 1.9;
constexpr double kSignPadding = 0.9;

}  // namespace

StallSign::StallSign(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::NoFocus);
  hide();
}

void StallSign::Tell(AnswerWait::State state) {
  if (std::exchange(state_, state) == state) return;
  const bool isButton = state == AnswerWait::State::kStalled;
  setText(DescribeSilence(state));
  setAttribute(Qt::WA_TransparentForMouseEvents, !isButton);
  setCursor(isButton ? Qt::PointingHandCursor : Qt::ArrowCursor);
  Arrange();
  setVisible(state != AnswerWait::State::kNone);
}

void StallSign::Place(const QRect& area, qreal unit, const panel_look::Colours& colours) {
  area_ = area;
  colours_ = colours;
  QFont letters = font();
  letters.setPixelSize(qRound(panel_look::TextSize(unit) * kSignTextSize));
  setFont(letters);
  Arrange();
}

void StallSign::Arrange() {
  const int letter = font().pixelSize();
  const int from = qRound(letter * panel_look::kFromCorner);
  const int wanted = fontMetrics().horizontalAdvance(text()) + qRound(2 * kSignPadding * letter);
  QRect place(0, 0, qMin(wanted, area_.width() - 2 * from), qRound(letter * kSignHeight));
  place.moveTopRight(area_.topRight() + QPoint(-from, from));
  setGeometry(place);
  update();
}

void StallSign::paintEvent(QPaintEvent* /*event*/) {
  const bool stalled = state_ == AnswerWait::State::kStalled;
  QPainter painter(this);
  panel_look::PaintBox(painter, rect(), font().pixelSize(), stalled ? colours_.ended : colours_.border,
                       colours_.fill);
  painter.setPen(stalled ? colours_.title : colours_.hint);
  const int room = width() - qRound(kSignPadding * font().pixelSize());
  painter.drawText(rect(), Qt::AlignCenter, fontMetrics().elidedText(text(), Qt::ElideRight, room));
}

}  // namespace quillet
