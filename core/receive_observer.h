// Whoever keeps what comes from the site, as it comes. Declared here, implemented where it is kept, set on
// the session. Called on the receive thread, which waits for the call to return: take a copy and write it
// elsewhere.
#pragma once

#include <cstdint>
#include <span>

#include "core/screen_snapshot.h"

namespace quillet {

class ReceiveObserver {
 public:
  ReceiveObserver() = default;
  ReceiveObserver(const ReceiveObserver&) = delete;
  ReceiveObserver& operator=(const ReceiveObserver&) = delete;
  virtual ~ReceiveObserver() = default;

  // `bytes` as they reach the screen, without what the transport keeps for itself; `screen` as they leave it.
  virtual void OnReceived(std::span<const std::uint8_t> bytes, const ScreenSnapshot& screen) = 0;
};

}  // namespace quillet
