// A host that speaks SSH on loopback, until it does what a test has planted. One client after the other, on a
// thread of its own.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace quillet {

enum class SshFault {
  kNone,  // sends the greeting, then back whatever it gets
  // Says nothing more from this point on.
  kSilentFromTheStart,
  kSilentAfterTheBanner,
  kSilentAtLogin,
  kSilentAtPassword,
  kSilentAtChannel,
  kSilentAtTerminal,
  kSilentAtShell,
  // Refuses it.
  kRefusesPassword,
  kRefusesChannel,
  kRefusesTerminal,  // and greets all the same
  kRefusesShell,     // and ends the channel
  // After the greeting.
  kClosesTheChannel,
  kDropsTheConnection,
  kStalls,          // reads and writes nothing any more
  kOneByteAPacket,  // as kNone, the greeting in packets of one byte
  kFloods,          // sends kFloodSize bytes, then closes the channel
  kNoWindow         // never takes what it is sent, so that its window stays shut
};

class FaultySshServer {
 public:
  static constexpr std::size_t kFloodSize = 8U << 20;
  // What every client is greeted with where it comes to that; it ends on the screen's row 1.
  static constexpr const char* kGreeting = "\x1b[2;1Hhello over there";

  explicit FaultySshServer(SshFault fault);
  ~FaultySshServer();

  std::uint16_t Port() const;
  // "SHA256:..." of the key that it shows.
  std::string Fingerprint() const;
  // Whether a client has come as far as the fault.
  bool Reached() const;
  // What the clients have typed so far, kNone and kOneByteAPacket.
  std::string Typed() const;
  // "user password" of the last login, and the terminal's size as it was asked for last.
  std::string Login() const;
  std::string TerminalSize() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace quillet
