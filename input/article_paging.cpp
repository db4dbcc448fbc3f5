#include "input/article_paging.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "core/key_sequence.h"

namespace quillet {
namespace {

// What the key does where it cannot move any farther.
enum class AtEdge { kStays, kLeaves, kLeavesUnlessKept };

enum class Reach { kLine, kPage, kWhole };

struct PagingKey {
  int virtualKey;      // 0: told by its character, or by the letter that Ctrl is held with
  char16_t character;  // 0: told by its virtual key
  char control;        // 0: neither
  int direction;       // positive: towards the end
  Reach reach;
  AtEdge atEdge;
};

constexpr std::array kPagingKeys = {
    PagingKey{kKeyUp, 0, 0, -1, Reach::kLine, AtEdge::kLeavesUnlessKept},
    PagingKey{0, u'k', 0, -1, Reach::kLine, AtEdge::kLeavesUnlessKept},
    PagingKey{kKeyDown, 0, 0, 1, Reach::kLine, AtEdge::kLeavesUnlessKept},
    PagingKey{kKeyEnter, 0, 0, 1, Reach::kLine, AtEdge::kLeavesUnlessKept},
    PagingKey{0, u'j', 0, 1, Reach::kLine, AtEdge::kLeavesUnlessKept},
    PagingKey{kKeyPageUp, 0, 0, -1, Reach::kPage, AtEdge::kStays},
    PagingKey{0, 0, 'B', -1, Reach::kPage, AtEdge::kStays},
    PagingKey{kKeyBackspace, 0, 0, -1, Reach::kPage, AtEdge::kLeaves},
    PagingKey{kKeyPageDown, 0, 0, 1, Reach::kPage, AtEdge::kStays},
    PagingKey{kKeyRight, 0, 0, 1, Reach::kPage, AtEdge::kLeaves},
    PagingKey{0, u' ', 0, 1, Reach::kPage, AtEdge::kLeavesUnlessKept},
    PagingKey{kKeyHome, 0, 0, -1, Reach::kWhole, AtEdge::kStays},
    PagingKey{0, u'0', 0, -1, Reach::kWhole, AtEdge::kStays},
    PagingKey{0, u'N', 0, -1, Reach::kWhole, AtEdge::kStays},
    PagingKey{kKeyEnd, 0, 0, 1, Reach::kWhole, AtEdge::kStays},
    PagingKey{0, u'$', 0, 1, Reach::kWhole, AtEdge::kStays},
    PagingKey{0, u'G', 0, 1, Reach::kWhole, AtEdge::kStays},
};

constexpr std::int64_t kFarthest = std::numeric_limits<int>::max();

std::int64_t LinesOf(Reach reach, std::int64_t top, int shown) {
  if (reach == Reach::kWhole) return top;
  return reach == Reach::kPage ? PageStep(shown) : 1;
}

bool Means(const PagingKey& key, const KeyPress& press) {
  if (press.control) return key.control != 0 && key.control == press.virtualKey && !press.shift;
  if (key.virtualKey != 0) return key.virtualKey == press.virtualKey;
  return key.character != 0 && press.text.size() == 1 && press.text.front() == key.character;
}

const PagingKey* Find(const KeyPress& press) {
  if (press.alt) return nullptr;
  const auto* const found = std::find_if(kPagingKeys.begin(), kPagingKeys.end(),
                                         [&](const PagingKey& key) { return Means(key, press); });
  return found == kPagingKeys.end() ? nullptr : found;
}

}  // namespace

PagingAction DecidePaging(const KeyPress& press, bool repeated, const PagingState& state) {
  using Kind = PagingAction::Kind;
  const PagingKey* const key = Find(press);
  if (!key) return {};
  const std::int64_t last = LastTop(state.count, state.shown);
  const bool forward = key->direction > 0;
  if (key->reach == Reach::kWhole && forward) return {Kind::kToEnd, static_cast<int>(last)};
  const std::int64_t known = state.complete ? last : std::max<std::int64_t>(last, state.top);
  const std::int64_t top = std::clamp<std::int64_t>(state.top, 0, known);
  const std::int64_t lines = key->direction * LinesOf(key->reach, top, state.shown);
  const std::int64_t most = forward && !state.complete ? top + lines : known;
  const std::int64_t wanted = std::clamp<std::int64_t>(top + lines, 0, most);
  if (wanted != top) return {Kind::kScrollTo, static_cast<int>(std::min(wanted, kFarthest))};
  const bool kept = key->atEdge == AtEdge::kStays ||
                    (key->atEdge == AtEdge::kLeavesUnlessKept && state.keepArticle) || repeated;
  const Kind kind = kept ? Kind::kNothing : forward ? Kind::kNext : Kind::kPrevious;
  return {kind, static_cast<int>(top)};
}

}  // namespace quillet
