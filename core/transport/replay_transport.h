// Shows a recorded byte stream as if a BBS were sending it, in pieces at a given speed. Made by the program
// for "--replay"; threads as Transport says. What is typed goes nowhere.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>

#include "core/transport/transport.h"

namespace quillet {

class ReplayTransport : public Transport {
 public:
  // `bytesPerSecond` 0 shows the recording at once.
  ReplayTransport(std::filesystem::path file, std::uint32_t bytesPerSecond);

  // Ends with kEndOfRecording; a file that cannot be read is kConnectFailed, with its name in the detail.
  TransportEnd Run(TransportEvents& events) override;
  std::size_t Write(std::span<const std::uint8_t> bytes) override { return bytes.size(); }
  void Stop() override { stopped_ = true; }

 private:
  const std::filesystem::path file_;
  const std::uint32_t bytesPerSecond_;
  std::atomic<bool> stopped_{false};
};

}  // namespace quillet
