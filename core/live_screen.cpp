#include "core/live_screen.h"

#include <cstring>
#include <thread>

namespace quillet {

void LiveScreen::BeginBatch() {
  inBatch_.store(true, std::memory_order_release);
}

// The writer's side of a sequence lock. Each word is a release store, so that a reader who sees a new word
// also sees that the counter was odd before it.
void LiveScreen::Publish(const ScreenSnapshot& screen) {
  std::array<std::uint64_t, kWords> words{};
  std::memcpy(words.data(), &screen, sizeof(screen));

  const std::uint32_t sequence = sequence_.load(std::memory_order_relaxed);
  sequence_.store(sequence + 1, std::memory_order_relaxed);
  for (std::size_t i = 0; i < kWords; ++i)
    words_[i].store(words[i], std::memory_order_release);
  inBatch_.store(false, std::memory_order_release);
  sequence_.store(sequence + 2, std::memory_order_release);
}

void LiveScreen::Read(Copy& out) const {
  std::array<std::uint64_t, kWords> words;
  for (;;) {
    const std::uint32_t before = sequence_.load(std::memory_order_acquire);
    if ((before & 1) == 0) {
      const bool batchBefore = inBatch_.load(std::memory_order_acquire);
      for (std::size_t i = 0; i < kWords; ++i)
        words[i] = words_[i].load(std::memory_order_acquire);
      out.settled = !batchBefore && !inBatch_.load(std::memory_order_acquire);
      if (sequence_.load(std::memory_order_relaxed) == before) break;
    }
    std::this_thread::yield();
  }
  std::memcpy(static_cast<void*>(&out.screen), words.data(), sizeof(out.screen));
}

}  // namespace quillet
