#include "media/fetch/fetch_engine.h"

#include <utility>

namespace quillet {

FetchEngine::~FetchEngine() = default;

void FetchEngine::SetLoopbackHosts(const std::vector<LoopbackHost>& hosts) {
  loopbackHosts_ = hosts;
  if (web_) web_->SetLoopbackHosts(hosts);
}

void FetchEngine::SetStrategy(FetchStrategy strategy) {
  strategy_ = strategy;
  if (web_) web_->SetStrategy(strategy);
}

WebClient& FetchEngine::Web() {
  if (!web_) {
    web_ = std::make_unique<WebClient>(Reach::kPublicHosts);
    web_->SetLoopbackHosts(loopbackHosts_);
    web_->SetStrategy(strategy_);
  }
  return *web_;
}

void FetchEngine::Start(quint64 id, const ChaseOrder& order) {
  auto chase = std::make_unique<PictureChase>(Web(), readers_, hosts_, limits_, order);
  connect(chase.get(), &PictureChase::Came, this, [this, id](const ChaseNews& news) { emit Came(id, news); });
  connect(chase.get(), &PictureChase::Found, this,
          [this, id](const ChaseFind& find) { emit Found(id, find); });
  connect(chase.get(), &PictureChase::Told, this,
          [this, id](const VideoFacts& facts) { emit Told(id, facts); });
  connect(chase.get(), &PictureChase::Over, this, [this, id] {
    Cancel(id);
    emit Over(id);
  });
  chases_[id] = std::move(chase);
}

void FetchEngine::Cancel(quint64 id) {
  const auto found = chases_.find(id);
  if (found == chases_.end()) return;
  // It may be the one that calls.
  found->second->disconnect(this);
  found->second.release()->deleteLater();
  chases_.erase(found);
}

}  // namespace quillet
