// A line over the page that tells, once, that the sites of pictures learn who reads, and asks which pictures
// open by themselves. It leaves the keyboard where it is; Esc puts it away unanswered. The view owns one.
// User-interface thread.
#pragma once

#include <functional>

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "app/overlay/overlay.h"
#include "settings/setting_choices.h"

namespace quillet {

class PictureQuestion : public QWidget, public Overlay {
 public:
  // Closed; what it is made of comes with Ask. `choose` hears the answer, once.
  PictureQuestion(QWidget& view, std::function<void(PictureScope)> choose);

  void Ask();
  bool IsAsking() const { return isAsking_; }

  // Along the upper edge; out of sight in disguise.
  void Place(const OverlayPlace& place) override;
  void TellKeys(WindowState& state) const override;
  KeyRoute OwnKeys() const override { return KeyRoute::kQuestion; }
  bool OnKey(int virtualKey) override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void Build();
  QPushButton* MakeButton(const QString& text, const QString& name);
  void TakePlace();
  void End();

  const std::function<void(PictureScope)> choose_;
  bool isAsking_ = false;
  OverlayPlace place_;
};

}  // namespace quillet
