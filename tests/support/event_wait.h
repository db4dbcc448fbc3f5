// Waits for what the toolkit's event loop brings about.
#pragma once

#include <chrono>
#include <thread>

#include <QCoreApplication>

namespace quillet {

// The limit is for a machine that is busy with something else, never a measure of speed.
template <typename Condition>
bool WaitWithEvents(Condition condition, std::chrono::milliseconds limit = std::chrono::seconds(60)) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

}  // namespace quillet
