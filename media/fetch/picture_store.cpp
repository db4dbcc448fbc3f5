#include "media/fetch/picture_store.h"

#include <array>
#include <utility>

namespace quillet {

class PictureStore::Work {
 public:
  explicit Work(PictureStoreOptions givenOptions) : options(std::move(givenOptions)) {}

  PictureStoreOptions options;
  FetchBehavior behavior;
  std::array<std::vector<PictureWish>, kPictureUsers> wishes;
};

PictureStore::PictureStore(PictureStoreOptions options, QObject* parent)
    : QObject(parent), work_(std::make_unique<Work>(std::move(options))) {}

PictureStore::~PictureStore() = default;

void PictureStore::SetBehavior(const FetchBehavior& behavior) {
  work_->behavior = behavior;
}

void PictureStore::SetHosts(const MediaHosts& hosts) {
  work_->options.hosts = hosts;
}

void PictureStore::SetLoopbackHosts(std::vector<LoopbackHost> hosts) {
  work_->options.loopbackHosts = std::move(hosts);
}

void PictureStore::SetWishes(PictureUser user, std::vector<PictureWish> wishes) {
  work_->wishes.at(static_cast<std::size_t>(user)) = std::move(wishes);
}

PictureNow PictureStore::Look(const QString& /*link*/, QSize /*bounds*/) const {
  return {};
}

void PictureStore::TryAgain(const QString& /*link*/) {}

PictureFile PictureStore::FileOf(const QString& /*link*/) const {
  return {};
}

void PictureStore::EmptyDiskCache() {}

qint64 PictureStore::DiskCacheSize() const {
  return 0;
}

}  // namespace quillet
