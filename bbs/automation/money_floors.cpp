#include "bbs/automation/money_floors.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "bbs/screen_fields.h"
#include "bbs/user_id.h"
#include "core/ascii.h"

namespace quillet {
namespace {

FloorKind KindOf(const PushLine& push) {
  switch (push.kind) {
    case PushKind::kGood:
      return FloorKind::kPush;
    case PushKind::kBad:
      return FloorKind::kBoo;
    case PushKind::kNote:
      break;
  }
  return FloorKind::kArrow;
}

bool IsWellFormedId(std::u16string_view id) {
  return id.size() >= kShortestUserId && id.size() <= kLongestUserId && IsAsciiLetter(id.front()) &&
         std::all_of(id.begin(), id.end(), [](char16_t unit) { return IsAsciiLetterOrDigit(unit); });
}

std::u16string Lower(std::u16string_view text) {
  std::u16string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), [](char16_t unit) { return AsciiLower(unit); });
  return lower;
}

bool IsKindChosen(FloorKind kind, const MoneyChoices& choices) {
  switch (kind) {
    case FloorKind::kPush:
      return choices.push;
    case FloorKind::kBoo:
      return choices.boo;
    case FloorKind::kArrow:
      break;
  }
  return choices.arrow;
}

bool IsFloorChosen(int floor, const MoneyChoices& choices) {
  return floor >= choices.fromFloor && floor <= choices.toFloor &&
         (floor - choices.fromFloor) % std::max(1, choices.floorInterval) == 0;
}

bool HasWords(const PushFloor& floor, const MoneyChoices& choices) {
  if (choices.contentInclude.empty()) return true;
  if (choices.matchCase) return floor.words.find(choices.contentInclude) != floor.words.npos;
  return Lower(floor.words).find(Lower(choices.contentInclude)) != floor.words.npos;
}

bool MayReceive(std::u16string_view id, const MoneyChoices& choices, const MoneyPeople& people) {
  if (!IsWellFormedId(id) || Lower(id) == Lower(people.self)) return false;
  if (!people.standing || (!choices.noBlack && !choices.noSuperBlack)) return true;
  const IdStanding standing = people.standing(id);
  return !(choices.noBlack && standing == IdStanding::kBlack) &&
         !(choices.noSuperBlack && standing == IdStanding::kSuperBlack);
}

}  // namespace

std::vector<PushFloor> ReadFloors(const ArticleLines& lines) {
  int line = lines.Count();
  while (line > 0 && lines.At(line - 1).note != NoteLine::kOrigin)
    --line;

  std::vector<PushFloor> floors;
  for (; line < lines.Count(); ++line) {
    const ArticleLine& at = lines.At(line);
    if (!at.push) continue;
    floors.push_back({static_cast<int>(floors.size()) + 1, KindOf(*at.push), PushId(at.text, *at.push),
                      FieldText(at.text, at.push->words)});
  }
  return floors;
}

std::vector<FloorGift> ChooseReceivers(const std::vector<PushFloor>& floors, const MoneyChoices& choices,
                                       const MoneyPeople& people, std::mt19937& random) {
  const std::int32_t amount = AmountToSend(choices.moneyForEach, choices.afterTax);
  std::set<std::u16string> seen;
  std::vector<FloorGift> eligible;
  for (const PushFloor& floor : floors) {
    if (!IsKindChosen(floor.kind, choices) || !IsFloorChosen(floor.floor, choices) ||
        !HasWords(floor, choices) || !MayReceive(floor.id, choices, people))
      continue;
    // The BBS takes no notice of the case of an id.
    if (choices.noDupe && !seen.insert(Lower(floor.id)).second) continue;
    eligible.push_back({floor.floor, floor.id, amount});
  }
  const auto most = static_cast<std::size_t>(std::max(0, choices.number));
  if (most >= eligible.size()) return eligible;
  if (!choices.random) {
    eligible.resize(most);
    return eligible;
  }
  std::vector<FloorGift> drawn;
  std::sample(eligible.begin(), eligible.end(), std::back_inserter(drawn), most, random);
  return drawn;
}

std::int32_t AmountToSend(int each, bool afterTax) {
  constexpr std::int64_t kKept = 100 - kMoneyTaxPercent;
  const std::int64_t amount = afterTax ? (std::int64_t{each} * 100 + kKept - 1) / kKept : each;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(amount, 1, kMostMoney));
}

std::int32_t LeastThatArrives(std::int32_t amount) {
  return static_cast<std::int32_t>(std::int64_t{amount} * (100 - kMoneyTaxPercent) / 100);
}

std::int64_t TotalOf(const std::vector<FloorGift>& gifts) {
  std::int64_t total = 0;
  for (const FloorGift& gift : gifts)
    total += gift.amount;
  return total;
}

}  // namespace quillet
