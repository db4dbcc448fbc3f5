// A transport that does what a test says: connects or keeps the caller waiting, delivers bytes, takes or
// stalls what is written, ends when told.
#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

#include "core/transport.h"

namespace quillet {

class Script {
 public:
  void NeverConnect() {
    Change([&] { connects_ = false; });
  }
  void Deliver(std::string_view bytes) {
    Change([&] { toDeliver_ += bytes; });
  }
  void StallWrites() {
    Change([&] { stalled_ = true; });
  }
  void End(EndReason reason) {
    Change([&] { end_ = reason; });
  }
  std::string Written() const {
    const std::lock_guard lock(lock_);
    return written_;
  }

 private:
  friend class ScriptedTransport;
  template <typename F>
  void Change(F change) {
    const std::lock_guard lock(lock_);
    change();
    changed_.notify_all();
  }

  mutable std::mutex lock_;
  std::condition_variable changed_;
  bool connects_ = true;
  bool stalled_ = false;
  bool stopped_ = false;
  EndReason end_ = EndReason::kNone;
  std::string toDeliver_;
  std::string written_;
};

class ScriptedTransport : public Transport {
 public:
  explicit ScriptedTransport(std::shared_ptr<Script> script) : script_(std::move(script)) {
    script_->stopped_ = false;
  }

  TransportEnd Run(TransportEvents& events) override {
    std::unique_lock lock(script_->lock_);
    script_->changed_.wait(lock, [&] { return script_->connects_ || Ended(); });
    if (Ended()) return {script_->end_, {}};
    lock.unlock();
    events.OnConnected({});
    lock.lock();
    while (true) {
      script_->changed_.wait(lock, [&] { return !script_->toDeliver_.empty() || Ended(); });
      const std::string bytes = std::exchange(script_->toDeliver_, {});
      if (bytes.empty()) return {script_->end_, {}};
      lock.unlock();
      events.OnReceived({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
      lock.lock();
    }
  }

  std::size_t Write(std::span<const std::uint8_t> bytes) override {
    std::unique_lock lock(script_->lock_);
    script_->changed_.wait(lock, [&] { return !script_->stalled_ || Ended(); });
    if (script_->stalled_) return 0;
    script_->written_.append(bytes.begin(), bytes.end());
    return bytes.size();
  }

  void Stop() override {
    script_->Change([&] { script_->stopped_ = true; });
  }

 private:
  bool Ended() const { return script_->stopped_ || script_->end_ != EndReason::kNone; }

  std::shared_ptr<Script> script_;
};

}  // namespace quillet
