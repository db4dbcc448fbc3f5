// The other end of the benchmarks of transports: a process of its own behind the demo's three doors, so that
// what is measured in this one is the client's alone. What a client sends first chooses what it is served:
// kFlood a stream of bytes, kKeys an echo and the time at which each key came, kRest nothing.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/types.h>

#include "platform/socket.h"

namespace quillet {

namespace demo {
class Wire;
}

class FarEnd {
 public:
  static constexpr char kFlood = 'F', kKeys = 'K', kRest = 'R';
  static constexpr char kKey = 'j';  // the only one that counts
  // What a page of the BBS's brings in one write, in bytes.
  static constexpr std::size_t kPiece = 4096;
  static constexpr std::size_t kMostKeys = 4096;
  enum Way { kTelnet, kSsh, kWebSocket, kWays };

  // Forks: before the first thread of this process. `stream` is sent over and over to a client that asks for
  // it, until `floodSize` bytes are sent. Ends the program when a door cannot be opened.
  FarEnd(std::string stream, std::size_t floodSize);
  ~FarEnd();  // ends the other process
  FarEnd(const FarEnd&) = delete;
  FarEnd& operator=(const FarEnd&) = delete;

  std::uint16_t Port(Way way) const { return shared_->ports[way]; }
  // PEM: who has signed the certificate of the WebSocket door.
  std::string Authority() const { return shared_->authority.data(); }
  std::size_t FloodSize() const { return floodSize_; }

  // Keys are counted from the newest client's first on.
  void ForgetKeys() { shared_->keys = 0; }
  std::size_t Keys() const { return shared_->keys; }
  // Nanoseconds of the steady clock, which all processes share.
  std::int64_t KeyTime(std::size_t key) const { return shared_->keyTimes[key]; }

 private:
  struct Shared {
    std::atomic<bool> ready;
    std::array<std::uint16_t, kWays> ports;
    std::array<char, 16384> authority;
    std::atomic<std::size_t> keys;
    std::array<std::int64_t, kMostKeys> keyTimes;
  };

  // The other process.
  [[noreturn]] void RunHere();
  void Serve() const;
  void ServeClient(demo::Wire& wire, const StopSignal& never) const;
  char Grant(std::uint8_t byte, demo::Wire& wire, const StopSignal& never) const;
  void NoteKey(std::int64_t time, demo::Wire& wire, const StopSignal& never) const;

  const std::string stream_;
  const std::size_t floodSize_;
  Shared* shared_ = nullptr;
  pid_t process_ = -1;
};

std::int64_t NowNs();

}  // namespace quillet
