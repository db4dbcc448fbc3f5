// Reads the whole of the article that the user has open by paging on, one page at a time and only while
// nobody types, and reads it anew for new push lines. A state machine: screens, ticks and the user's keys go
// in, keys for the BBS come out. The character tables must be loaded before one is made. The view's thread,
// or any other one thread; `now` is everywhere milliseconds of one steady clock.
//
// Fetching. An article of a board that was seen from its top is read on with Page Down: only from a whole
// page of the article that nothing lies over and that is not its last one (there the key would lead to the
// next article), kPause after that page has come, and never before the page asked for last has come. A key of
// the user's stops it. It goes on by itself TypingPause::kCalm after the last key, or when the user wants
// more, but not before the BBS has answered what was typed (typing_pause.h): so that no key of the reading's
// own reaches a page that the user's keys lead to. A BBS that does not answer a key of the reading within
// kNoAnswer is asked again only after a key of the user's or WantMore. A page beyond what is known (the user
// pressed End) is left where it is: going back for the lines between would take the user away from it.
//
// Refreshing. New push lines show only when the article is opened anew. When it is known to its end, was
// opened from an article list and the user has neither typed nor moved through it for kRefreshCalm, it is
// left and opened again every kRefreshInterval (article_reopening.h); then End shows whether there is more,
// and Page Up, Home and Page Down bring the lines between. A change of the text between the first and the
// last page that moves no line stays unnoticed. While the article is not on the screen (two answers of the
// BBS, each awaited kNoAnswer at most) a key of the user's would act on the list: MustWait says so, and the
// view holds keys back until it does not. The paging afterwards needs no such care: a key stops it like any
// fetching. WantRefresh brings it forward. What a stopped refresh has not seen, the next one sees. After a
// reopening that failed there is none until the next article.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string_view>

#include "bbs/article/article_info.h"
#include "bbs/article/article_lines.h"
#include "bbs/article/article_news.h"
#include "bbs/article/article_reopening.h"
#include "bbs/article/page_request.h"
#include "bbs/article/typing_pause.h"

namespace quillet {

struct ArticleReadingOptions {
  // "WebArticle"; without it no key is sent at all, but for the one that ends a reopening under way.
  bool fetchAll = true;
  bool refreshPush = true;  // "AutoRefreshPush"
  bool tellChanges = true;  // "NotifyArticleChanged": without it news never say `edited`
};

class ArticleReading {
 public:
  struct Handlers {
    std::function<void(std::string_view keys)> send;  // bytes for the BBS, as if typed
    std::function<void(const ArticleNews&)> news;     // only when there are any
  };
  explicit ArticleReading(Handlers handlers);

  void SetOptions(const ArticleReadingOptions& options);
  // Each screen the view takes over, and what stands on it; `article` and `open` are the tracker's after its
  // look at it.
  void OnScreen(const ScreenSnapshot& screen, const UnderstoodPage& page, const ArticleInfo& article,
                bool open, std::int64_t now);
  // A few times a second, and at NextTick. `mayRefresh`: the user could see news (the window is up, no
  // dialog, nothing typed), and the article stands still.
  void OnTick(std::int64_t now, bool mayRefresh);
  // When a fetch waits for nothing but time: the moment at which OnTick would send its next key. Without
  // being asked for, a page comes with each ordinary tick.
  std::optional<std::int64_t> NextTick() const;
  // Before a key of the user's, or an automation's, goes to the BBS: stops at once.
  void OnUserKey(std::int64_t now);
  // The user moves through the article without the BBS: no refresh shall begin under his eyes, but fetching
  // goes on.
  void OnLocalMove(std::int64_t now) { lastLocalMove_ = now; }
  // The user scrolls towards the end of what is known: go on where a key has stopped it, without kCalm.
  void WantMore(std::int64_t now);
  // The user has added to the article: it is opened anew as soon as he leaves the keys alone, whatever the
  // options say of refreshing, and his own lines are no news. Until then the wish is kept.
  void WantRefresh() { refreshWanted_ = true; }
  // Forgets the article; for a connection that begins or ends.
  void Drop();

