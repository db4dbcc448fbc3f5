// A copy of the live screen that any thread can read while the receive thread goes on writing: the writer
// publishes after each batch, a reader copies and learns whether the copy is whole and settled. No lock on
// either side (a sequence counter around word-wise atomic copies), so a slow reader never holds up the
// network.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

#include "core/screen_snapshot.h"

namespace quillet {

class LiveScreen {
 public:
  // Receive thread (or the thread that owns the screen while no receive thread exists).
  void BeginBatch();
  void Publish(const ScreenSnapshot& screen);  // also ends the batch

  // Copies the latest published screen; before the first one every byte is 0. Any thread. `settled` is false
  // when a batch was being parsed at any moment of the copying.
  struct Copy {
    ScreenSnapshot screen;
    bool settled = false;
    std::uint32_t version = 0;  // differs from that of every earlier screen
  };
  void Read(Copy& out) const;

 private:
  static_assert(sizeof(ScreenSnapshot) % 8 == 0);
  static constexpr std::size_t kWords = sizeof(ScreenSnapshot) / 8;
  std::array<std::atomic<std::uint64_t>, kWords> words_{};
  std::atomic<std::uint32_t> sequence_{0};  // odd while words_ is being written
  std::atomic<bool> inBatch_{false};
};

}  // namespace quillet
