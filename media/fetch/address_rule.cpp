#include "media/fetch/address_rule.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

namespace quillet {
namespace {

struct Network4 {
  quint32 base;
  int bits;
};

constexpr std::array kNobodys4 = {
    Network4{0x00000000, 8},   // this network
    Network4{0x0A000000, 8},   // private
    Network4{0x64400000, 10},  // carrier-grade NAT
    Network4{0x7F000000, 8},   // loopback
    Network4{0xA9FE0000, 16},  // link-local
    Network4{0xAC100000, 12},  // private
    Network4{0xC0000000, 24},  // protocol assignments
    Network4{0xC0000200, 24},  // documentation
    Network4{0xC0586300, 24},  // relays of 6to4
    Network4{0xC0A80000, 16},  // private
    Network4{0xC6120000, 15},  // benchmarks
    Network4{0xC6336400, 24},  // documentation
    Network4{0xCB007100, 24},  // documentation
    Network4{0xE0000000, 3},   // multicast, reserved, broadcast
};

bool IsPublic4(quint32 address) {
  return std::none_of(kNobodys4.begin(), kNobodys4.end(), [&](const Network4& network) {
    return (address ^ network.base) >> (32 - network.bits) == 0;
  });
}

using Bytes6 = std::array<quint8, 16>;

bool BeginsWith(const Bytes6& address, std::initializer_list<quint8> prefix) {
  return std::equal(prefix.begin(), prefix.end(), address.begin());
}

quint32 Embedded4(const Bytes6& address, std::size_t at) {
  return quint32{address[at]} << 24 | quint32{address[at + 1]} << 16 | quint32{address[at + 2]} << 8 |
         quint32{address[at + 3]};
}

bool IsPublic6(const Bytes6& address) {
  constexpr std::size_t kLast4 = 12;
  if (BeginsWith(address, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF}))  // IPv4, mapped
    return IsPublic4(Embedded4(address, kLast4));
  if (BeginsWith(address, {0, 0x64, 0xFF, 0x9B, 0, 0, 0, 0, 0, 0, 0, 0}))  // NAT64
    return IsPublic4(Embedded4(address, kLast4));
  if (BeginsWith(address, {0x20, 0x02})) return IsPublic4(Embedded4(address, 2));  // 6to4
  if ((address[0] & 0xE0) != 0x20) return false;  // only 2000::/3 is given out
  const bool isProtocols = BeginsWith(address, {0x20, 0x01}) && address[2] < 0x02;  // Teredo among them
  const bool isDocumentation = BeginsWith(address, {0x20, 0x01, 0x0D, 0xB8}) ||
                               (BeginsWith(address, {0x3F, 0xFF}) && address[2] < 0x10);
  return !isProtocols && !isDocumentation;
}

}  // namespace

bool IsPublicAddress(const QHostAddress& address) {
  if (address.protocol() == QAbstractSocket::IPv4Protocol) return IsPublic4(address.toIPv4Address());
  if (address.protocol() != QAbstractSocket::IPv6Protocol) return false;
  const Q_IPV6ADDR given = address.toIPv6Address();
  Bytes6 bytes;
  std::memcpy(bytes.data(), &given, bytes.size());
  return IsPublic6(bytes);
}

}  // namespace quillet
