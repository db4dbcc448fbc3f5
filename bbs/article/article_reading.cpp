#include "bbs/article/article_reading.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "core/key_sequence.h"

namespace quillet {
namespace {

using Added = ArticleLines::Added;

// So many keys more than there are pages may bring nothing new before the answers are not believed any more.
constexpr int kSpareKeys = 20;

// The next page is on its way: cleared, or drawn over the one before down to some row.
bool IsHalfDrawn(const UnderstoodPage& page) {
  if (page.Shows(PF_STAR_LINE | PF_INPUT_FIELD | PF_LIST_CURSOR)) return false;
  return page.Shows(PF_READING) || page.Line(kBottomRow).isBlank;
}

}  // namespace

ArticleReading::ArticleReading(Handlers handlers) : handlers_(std::move(handlers)) {}

void ArticleReading::SetOptions(const ArticleReadingOptions& options) {
  options_ = options;
  if (!options_.fetchAll) StopAsking();
}

// ---- What comes in

void ArticleReading::OnScreen(const ScreenSnapshot& screen, const UnderstoodPage& page,
                              const ArticleInfo& article, bool open, std::int64_t now) {
  if (page.Shows(PF_LIST_CURSOR)) {
    fromList_ = page.Shows(PF_ARTICLE_LIST_CURSOR);
    typing_.OnMove();
  }
  if (reopening_.IsOn()) {
    if (!IsWholeReaderPage(screen)) page_.reset();
    if (!OnReopening(reopening_.OnScreen(screen, page, now), screen, page)) return;
  }
  if (IsWholeReaderPage(screen)) {
    OnPage(screen, page, article, now);
  } else if (!open) {
    ForgetArticle();
  } else {
    LookAway(page, now);
  }
}

void ArticleReading::OnTick(std::int64_t now, bool mayRefresh) {
  if (reopening_.IsOn() && reopening_.OnTick(now) == ArticleReopening::Step::kFailed) GiveUpReopening();
  if (request_.IsPending() && request_.WaitedFor(now) >= kNoAnswer) {
    StopAsking();
    gaveUp_ = true;
  }
  if (halfDrawnSince_ && now - *halfDrawnSince_ >= kHalfDrawn) {
    halfDrawnSince_.reset();
    standing_ = false;
  }
  Fetch(now);
  if (mayRefresh && MayReopen(now)) Reopen(now);
}

void ArticleReading::OnUserKey(std::int64_t now) {
  if (reopening_.IsOn()) {
    reopening_.Stop();
    before_.reset();
    page_.reset();
    standing_ = false;
  }
  StopAsking();
  typing_.OnKey(now);
  gaveUp_ = false;
  fruitlessKeys_ = 0;
}

void ArticleReading::WantMore(std::int64_t now) {
  typing_.Waive();
  gaveUp_ = false;
  Fetch(now);
}

void ArticleReading::Drop() {
  ForgetArticle();
  fromList_ = false;
}

std::optional<int> ArticleReading::TakeMovedTo() {
  return std::exchange(movedTo_, std::nullopt);
}

// ---- What the BBS shows

void ArticleReading::OnPage(const ScreenSnapshot& screen, const UnderstoodPage& page,
                            const ArticleInfo& article, std::int64_t now) {
  halfDrawnSince_.reset();
  const unsigned version = lines_.Version();
  if (!ReadLines(screen, page, article)) {
    page_.reset();
    standing_ = false;
    return;
  }
  if (lines_.Version() != version) fruitlessKeys_ = 0;
  if (article.IsArticle()) author_ = article.author;
  if (!lastTop_) {
    typing_.Restart();
    refreshedAt_ = now;
  }
  NoteArrival({*lines_.PlaceOf(screen, page), page.Shows(PF_READ_END)}, now);
}

// False when the page is none of an article's whose top has been seen.
bool ArticleReading::ReadLines(const ScreenSnapshot& screen, const UnderstoodPage& page,
                               const ArticleInfo& article) {
  const bool topOfAnArticle = article.IsArticle() && page.Shows(PF_READ_TOP);
  if (lines_.Count() == 0 && !topOfAnArticle) return false;
  Added added = lines_.Add(screen, page);
  const std::optional<int> top = lines_.TopOf(screen, page);
  if (added == Added::kOther && top > 0 && seekingEnd_) {
    // The same article, whose lines have moved: where, only reading it all again can tell.
    lines_.ForgetFrom(ArticleLines::kPageRows);
    added = lines_.Add(screen, page);
  } else if (added == Added::kOther && top == 0 && topOfAnArticle) {
    ForgetArticle();
    added = lines_.Add(screen, page);
  }
  return top && added != Added::kOther;
}

void ArticleReading::NoteArrival(const ReaderPlace& page, std::int64_t now) {
  const bool own = request_.Answers(page, now);
  const bool moved = lastTop_ != page.place.top;
  page_ = page;
  arrivedAt_ = now;
  lastTop_ = page.place.top;
  if (own || moved) strayed_ = own && page.place.top > lines_.Count();
  standing_ = strayed_ || IsKnown(page);
  if (!own && moved) {
    typing_.OnMove();
    if (standing_) movedTo_ = page.place.top;
  } else if (!own) {
    typing_.OnAnswer();
  }
  if (NextKey() == 0) seekingEnd_ = false;
  if (page.atEnd && lines_.IsComplete()) TellNews();
}

void ArticleReading::LookAway(const UnderstoodPage& page, std::int64_t now) {
  page_.reset();
  if (standing_ && IsHalfDrawn(page)) {
    if (!halfDrawnSince_) halfDrawnSince_ = now;
    return;
  }
  halfDrawnSince_.reset();
  standing_ = false;
}

void ArticleReading::ForgetArticle() {
  lines_.Clear();
  standing_ = false;
  movedTo_.reset();
  author_.clear();
  page_.reset();
  lastTop_.reset();
  halfDrawnSince_.reset();
  strayed_ = false;
  request_.Forget();
  gaveUp_ = false;
  fruitlessKeys_ = 0;
  reopening_.Stop();
  mayReopen_ = true;
  refreshWanted_ = false;
  seekingEnd_ = false;
  before_.reset();
}

// ---- Fetching

int ArticleReading::NextKey() const {
  if (!page_) return 0;
  const auto& [place, atEnd] = *page_;
  const bool beyond = place.top > lines_.Count();
  if (beyond) {
    if (!strayed_) return 0;
    // Whichever of the two ways back is the shorter one.
    return place.top - lines_.Count() <= lines_.Count() ? kKeyPageUp : kKeyHome;
  }
  if (seekingEnd_ && !atEnd && !endAsked_ && lines_.IsComplete()) return kKeyEnd;
  if (lines_.IsComplete() && !seekingEnd_) return 0;
  return atEnd || lines_.Count() >= ArticleLines::kMostLines ? 0 : kKeyPageDown;
}

// A BBS that answers with page after page without ever coming further is not asked for ever.
bool ArticleReading::IsBelieved() const {
  const int pages = std::max(lines_.Count(), lastTop_.value_or(0)) / ArticleLines::kPageStep;
  return fruitlessKeys_ <= 2 * pages + kSpareKeys;
}

std::optional<std::int64_t> ArticleReading::FetchTime() const {
  if (!options_.fetchAll || gaveUp_ || request_.IsPending() || reopening_.IsOn() || NextKey() == 0)
    return std::nullopt;
  return typing_.Until(arrivedAt_ + kPause);
}

std::optional<std::int64_t> ArticleReading::NextTick() const {
  return FetchTime();
}

void ArticleReading::Fetch(std::int64_t now) {
  const std::optional<std::int64_t> time = FetchTime();
  if (!time || now < *time) return;
  if (!IsBelieved()) {
    StopAsking();
    gaveUp_ = true;
    return;
  }
  const int key = NextKey();
  if (key == kKeyEnd) endAsked_ = true;
  ++fruitlessKeys_;
  request_.Begin(key, *page_, now);
  handlers_.send(KeySequence(key));
}

void ArticleReading::StopAsking() {
  request_.Abandon();
  StopSeeking();
}

// ---- Refreshing

bool ArticleReading::MayReopen(std::int64_t now) const {
  const bool quiet = !request_.IsPending() && !reopening_.IsOn() && !seekingEnd_ && page_ && standing_;
  const bool isTime =
      options_.refreshPush && now - LastUse() >= kRefreshCalm && now - refreshedAt_ >= kRefreshInterval;
  const bool isWanted = refreshWanted_ && now - LastUse() >= kCalm && now >= typing_.Until(now);
  return options_.fetchAll && mayReopen_ && fromList_ && quiet && lines_.IsComplete() && (isTime || isWanted);
}

void ArticleReading::Reopen(std::int64_t now) {
  refreshedAt_ = now;
  if (!std::exchange(refreshWanted_, false)) before_ = lines_;
  reopening_.Begin(author_, now);
  handlers_.send(KeySequence(kKeyLeft));
}

bool ArticleReading::OnReopening(ArticleReopening::Step step, const ScreenSnapshot& screen,
                                 const UnderstoodPage& page) {
  switch (step) {
    case ArticleReopening::Step::kWait:
      return false;
    case ArticleReopening::Step::kOpen:
      handlers_.send(KeySequence(kKeyRight));
      return false;
    case ArticleReopening::Step::kArrived:
      lastTop_ = lines_.TopOf(screen, page);
      seekingEnd_ = lastTop_ == 0;
      endAsked_ = false;
      fruitlessKeys_ = 0;
      return true;
    case ArticleReopening::Step::kFailed:
      GiveUpReopening();
      return true;
  }
  return true;
}

void ArticleReading::GiveUpReopening() {
  mayReopen_ = false;
  before_.reset();
  standing_ = page_ && IsKnown(*page_);
}

// Where lines have been found to read differently, fetching goes on with them, and the news are told then.
void ArticleReading::StopSeeking() {
  if (!seekingEnd_) return;
  seekingEnd_ = false;
  if (lines_.IsComplete()) before_.reset();
}

void ArticleReading::TellNews() {
  if (!before_) return;
  const std::optional<ArticleLines> before = std::exchange(before_, std::nullopt);
  if (before->Version() == lines_.Version()) return;
  ArticleNews news = CompareArticle(*before, lines_);
  news.edited = news.edited && options_.tellChanges;
  if (news != ArticleNews{}) handlers_.news(news);
}

}  // namespace quillet
