// Asks the resolver without being held by it: a lookup that hangs goes on in a helper thread of its own,
// which nobody waits for. One lookup per object.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/socket.h"

namespace quillet {

// What is asked; the system's resolver unless a test gives another.
using Resolver = std::function<Resolution(const std::string& host, const std::string& port)>;

class HostLookup {
 public:
  explicit HostLookup(Resolver resolver = ResolveHost);
  ~HostLookup();

  // The answer, or nothing when abandoned. Blocks; called once.
  std::optional<Resolution> Run(const std::string& host, const std::string& port);
  // Makes Run return at once, now or when it is called. Any thread.
  void Abandon();

 private:
  struct Shared;
  Resolver resolver_;
  std::shared_ptr<Shared> shared_;  // with the helper thread, which may outlive this object
};

}  // namespace quillet
