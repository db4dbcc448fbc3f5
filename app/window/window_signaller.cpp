#include "app/window/window_signaller.h"

#include <utility>

#include <QApplication>

#include "platform/folders.h"

namespace quillet {

WindowSignaller::WindowSignaller(std::unique_ptr<Attention> attention) : attention_(std::move(attention)) {}

void WindowSignaller::Flash() {
  if (!window_) return;
  // The toolkit's flash on Windows leaves out the caption and unmarks the taskbar button after its time.
  if (!attention_->Flash(window_->effectiveWinId())) QApplication::alert(window_);
}

void WindowSignaller::Beep() {
  if (!attention_->Beep()) QApplication::beep();
}

void WindowSignaller::PlayUpdatedSound() {
  if (!attention_->PlaySoundFile(ResourceFolder() / "Data" / "PushUpdated.wav")) Beep();
}

}  // namespace quillet
