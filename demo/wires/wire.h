// How the bytes of one client of the demo BBS travel, and where such clients come from. A client receives on
// a thread of its own and sends on another.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "platform/socket.h"

namespace quillet::demo {

class Wire {
 public:
  virtual ~Wire() = default;
  // Agrees with the client on whatever comes before the first byte of the terminal; waits for that as long as
  // it takes. False: there will be no terminal. Once, before anything else.
  virtual bool Open(const StopSignal& stop) = 0;
  // Waits for bytes and returns how many there are; 0: the client is gone, or the signal was set.
  virtual std::size_t Receive(std::span<std::uint8_t> buffer, const StopSignal& stop) = 0;
  // Waits until all are on their way; false: the client is gone, or the signal was set.
  virtual bool Send(std::span<const std::uint8_t> bytes, const StopSignal& stop) = 0;
  // Says goodbye as this way of travelling does. Nobody sends or receives any more.
  virtual void Close() = 0;
};

class Door {
 public:
  virtual ~Door() = default;
  // Waits for a client; null when the signal was set, or when the system is out of handles for the moment.
  virtual std::unique_ptr<Wire> Accept(const StopSignal& stop) = 0;
  virtual std::uint16_t Port() const = 0;
  // With scheme, host and port.
  virtual std::string Address() const = 0;
};

// What came of opening a door on loopback.
struct OpenedDoor {
  std::unique_ptr<Door> door;
  std::string error;  // says why there is none
};

}  // namespace quillet::demo
