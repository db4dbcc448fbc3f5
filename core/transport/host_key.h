// The key by which a host proves who it is, and the question whether to go on with a host that has it. Asked
// by the transports that have such keys, on the receive thread, before anything is said of the user.
#pragma once

#include <functional>
#include <string>

namespace quillet {

struct HostKey {
  std::string type;         // as the protocol names it, "ssh-ed25519"
  std::string fingerprint;  // hash of the whole public key, as people compare it: "SHA256:" and 43 characters

  bool operator==(const HostKey&) const = default;
};

enum class HostKeyAnswer { kGoOn, kChanged };

// Must answer at once: whoever wants to ask a person ends the attempt and connects again. Empty: every key
// will do.
using HostKeyQuestion = std::function<HostKeyAnswer(const HostKey& key)>;

}  // namespace quillet
