#include "core/site_address.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

struct AddressCase {
  std::string_view text;
  TransportKind kind;
  std::string_view host;
  std::string_view port;
};

TEST(SiteAddressTest, SchemeHostAndPortAreTakenApart) {
  constexpr auto kTelnet = TransportKind::kTelnet;
  constexpr auto kSsh = TransportKind::kSsh;
  constexpr auto kWebSocket = TransportKind::kWebSocket;
  const AddressCase cases[] = {
      {"Telnet://Host:3000 ", kTelnet, "host", "3000"},
      {"wss://ws.example/bbs", kWebSocket, "ws.example/bbs", "23"},
      {"wss://ws.example:443/bbs", kWebSocket, "ws.example", "443/bbs"},
      {"a:1:2", kTelnet, "a:1", "2"},
      {"host : 24 ", kTelnet, "host", "24"},
      {"host:", kTelnet, "host", ""},
      {":23", kTelnet, "", "23"},
      {"telnet://", kTelnet, "", "23"},
      {"ssh://[fe80::1]:2222", kSsh, "[fe80::1]", "2222"},
      {"[::1", kTelnet, "[::1", "23"},
      {"wss://[::1]:8080/bbs", kWebSocket, "[::1]", "8080/bbs"},
      {"telnet:/host", kTelnet, "telnet", "/host"},
  };
  for (const AddressCase& one : cases) {
    const ParsedAddress parsed = ParseSiteAddress(one.text);
    EXPECT_EQ(parsed.error, AddressError::kNone) << one.text;
    EXPECT_EQ(parsed.address.kind, one.kind) << one.text;
    EXPECT_EQ(parsed.address.host, one.host) << one.text;
    EXPECT_EQ(parsed.address.port, one.port) << one.text;
  }
}

TEST(SiteAddressTest, OtherSchemesAreRefused) {
  for (const std::string_view text :
       {"http://bbs.example", "://bbs.example", "bbs.example://", "xssh://a", "ws://a", "a b://telnet://c"})
    EXPECT_EQ(ParseSiteAddress(text).error, AddressError::kUnknownScheme) << text;
}

TEST(SiteAddressTest, LengthIsBoundedAfterTrimming) {
  const std::string longest(kMaxAddressLength, 'a');
  EXPECT_EQ(ParseSiteAddress("  " + longest + "  ").address.host, longest);
  EXPECT_EQ(ParseSiteAddress(longest + "a").error, AddressError::kTooLong);
}

TEST(SiteAddressTest, OnlyAWholePairOfBracketsIsTakenOff) {
  EXPECT_EQ(HostForLookup("[::1]"), "::1");
  EXPECT_EQ(HostForLookup("[]"), "");
  for (const std::string_view host : {"::1", "[::1", "::1]", "[", "", "bbs.example"})
    EXPECT_EQ(HostForLookup(host), host);
}

}  // namespace
}  // namespace quillet
