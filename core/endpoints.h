// The addresses of everything outside: the BBS's hosts, its server network, its web hosts. Read once at
// start-up from "endpoints.ini", over which a file of the same name in the user's data folder is laid.
// A plain value; safe to read from any thread once made.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace quillet {

struct Endpoints {
  // Lower case; empty while no file names them, and an empty name must match no host.
  std::string mainHost;             // "bbs/main_host": the BBS's main host name
  std::string secondaryHost;        // "bbs/secondary_host": its secondary host name
  std::string webSocketHost;        // "bbs/websocket_host": its WebSocket gateway
  std::uint32_t serverNetwork = 0;  // "bbs/server_network": base address of its server network, first group
                                    // most significant; 0 when there is none
  // Every value of the file as "section/key", those above included. Names are lower case, values as written.
  std::map<std::string, std::string, std::less<>> values;

  // The value of "section/key", or an empty text.
  std::string_view Value(std::string_view name) const;
  // The same as a host name in lower case; empty also where it is no plain ASCII, which no link could hold.
  std::u16string HostName(std::string_view name) const;
};

// Lays the file over `endpoints`. Returns false when it cannot be read; nothing is changed then. Lines that
// are no "[section]" and no "key=value" are skipped, and so are keys that stand in no section or hold control
// characters. At most 64 kB are read.
bool LoadEndpoints(const std::filesystem::path& file, Endpoints& endpoints);

// Dotted text (four decimal groups of at most three digits) to a number, first group most significant; 0 for
// anything else.
std::uint32_t ParseDottedAddress(std::string_view text);

}  // namespace quillet
