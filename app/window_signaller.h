// The attention signals as the desktop gives them. User-interface thread.
#pragma once

#include <QPointer>
#include <QWidget>

#include "app/session_driver.h"

namespace quillet {

class WindowSignaller : public Signaller {
 public:
  void SetWindow(QWidget* window) { window_ = window; }

  void Flash() override;
  void Beep() override;
  // The desktop's own sound until the program brings one of its own.
  void PlayUpdatedSound() override { Beep(); }

 private:
  QPointer<QWidget> window_;
};

}  // namespace quillet
