// A sign in the corner of the terminal while the BBS does not answer what the user typed: quiet at first,
// then a button that connects anew. Takes no key and never the focus: the answer may come while he types on.
// The view owns it. User-interface thread.
#pragma once

#include <QAbstractButton>

#include "app/overlay/overlay.h"
#include "bbs/answer_wait.h"

namespace quillet {

class StallSign : public QAbstractButton, public Overlay {
 public:
  explicit StallSign(QWidget* parent);

  void Tell(AnswerWait::State state);
  // In the right upper corner.
  void Place(const OverlayPlace& place) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Arrange();

  AnswerWait::State state_ = AnswerWait::State::kNone;
  QRect area_;
  panel_look::Colours colours_;
};

}  // namespace quillet
