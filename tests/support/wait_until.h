// Waits for what another thread brings about: `ASSERT_TRUE(WaitUntil([&] { return done.load(); }));`.
#pragma once

#include <chrono>
#include <thread>

namespace quillet {

// The limit is for a machine that is busy with something else, never a measure of speed.
template <typename Condition>
bool WaitUntil(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(30)) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

}  // namespace quillet
