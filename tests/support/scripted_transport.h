// A transport that does what a test writes down. The script outlives the transport, which the session owns.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "core/transport/transport.h"
#include "platform/socket.h"

namespace quillet {

struct TransportScript {
  using Run = std::function<TransportEnd(TransportEvents& events, const StopSignal& stop)>;
  using Write = std::function<std::size_t(std::span<const std::uint8_t> bytes, const StopSignal& stop)>;

  Run run = [](TransportEvents& events, const StopSignal& stop) {
    events.OnConnected({});
    while (!stop.WaitFor(1000)) {
    }
    return TransportEnd{EndReason::kClosedByUser, {}};
  };
  Write write = [](std::span<const std::uint8_t> bytes, const StopSignal&) { return bytes.size(); };

  std::string Written() const {
    std::lock_guard guard(lock);
    return written;
  }

  mutable std::mutex lock;
  std::string written;  // guarded by lock
};

class ScriptedTransport : public Transport {
 public:
  explicit ScriptedTransport(std::shared_ptr<TransportScript> script) : script_(std::move(script)) {}

  TransportEnd Run(TransportEvents& events) override { return script_->run(events, stop_); }
  std::size_t Write(std::span<const std::uint8_t> bytes) override {
    const std::size_t count = script_->write(bytes, stop_);
    std::lock_guard guard(script_->lock);
    script_->written.append(reinterpret_cast<const char*>(bytes.data()), count);
    return count;
  }
  void Stop() override { stop_.Set(); }

 private:
  std::shared_ptr<TransportScript> script_;
  StopSignal stop_;
};

}  // namespace quillet