  const ArticleLines& Lines() const { return lines_; }
  // The local view stands for the screen: the BBS shows a page of this article all of whose lines are known,
  // or the reading itself has led it elsewhere for the moment, or the next page is half drawn (for kHalfDrawn
  // at most). False under prompts, boxes, messages, help and lists.
  bool StandsForScreen() const { return standing_; }
  // The user's keys, not the reading, have brought the BBS to a page of this article whose lines are known:
  // the index of its first line. An article's first page counts too. Each answer is given once.
  std::optional<int> TakeMovedTo();
  // A page that the reading has asked for is on its way.
  bool IsFetching() const { return request_.IsPending(); }
  // From the key that leaves the article until its end has been seen anew.
  bool IsRefreshing() const { return reopening_.IsOn() || seekingEnd_; }
  // When the user has last typed or moved through the article; long ago when he never has.
  std::int64_t LastUse() const { return std::max(typing_.LastKey(), lastLocalMove_); }
  // Keys for the BBS must be held back: the article has been left and is being opened again. Ends within
  // twice kNoAnswer, given ticks.
  bool MustWait() const { return reopening_.IsOn(); }

  // Milliseconds.
  static constexpr std::int64_t kPause = 30;
  static constexpr std::int64_t kCalm = TypingPause::kCalm;
  static constexpr std::int64_t kNoAnswer = ArticleReopening::kNoAnswer;
  static constexpr std::int64_t kHalfDrawn = 500;
  static constexpr std::int64_t kRefreshCalm = 10'000;
  static constexpr std::int64_t kRefreshInterval = 30'000;

 private:
  // ---- What the BBS shows
  void OnPage(const ScreenSnapshot& screen, const UnderstoodPage& page, const ArticleInfo& article,
              std::int64_t now);
  bool ReadLines(const ScreenSnapshot& screen, const UnderstoodPage& page, const ArticleInfo& article);
  void NoteArrival(const ReaderPlace& page, std::int64_t now);
  void LookAway(const UnderstoodPage& page, std::int64_t now);
  void ForgetArticle();
  bool IsKnown(const ReaderPlace& page) const { return page.place.End() <= lines_.Count(); }

  // ---- Fetching
  // The next key's code; 0 when there is nothing to ask for.
  int NextKey() const;
  bool IsBelieved() const;
  std::optional<std::int64_t> FetchTime() const;
  void Fetch(std::int64_t now);
  void StopAsking();

  // ---- Refreshing
  bool MayReopen(std::int64_t now) const;
  void Reopen(std::int64_t now);
  // Whether the screen is to be looked at as any other.
  bool OnReopening(ArticleReopening::Step step, const ScreenSnapshot& screen, const UnderstoodPage& page);
  void GiveUpReopening();
  void StopSeeking();
  void TellNews();

  Handlers handlers_;
  ArticleReadingOptions options_;
  ArticleLines lines_;
  bool standing_ = false;
  std::optional<int> movedTo_;

  std::u16string author_;
  bool fromList_ = false;            // the list that was seen last is one of articles
  std::optional<ReaderPlace> page_;  // what the BBS shows; nothing when it is no whole page of the article
  std::optional<int> lastTop_;       // where it was in the article
  bool strayed_ = false;             // a key of the reading's has led beyond what is known
  std::int64_t arrivedAt_ = 0;
  std::optional<std::int64_t> halfDrawnSince_;

  PageRequest request_;
  TypingPause typing_;
  bool gaveUp_ = false;
  int fruitlessKeys_ = 0;  // sent since a line was learned last

  ArticleReopening reopening_;
  bool mayReopen_ = true;
  bool refreshWanted_ = false;
  std::int64_t lastLocalMove_ = std::numeric_limits<std::int64_t>::min() / 2;
  std::int64_t refreshedAt_ = 0;
  bool seekingEnd_ = false;  // reopened, and the end not seen yet
  bool endAsked_ = false;
  std::optional<ArticleLines> before_;  // what was known before the reopening, until its news are told
};

}  // namespace quillet
