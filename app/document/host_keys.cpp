#include "app/document/host_keys.h"

#include <mutex>
#include <utility>

namespace quillet {

struct HostKeys::Shown {
  std::mutex lock;
  std::optional<HostKey> key;  // guarded by lock
  bool isChanged = false;      // guarded by lock

  HostKeyAnswer Note(const HostKey& shown, const std::optional<HostKey>& known) {
    const std::lock_guard guard(lock);
    key = shown;
    isChanged = known && *known != shown;
    return isChanged ? HostKeyAnswer::kChanged : HostKeyAnswer::kGoOn;
  }
};

HostKeys::HostKeys(DataFiles& files, std::function<bool()> isWanted)
    : files_(files), isWanted_(std::move(isWanted)) {}

HostKeyQuestion HostKeys::QuestionFor(const std::string& host) {
  shown_.reset();
  host_ = host;
  if (host.empty() || !isWanted_()) return {};
  shown_ = std::make_shared<Shown>();
  // What is known is read now: another window of the program may have learned of it.
  return [shown = shown_, known = KnownHosts(files_).KeyOf(host)](const HostKey& key) {
    return shown->Note(key, known);
  };
}

void HostKeys::OnReached() {
  if (!shown_) return;
  const std::lock_guard guard(shown_->lock);
  if (shown_->key && !shown_->isChanged) KnownHosts(files_).Keep(host_, *shown_->key);
}

bool HostKeys::AcceptChanged() {
  if (!shown_) return false;
  const std::lock_guard guard(shown_->lock);
  return shown_->key && shown_->isChanged && KnownHosts(files_).Replace(host_, *shown_->key);
}

}  // namespace quillet
