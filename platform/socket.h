// TCP, as much as a terminal and a loopback server need: connect with a way to stop, blocking reads and
// writes that another thread can interrupt, a listener. The system's own sockets behind one face.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

// The system's own handle of a socket.
#ifdef _WIN32
using NativeSocket = std::uintptr_t;
#else
using NativeSocket = int;
#endif

// One address that a host name resolved to.
struct ResolvedAddress {
  enum class Family { kIpv4, kIpv6 } family = Family::kIpv4;
  std::string text;  // dotted or colon form
  std::uint16_t port = 0;
  std::vector<std::uint8_t> raw;  // the system's socket address
};

struct Resolution {
  std::vector<ResolvedAddress> addresses;  // in the resolver's order, IPv4 and IPv6 only
  std::string error;                       // the system's own text when there are none
};

// Asks the system's resolver; blocks as long as that takes. An empty host, an empty port and a number outside
// 1..65535 are errors. Any thread.
Resolution ResolveHost(const std::string& host, const std::string& port);

// Wakes whoever waits in a Socket or Listener call that was given it. Once set it stays set. Any thread.
class StopSignal {
 public:
  StopSignal();
  ~StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;
  void Set();
  bool IsSet() const;
  // Sleeps up to `milliseconds`; true when the signal was set before that.
  bool WaitFor(int milliseconds) const;
  // The same for somebody else's stream: bytes that can be read from it, or its end, wake the sleeper too.
  bool WaitForInput(NativeSocket stream, int milliseconds) const;

 private:
  friend class Socket;
  friend class Listener;
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// One thread may receive while another sends. Connect, Close, moving and destruction stand alone: end the
// others first, through their StopSignal.
class Socket {
 public:
  Socket();
  ~Socket();  // closes
  Socket(Socket&&) noexcept;
  Socket& operator=(Socket&&) noexcept;

  enum class Result { kOk, kClosed, kError, kStopped };

  // Waits until connected, refused, or stopped. `LastError` then holds the system's text.
  Result Connect(const ResolvedAddress& address, const StopSignal& stop);
  // Waits for at least one byte. kOk with `count` > 0, or how it ended.
  Result Receive(std::span<std::uint8_t> buffer, std::size_t& count, const StopSignal& stop);
  // Waits until all bytes are taken by the system; `count` tells how many were. kClosed when the peer had
  // ended the connection in good order before (where the system tells that from a broken one).
  Result Send(std::span<const std::uint8_t> bytes, std::size_t& count, const StopSignal& stop);
  // Ends the connection in both directions but keeps the handle: whoever waits in Receive gets what had
  // arrived and then kClosed. Any thread.
  void Shutdown();
  void Close();
  // Hands the open stream over to somebody else, who closes it; none is left here.
  NativeSocket Release();
  bool IsOpen() const;
  // UTF-8. Any thread.
  std::string LastError() const;

 private:
  friend class Listener;
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

class Listener {
 public:
  Listener();
  ~Listener();
  // Listens on the loopback address of the family; port 0 lets the system choose. `backlog` is how many
  // clients the system keeps waiting. False with LastError set when it cannot.
  bool Open(ResolvedAddress::Family family, std::uint16_t port, int backlog = 64);
  std::uint16_t Port() const;
  // Waits for a client; nullptr when stopped or failed. While the process has no handles left, it waits for
  // one.
  std::unique_ptr<Socket> Accept(const StopSignal& stop);
  const std::string& LastError() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace quillet
