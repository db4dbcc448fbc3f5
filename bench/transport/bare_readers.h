// Reading with nothing around it, as each way's own library shows it in its examples: what the transports are
// measured against.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace quillet {

// Gets what one read brings; false ends the reading.
using TakeBytes = std::function<bool(std::span<const std::uint8_t>)>;

// Each connects to loopback, sends `first`, and reads until `take` has enough or the peer is gone. They end
// the program when they cannot connect.
void ReadBareTelnet(std::uint16_t port, char first, const TakeBytes& take);
void ReadBareSsh(std::uint16_t port, char first, const TakeBytes& take);
// `authority`: PEM.
void ReadBareWebSocket(std::uint16_t port, const std::string& authority, char first, const TakeBytes& take);

}  // namespace quillet
