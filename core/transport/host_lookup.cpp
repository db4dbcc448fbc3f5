#include "core/transport/host_lookup.h"

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace quillet {

struct HostLookup::Shared {
  std::mutex lock;
  std::condition_variable changed;
  std::optional<Resolution> answer;
  bool abandoned = false;
};

HostLookup::HostLookup(Resolver resolver)
    : resolver_(std::move(resolver)), shared_(std::make_shared<Shared>()) {}

HostLookup::~HostLookup() = default;

std::optional<Resolution> HostLookup::Run(const std::string& host, const std::string& port) {
  try {
    std::thread([shared = shared_, resolver = resolver_, host, port] {
      Resolution answer = resolver(host, port);
      std::lock_guard lock(shared->lock);
      shared->answer = std::move(answer);
      shared->changed.notify_all();
    }).detach();
  } catch (const std::system_error& error) {
    Resolution none;
    none.error = error.what();
    return none;
  }
  std::unique_lock lock(shared_->lock);
  shared_->changed.wait(lock, [this] { return shared_->abandoned || shared_->answer; });
  if (shared_->abandoned) return std::nullopt;
  return std::move(shared_->answer);
}

void HostLookup::Abandon() {
  std::lock_guard lock(shared_->lock);
  shared_->abandoned = true;
  shared_->changed.notify_all();
}

}  // namespace quillet
