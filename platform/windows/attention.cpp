#include "platform/attention.h"

#include <windows.h>
// After windows.h, which it needs.
#include <mmsystem.h>

namespace quillet {
namespace {

constexpr UINT kDefaultBeep = 0xFFFFFFFF;

class WindowsAttention : public Attention {
 public:
  bool Flash(std::uintptr_t window) override {
    const auto handle = reinterpret_cast<HWND>(window);
    if (!IsWindow(handle)) return false;
    // The answer is how the caption looked before.
    FlashWindow(handle, TRUE);
    return true;
  }

  bool Beep() override { return MessageBeep(kDefaultBeep) != 0; }

  // For a file that is missing the system plays its default sound.
  bool PlaySoundFile(const std::filesystem::path& file) override {
    return PlaySoundW(file.c_str(), nullptr, SND_FILENAME | SND_ASYNC) != 0;
  }
};

}  // namespace

std::unique_ptr<Attention> OpenAttention() {
  return std::make_unique<WindowsAttention>();
}

}  // namespace quillet
