// Gives money to one user of the BBS after another in the BBS's own money page, and goes back to the article
// from which it was called. A worker thread's.
//
// Nobody gets money twice: a gift is marked in the ledger before it is confirmed to the BBS, and is never
// tried again from then on. Where the BBS's answer is not understood, the money that it shows tells whether
// the gift was made.
#pragma once

#include <chrono>
#include <vector>

#include "bbs/article_code.h"
#include "bbs/automation/money_ledger.h"
#include "bbs/automation/screen_waits.h"

namespace quillet {

struct MoneyOrder {
  ArticleReference article;  // to go back to; its code is asked for when it is empty
  std::vector<MoneyGift> gifts;
  // A page that shows no reaction by then has none to the key; a gift is a matter of the BBS's disk.
  std::chrono::milliseconds reaction{3'000};
  std::chrono::milliseconds answer{10'000};
  // For the way back to the article: the user waits for what came of the gifts.
  std::chrono::milliseconds wayBack{30'000};
};

// From the reader, or any page from which keys lead out to the main menu. Nothing is given unless the money,
// where the BBS shows it, suffices for all. Afterwards the article is opened again; where its code cannot be
// known, the board list shows. What came of it stands in the ledger, of whose gifts `order` is made.
void RunMoneyOrder(ScreenWaits& waits, const MoneyOrder& order, MoneyLedger& ledger);

}  // namespace quillet
