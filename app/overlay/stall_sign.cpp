#include "app/overlay/stall_sign.h"

#include <cmath>
#include <utility>

#include <QPainter>

#include "app/messages/session_messages.h"

namespace quillet {

using panel_look::kSignPadding;

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

void StallSign::Place(const OverlayPlace& place) {
  area_ = place.area;
  colours_ = place.Colours();
  setFont(panel_look::Sized(font(), panel_look::TextSize(place.unit) * panel_look::kSignTextSize));
  Arrange();
}

void StallSign::Arrange() {
  const int letter = font().pixelSize();
  const int from = qRound(letter * panel_look::kFromCorner);
  const int wanted = fontMetrics().horizontalAdvance(text()) + qRound(2 * kSignPadding * letter);
  QRect place(0, 0, qMin(wanted, area_.width() - 2 * from), qRound(letter * panel_look::kSignHeight));
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
