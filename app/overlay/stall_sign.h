// A sign in the corner of the terminal while the BBS does not answer what the user typed: quiet at first,
// then a button that connects anew. Takes no key and never the focus: the answer may come while he types on.
// The view owns it. User-interface thread.
#pragma once

#include <QAbstractButton>

#include "app/overlay/panel_look.h"
#include "bbs/answer_wait.h"

namespace quillet {

class StallSign : public QAbstractButton {
 public:
  explicit StallSign(QWidget* parent);

  void Tell(AnswerWait::State state);
  // Goes into the right upper corner of `area`; `unit` is the height of a text row, both in widget units.
  void Place(const QRect& area, qreal unit, const panel_look::Colours& colours);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Arrange();

  AnswerWait::State state_ = AnswerWait::State::kNone;
  QRect area_;
  panel_look::Colours colours_;
};

}  // namespace quillet
