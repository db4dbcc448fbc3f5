// The keys that hosts prove themselves with, for as long as the program runs: gives each attempt the question
// that its transport asks, keeps the first key of a host once it has been reached, and takes a changed one
// when the user says so. The document owns it. User-interface thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/transport/host_key.h"
#include "settings/files/known_hosts.h"

namespace quillet {

class HostKeys {
 public:
  // `isWanted` is asked at each attempt. `files` outlives the object and is prepared.
  HostKeys(DataFiles& files, std::function<bool()> isWanted);

  // For an attempt that begins now; what was asked for the one before counts no more. Empty where nobody
  // wants it.
  HostKeyQuestion QuestionFor(const std::string& host);
  // The host has been reached, by whichever way: the first key that it has shown is kept.
  void OnReached();
  // The key that the last attempt was ended for is the host's from now on. False when there was none, or when
  // it cannot be kept.
  bool AcceptChanged();

 private:
  // With the question, which the receive thread asks.
  struct Shown;

  DataFiles& files_;
  const std::function<bool()> isWanted_;
  std::string host_;
  std::shared_ptr<Shown> shown_;
};

}  // namespace quillet
