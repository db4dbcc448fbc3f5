// A shell on the BBS's public guest account over SSH, on an 80x24 terminal. The host's key is shown to
// whoever asks for it and otherwise taken as it is. Made by the transport factory, with a port by the demo's
// callers and tests; threads as Transport says. The library behind it is known to the source of this header
// alone.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "core/transport/host_key.h"
#include "core/transport/host_lookup.h"
#include "core/transport/transport.h"
#include "platform/socket.h"

namespace quillet {

inline constexpr std::uint16_t kSshPort = 22;

// The library, ready for use as long as one of these lives; any number of them. Before the first transport.
class SshLibrary {
 public:
  SshLibrary();
  ~SshLibrary();
  SshLibrary(const SshLibrary&) = delete;
  SshLibrary& operator=(const SshLibrary&) = delete;
};

// How long a host may be silent before it is given up. Each is longer than what a working host needs on a bad
// line, and the user can end the wait at any time.
struct SshPatience {
  // For one address, from the first packet to agreed keys: about six times to the host and back, of which
  // each may be lost and sent again.
  std::chrono::milliseconds connect = std::chrono::seconds(20);
  // Servers look names up before they answer, and hold a refusal back on purpose.
  std::chrono::milliseconds logIn = std::chrono::seconds(30);
  // For the channel and for each request on it: the server has to start a program.
  std::chrono::milliseconds terminal = std::chrono::seconds(15);
};

struct SshOptions {
  std::uint16_t port = kSshPort;
  HostKeyQuestion hostKey{};
  Resolver resolver = ResolveHost;
  SshPatience patience{};
};

class SshTransport : public Transport {
 public:
  // `host` without brackets.
  explicit SshTransport(std::string host, SshOptions options = {});
  ~SshTransport() override;

  // Says on standard error why no connection or no login came to be.
  TransportEnd Run(TransportEvents& events) override;
  // What the system has not been given when Write is ended does not count as written.
  std::size_t Write(std::span<const std::uint8_t> bytes) override;
  void Stop() override;

 private:
  class Line;
  struct Answer;

  TransportEnd ConnectToAny(const Resolution& resolution, std::string& peer);
  TransportEnd ConnectTo(const ResolvedAddress& address);
  TransportEnd ShowHostKey();
  TransportEnd LogIn();
  TransportEnd OpenTerminal();
  TransportEnd ReceiveUntilEnd(TransportEvents& events);
  template <typename Call>
  Answer Ask(Call call, int again, std::chrono::milliseconds patience);
  bool Flush();

  const std::string host_;
  const SshOptions options_;
  HostLookup lookup_;
  StopSignal stop_;
  const std::unique_ptr<Line> line_;
};

}  // namespace quillet
