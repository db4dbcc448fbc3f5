// The key by which a host proves who it is, and the question whether to go on with a host that has it. Asked
// by the transports that have such keys, on the receive thread, before anything is said of the user.
#pragma once

#include <functional>
#include <string>

namespace quillet {

struct HostKey {
  std::string type;         // as the protocol names it, "ssh-ed25519"
  std::string base64;       // the whole public key
  std::string fingerprint;  // its hash, as people compare it: "SHA256:" and 43 characters
};

enum class HostKeyAnswer { kGoOn, kChanged };

// Must answer at once: whoever wants to ask a person ends the attempt and connects again. Empty: every key
// will do.
using HostKeyQuestion = std::function<HostKeyAnswer(const HostKey& key)>;

}  // namespace quillet
