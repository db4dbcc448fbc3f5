#include "core/live_screen.h"

#include <cstddef>
#include <cstring>
#include <thread>

namespace quillet {

void LiveScreen::BeginBatch() {
  inBatch_.store(true, std::memory_order_release);
}

// The writer's side of a sequence lock. Each word is a release store, so that a reader who sees a new word
// also sees that the counter was odd before it.
void LiveScreen::Publish(const ScreenSnapshot& screen) {
  const auto* const from = reinterpret_cast<const std::byte*>(&screen);
  const std::uint32_t sequence = sequence_.load(std::memory_order_relaxed);
  sequence_.store(sequence + 1, std::memory_order_relaxed);
  for (std::size_t i = 0; i < kWords; ++i) {
    std::uint64_t word = 0;
    std::memcpy(&word, from + i * sizeof(word), sizeof(word));
    words_[i].store(word, std::memory_order_release);
  }
  inBatch_.store(false, std::memory_order_release);
  sequence_.store(sequence + 2, std::memory_order_release);
}

void LiveScreen::Read(Copy& out) const {
  auto* const to = reinterpret_cast<std::byte*>(&out.screen);
  for (;;) {
    const std::uint32_t before = sequence_.load(std::memory_order_acquire);
    if ((before & 1) == 0) {
      const bool batchBefore = inBatch_.load(std::memory_order_acquire);
      for (std::size_t i = 0; i < kWords; ++i) {
        const std::uint64_t word = words_[i].load(std::memory_order_acquire);
        std::memcpy(to + i * sizeof(word), &word, sizeof(word));
      }
      out.settled = !batchBefore && !inBatch_.load(std::memory_order_acquire);
      if (sequence_.load(std::memory_order_relaxed) == before) {
        out.version = before;
        break;
      }
    }
    std::this_thread::yield();
  }
}

}  // namespace quillet
