// Plain TCP to a BBS, over IPv4 or IPv6. Raw: no telnet option is answered or asked for, and every byte goes
// to the screen as it came. Made by the transport factory; threads as Transport says.
#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "core/transport/host_lookup.h"
#include "core/transport/transport.h"
#include "platform/socket.h"

namespace quillet {

class TelnetTransport : public Transport {
 public:
  // `host` without brackets.
  TelnetTransport(std::string host, std::string port, Resolver resolver = ResolveHost);

  TransportEnd Run(TransportEvents& events) override;
  std::size_t Write(std::span<const std::uint8_t> bytes) override;
  void Stop() override;
  bool OpensWithDeleteKeys() const override { return true; }

 private:
  // Tries the addresses in order; on success the connected one is in `peer`.
  TransportEnd ConnectToAny(const Resolution& resolution, TransportEvents& events, std::string& peer);
  TransportEnd ReceiveUntilEnd(TransportEvents& events);
  std::optional<std::string> WriteFault();

  const std::string host_;
  const std::string port_;
  HostLookup lookup_;
  StopSignal stop_;
  Socket socket_;
  std::mutex faultLock_;
  std::optional<std::string> writeFault_;  // guarded by faultLock_
};

}  // namespace quillet
