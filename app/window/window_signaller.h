// The attention signals as the desktop gives them: by the system where it has a way of its own, by the
// toolkit otherwise. User-interface thread.
#pragma once

#include <memory>

#include <QPointer>
#include <QWidget>

#include "app/session/session_driver.h"
#include "platform/attention.h"

namespace quillet {

class WindowSignaller : public Signaller {
 public:
  explicit WindowSignaller(std::unique_ptr<Attention> attention = OpenAttention());

  void SetWindow(QWidget* window) { window_ = window; }

  void Flash() override;
  void Beep() override;
  // Beeps where the sound cannot be played.
  void PlayUpdatedSound() override;

 private:
  std::unique_ptr<Attention> attention_;
  QPointer<QWidget> window_;
};

}  // namespace quillet
