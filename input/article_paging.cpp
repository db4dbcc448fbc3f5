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

constexpr int kWholeWay = std::numeric_limits<int>::max();

struct PagingKey {
  int virtualKey;      // 0: told by its character
  char16_t character;  // 0: told by its virtual key
  int lines;           // positive: towards the end
  AtEdge atEdge;
};

constexpr std::array kPagingKeys = {
    PagingKey{kKeyUp, 0, -1, AtEdge::kLeavesUnlessKept},
    PagingKey{0, u'k', -1, AtEdge::kLeavesUnlessKept},
    PagingKey{kKeyDown, 0, 1, AtEdge::kLeavesUnlessKept},
    PagingKey{kKeyEnter, 0, 1, AtEdge::kLeavesUnlessKept},
    PagingKey{0, u'j', 1, AtEdge::kLeavesUnlessKept},
    PagingKey{kKeyPageUp, 0, -kPageStep, AtEdge::kStays},
    PagingKey{kKeyBackspace, 0, -kPageStep, AtEdge::kLeaves},
    PagingKey{kKeyPageDown, 0, kPageStep, AtEdge::kStays},
    PagingKey{kKeyRight, 0, kPageStep, AtEdge::kLeaves},
    PagingKey{0, u' ', kPageStep, AtEdge::kLeavesUnlessKept},
    PagingKey{kKeyHome, 0, -kWholeWay, AtEdge::kStays},
    PagingKey{0, u'0', -kWholeWay, AtEdge::kStays},
    PagingKey{kKeyEnd, 0, kWholeWay, AtEdge::kStays},
    PagingKey{0, u'$', kWholeWay, AtEdge::kStays},
    PagingKey{0, u'G', kWholeWay, AtEdge::kStays},
};

const PagingKey* Find(const KeyPress& press) {
  if (press.control || press.alt) return nullptr;
  const auto* const found = std::find_if(kPagingKeys.begin(), kPagingKeys.end(), [&](const PagingKey& key) {
    if (key.virtualKey != 0) return key.virtualKey == press.virtualKey;
    return press.text.size() == 1 && press.text.front() == key.character;
  });
  return found == kPagingKeys.end() ? nullptr : found;
}

}  // namespace

PagingAction DecidePaging(const KeyPress& press, bool repeated, const PagingState& state) {
  using Kind = PagingAction::Kind;
  const PagingKey* const key = Find(press);
  if (!key) return {};
  const std::int64_t last = LastTop(state.count);
  if (key->lines == kWholeWay) return {Kind::kToEnd, static_cast<int>(last)};
  const bool forward = key->lines > 0;
  const std::int64_t known = state.complete ? last : std::max<std::int64_t>(last, state.top);
  const std::int64_t top = std::clamp<std::int64_t>(state.top, 0, known);
  const std::int64_t most = forward && !state.complete ? top + key->lines : known;
  const std::int64_t wanted = std::clamp<std::int64_t>(top + key->lines, 0, most);
  if (wanted != top) return {Kind::kScrollTo, static_cast<int>(std::min<std::int64_t>(wanted, kWholeWay))};
  const bool kept = key->atEdge == AtEdge::kStays ||
                    (key->atEdge == AtEdge::kLeavesUnlessKept && state.keepArticle) || repeated;
  const Kind kind = kept ? Kind::kNothing : forward ? Kind::kNext : Kind::kPrevious;
  return {kind, static_cast<int>(top)};
}

}  // namespace quillet
