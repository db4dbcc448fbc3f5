#include "media/fetch/picture_store.h"

#include <utility>

#include "media/fetch/store_work.h"

namespace quillet {

PictureStore::PictureStore(PictureStoreOptions options, QObject* parent)
    : QObject(parent), work_(std::make_unique<StoreWork>(std::move(options))) {
  connect(work_.get(), &StoreWork::Changed, this, &PictureStore::Changed);
  connect(work_.get(), &StoreWork::DiskCacheCounted, this, &PictureStore::DiskCacheCounted);
}

PictureStore::~PictureStore() = default;

void PictureStore::SetBehavior(const FetchBehavior& behavior) {
  work_->SetBehavior(behavior);
}

void PictureStore::SetHosts(const MediaHosts& hosts) {
  work_->SetHosts(hosts);
}

void PictureStore::SetLoopbackHosts(const std::vector<LoopbackHost>& hosts) {
  work_->SetLoopbackHosts(hosts);
}

void PictureStore::SetWishes(PictureUser user, std::vector<PictureWish> wishes) {
  work_->SetWishes(user, std::move(wishes));
}

PictureNow PictureStore::Look(const QString& link, const PictureBounds& bounds) const {
  return work_->Look(link, bounds);
}

void PictureStore::TryAgain(const QString& link) {
  work_->TryAgain(link);
}

PictureFile PictureStore::FileOf(const QString& link) const {
  return work_->FileOf(link);
}

void PictureStore::EmptyDiskCache() {
  work_->EmptyDiskCache();
}

qint64 PictureStore::DiskCacheSize() const {
  return work_->DiskCacheSize();
}

}  // namespace quillet
