#include "app/window_signaller.h"

#include <QApplication>

namespace quillet {

void WindowSignaller::Flash() {
  constexpr int kOnceMs = 1000;
  if (window_) QApplication::alert(window_, kOnceMs);
}

void WindowSignaller::Beep() {
  QApplication::beep();
}

}  // namespace quillet
