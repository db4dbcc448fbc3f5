// Where links stand in a line of text: web addresses, and articles of the BBS by "#code (board)". Pure; any
// thread.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/screen_snapshot.h"

namespace quillet {

enum class LinkKind : std::uint8_t {
  kWeb,
  kArticleCode,
  // Web addresses of which more is known than stands here; who knows the sites marks them.
  kPicture,
  kPicturePage,
  kShortened,  // perhaps a picture
  kVideo
};

struct LinkPlace {
  std::uint8_t first = 0;  // columns first to last-1
  std::uint8_t last = 0;
  LinkKind kind = LinkKind::kWeb;

  bool operator==(const LinkPlace&) const = default;
};

// Those of one line, in the order of their columns, not overlapping.
class LinkPlaces {
 public:
  const LinkPlace* begin() const { return places_.data(); }
  const LinkPlace* end() const { return places_.data() + count_; }
  LinkPlace* begin() { return places_.data(); }
  LinkPlace* end() { return places_.data() + count_; }
  bool IsEmpty() const { return count_ == 0; }
  void Add(LinkPlace place) {
    if (count_ < kMost) places_[count_++] = place;
  }

  bool operator==(const LinkPlaces&) const = default;

 private:
  // The shortest link is "http://a", and something stands between two of them.
  static constexpr std::size_t kMost = 9;
  std::array<LinkPlace, kMost> places_{};
  std::uint8_t count_ = 0;
};

// A web address ends where none can go on: at blanks, quotes, double-width characters; punctuation at its end
// belongs to the sentence around it, and so does a bracket that is not opened within it.
LinkPlaces FindLinkPlaces(const ScreenRow& text);

// What may be a board's name in a link.
bool IsBoardName(std::u16string_view name);

}  // namespace quillet
