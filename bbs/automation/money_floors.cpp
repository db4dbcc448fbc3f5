#include "bbs/automation/money_floors.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>

#include "bbs/user_id.h"
#include "core/ascii.h"
#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::u16string_view kOriginLine = u"※ 發信站";
constexpr std::size_t kIdCol = 3;
constexpr std::string_view kStampForm = "dd/dd dd:dd";

void TrimEnd(std::string_view& text) {
  text = text.substr(0, text.find_last_not_of(' ') + 1);
}

bool IsStamp(std::string_view text) {
  return std::equal(kStampForm.begin(), kStampForm.end(), text.begin(), text.end(),
                    [](char form, char c) { return form == 'd' ? IsAsciiDigit(c) : form == c; });
}

bool IsAddress(std::string_view word) {
  return std::count(word.begin(), word.end(), '.') == 3 &&
         std::all_of(word.begin(), word.end(), [](char c) { return IsAsciiDigit(c) || c == '.'; });
}

// Takes the last word off `text` when it is as wanted. No second half of a character is a blank or a digit.
template <typename Wanted>
bool TakeLast(std::string_view& text, std::size_t length, Wanted wanted) {
  if (length >= text.size() || text[text.size() - length - 1] != ' ') return false;
  if (!wanted(text.substr(text.size() - length))) return false;
  text.remove_suffix(length + 1);
  TrimEnd(text);
  return true;
}

// Of a push line: what stands between the colon and the address or time.
std::u16string WordsOf(std::string_view cells) {
  std::string_view text = cells.substr(std::min(cells.find(':', kIdCol), cells.size() - 1) + 1);
  TrimEnd(text);
  if (TakeLast(text, kStampForm.size(), IsStamp))
    TakeLast(text, text.size() - 1 - std::min(text.rfind(' '), text.size() - 1), IsAddress);
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  std::u16string words = FromBig5(text);
  std::erase(words, u'\0');
  return words;
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

std::vector<PushFloor> ReadFloors(const PageFacts& facts, const ArticleLines& lines) {
  const std::string origin = ToBig5(kOriginLine);
  const std::string push = ToBig5(u"推");
  const std::string boo = ToBig5(u"噓");
  int line = lines.Count();
  while (line > 0 && !BytesOf(lines.At(line - 1).text).starts_with(origin))
    --line;

  std::vector<PushFloor> floors;
  const auto page = std::make_unique<ScreenSnapshot>();  // row 0 holds the line that is being looked at
  for (; line < lines.Count(); ++line) {
    page->text[0] = lines.At(line).text;
    std::u16string id = facts.ParsePushAuthor(*page, 0);
    if (id.empty()) continue;
    const std::string_view cells = BytesOf(lines.At(line).text);
    const FloorKind kind = cells.starts_with(push)  ? FloorKind::kPush
                           : cells.starts_with(boo) ? FloorKind::kBoo
                                                    : FloorKind::kArrow;
    floors.push_back({static_cast<int>(floors.size()) + 1, kind, std::move(id), WordsOf(cells)});
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
