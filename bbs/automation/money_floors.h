// Who gets how much when money is given along the push lines of an article: the article's floors, and the
// user's choices among them. Used by the give-money dialog. Pure; any one thread.
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "bbs/article/article_lines.h"

namespace quillet {

enum class FloorKind { kPush, kBoo, kArrow };

// One push line. Every kind counts as a floor, from 1 on, in the order of the article.
struct PushFloor {
  int floor = 0;
  FloorKind kind = FloorKind::kPush;
  std::u16string id;
  std::u16string words;  // without the address and the time behind them
};

// The push lines behind the article's origin line; what the text above it quotes is nobody's floor. Lines
// that are not known yet are missing: ask when the article is complete.
std::vector<PushFloor> ReadFloors(const ArticleLines& lines);

// What the user's own lists say of an id.
enum class IdStanding { kOrdinary, kBlack, kSuperBlack };

struct MoneyChoices {
  bool push = true;  // the kinds that get money
  bool boo = false;
  bool arrow = false;
  int fromFloor = 1;
  int toFloor = 99999;
  int floorInterval = 1;  // every n-th floor from the first one on; 1 or more
  int number = 99999;     // at most so many gifts
  bool noDupe = true;     // each id once
  std::u16string contentInclude{};
  bool matchCase = false;
  bool noBlack = false;
  bool noSuperBlack = false;
  bool random = false;  // drawn by lot instead of the first ones
  int moneyForEach = 100;
  bool afterTax = false;  // what moneyForEach says arrives

  bool operator==(const MoneyChoices&) const = default;
};

// Who is who, for the one that gives.
struct MoneyPeople {
  std::u16string self;  // gets nothing; empty: not known
  std::function<IdStanding(std::u16string_view id)> standing;
};

struct FloorGift {
  int floor = 0;
  std::u16string id;
  std::int32_t amount = 0;  // what is sent

  bool operator==(const FloorGift&) const = default;
};

// In the order of the floors. The same state of `random` draws the same ones.
std::vector<FloorGift> ChooseReceivers(const std::vector<PushFloor>& floors, const MoneyChoices& choices,
                                       const MoneyPeople& people, std::mt19937& random);

// The share of every gift that the BBS keeps, by the rule of its money page.
inline constexpr int kMoneyTaxPercent = 10;
// The largest amount that the field of that page holds.
inline constexpr std::int32_t kMostMoney = 99'999'999;

// What must be sent so that at least `each` arrives, or `each` itself; 1 to kMostMoney, even where more would
// be needed.
std::int32_t AmountToSend(int each, bool afterTax);

// What the receiver of such a gift gets at least.
std::int32_t LeastThatArrives(std::int32_t amount);

std::int64_t TotalOf(const std::vector<FloorGift>& gifts);

}  // namespace quillet
