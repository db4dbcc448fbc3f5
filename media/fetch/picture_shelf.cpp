#include "media/fetch/picture_shelf.h"

#include <algorithm>
#include <utility>

namespace quillet {
namespace {

// Of links that nobody lists.
constexpr qsizetype kMostForgotten = 20'000;

bool IsUnderWay(const ShelvedPicture& picture) {
  return picture.file == FileState::kSeeking || picture.file == FileState::kFetching ||
         !picture.decoding.isEmpty();
}

// What is left is what is known of it.
qint64 GiveUp(ShelvedPicture& picture) {
  const qint64 held = picture.Held();
  picture.images.clear();
  picture.partial = {};
  picture.bytes.clear();
  if (picture.file == FileState::kHere && !picture.isOnDisk) picture.file = FileState::kUnknown;
  return held;
}

}  // namespace

const QImage* ShelvedPicture::ImageOf(QSize size) const {
  const auto found = std::find_if(images.begin(), images.end(),
                                  [&](const DecodedImage& decoded) { return decoded.size == size; });
  return found == images.end() ? nullptr : &found->image;
}

QImage ShelvedPicture::Nearest(QSize size) const {
  const DecodedImage* nearest = nullptr;
  for (const DecodedImage& decoded : images) {
    const bool isEnough = decoded.size.width() >= size.width();
    const bool isBetter = nearest == nullptr || (isEnough ? nearest->size.width() < size.width() ||
                                                                decoded.size.width() < nearest->size.width()
                                                          : decoded.size.width() > nearest->size.width());
    if (isBetter) nearest = &decoded;
  }
  return nearest == nullptr ? QImage() : nearest->image;
}

qint64 ShelvedPicture::Held() const {
  qint64 held = bytes.size() + partial.sizeInBytes();
  for (const DecodedImage& decoded : images)
    held += decoded.image.sizeInBytes();
  return held;
}

void ShelvedPicture::DropOthers() {
  std::erase_if(images, [&](const DecodedImage& decoded) {
    return std::find(wanted.begin(), wanted.end(), decoded.size) == wanted.end();
  });
}

ShelvedPicture* PictureShelf::Find(const QString& link) {
  const auto found = pictures_.find(link);
  return found == pictures_.end() ? nullptr : &*found;
}

const ShelvedPicture* PictureShelf::Find(const QString& link) const {
  const auto found = pictures_.constFind(link);
  return found == pictures_.cend() ? nullptr : &*found;
}

void PictureShelf::Trim(qint64 mostBytes, std::uint64_t turn, const std::vector<QString>& order) {
  qint64 held = 0;
  std::vector<std::pair<std::uint64_t, ShelvedPicture*>> unlisted;
  for (ShelvedPicture& picture : pictures_) {
    const qint64 own = picture.Held();
    held += own;
    if (own > 0 && picture.listedAt != turn) unlisted.emplace_back(picture.listedAt, &picture);
  }
  if (held > mostBytes) {
    std::sort(unlisted.begin(), unlisted.end());
    for (auto picture = unlisted.begin(); held > mostBytes && picture != unlisted.end(); ++picture)
      held -= GiveUp(*picture->second);
    for (auto link = order.rbegin(); held > mostBytes && link != order.rend(); ++link)
      if (ShelvedPicture* const picture = Find(*link); picture != nullptr && !IsUnderWay(*picture))
        held -= GiveUp(*picture);
  }
  if (pictures_.size() > kMostForgotten + static_cast<qsizetype>(order.size())) ForgetOldest(turn);
}

void PictureShelf::ForgetOldest(std::uint64_t turn) {
  std::vector<std::uint64_t> turns;
  for (const ShelvedPicture& picture : std::as_const(pictures_))
    if (picture.listedAt != turn) turns.push_back(picture.listedAt);
  if (turns.empty()) return;
  const auto middle = turns.begin() + static_cast<std::ptrdiff_t>(turns.size() / 2);
  std::nth_element(turns.begin(), middle, turns.end());
  const std::uint64_t before = *middle;
  pictures_.removeIf([&](const auto& entry) {
    return entry.value().listedAt <= before && entry.value().listedAt != turn && !IsUnderWay(entry.value());
  });
}

}  // namespace quillet
