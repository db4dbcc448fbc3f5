// Getting the user's attention with what the system itself has: a flash of the window, a beep, a sound file.
// Each answers whether the system did it, so that the caller can do something else instead. The class itself
// is of a system that has nothing. User-interface thread; nothing here waits.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

namespace quillet {

class Attention {
 public:
  Attention() = default;
  Attention(const Attention&) = delete;
  Attention& operator=(const Attention&) = delete;
  virtual ~Attention() = default;

  // Inverts caption and taskbar button of a top-level window once; the button stays marked until the user
  // comes. `window` is the system's handle.
  virtual bool Flash(std::uintptr_t /*window*/) { return false; }

  // The system's default sound.
  virtual bool Beep() { return false; }

  // Starts playing a WAV file in place of the sound that is still playing. True once somebody plays it; what
  // goes wrong after that is told by the next call, which tries again all the same.
  virtual bool PlaySoundFile(const std::filesystem::path& /*file*/) { return false; }
};

// The system's own; never null. What it still plays ends with it.
std::unique_ptr<Attention> OpenAttention();

}  // namespace quillet
