// A handle of the system's, closed at its end. Windows sources only.
#pragma once

#include <windows.h>

namespace quillet {

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (IsOpen()) CloseHandle(handle_);
  }
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE && handle_ != nullptr; }
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

}  // namespace quillet
