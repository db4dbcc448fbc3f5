// The keys that hosts have shown, in "known_hosts.txt": the first of each host stays until the user takes
// another one. A line holds the host's name, the key's type and its fingerprint; lines that are none of these
// stay as they are. User-interface thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/transport/host_key.h"
#include "settings/files/data_files.h"

namespace quillet {

inline constexpr std::string_view kKnownHostsFile = "known_hosts.txt";

class KnownHosts {
 public:
  // `files` outlives the object and is prepared.
  explicit KnownHosts(DataFiles& files);

  // Nothing for a host that has shown none. Names are told apart as they are written, without regard to
  // letter case.
  std::optional<HostKey> KeyOf(std::string_view host) const;

  // Keeps the first key of a host. False when another one is kept by now, which stays, or when the key is not
  // on disk.
  bool Keep(std::string_view host, const HostKey& key);
  // Keeps this key instead of whichever was. False when it is not on disk.
  bool Replace(std::string_view host, const HostKey& key);

 private:
  std::optional<std::size_t> LineOf(std::u16string_view host) const;
  bool Change(std::string_view host, const HostKey& key, bool replaces);

  DataFiles& files_;
  std::vector<std::u16string> lines_;
};

}  // namespace quillet
