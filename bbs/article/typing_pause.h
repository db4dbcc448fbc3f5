// When a key of the client's own may follow the user's keys without reaching a page that those lead to. Used
// by the article reading, on its thread. `now` is milliseconds of a steady clock.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quillet {

class TypingPause {
 public:
  // So long after a key of the user's nothing goes on by itself,
  static constexpr std::int64_t kCalm = 2000;
  // so long when the BBS has shown nothing since, after which the key is taken for one without an effect,
  static constexpr std::int64_t kNoAnswer = 5000;
  // and so long when it has shown fewer pages than keys were typed: what it has shown may answer an earlier
  // one, though a BBS also answers several at once.
  static constexpr std::int64_t kDoubt = 1000;

  void OnKey(std::int64_t now) {
    if (answered_ && now - lastKey_ >= kDoubt) unanswered_ = 0;
    ++unanswered_;
    lastKey_ = now;
    typed_ = true;
    answered_ = false;
    wanted_ = false;
  }
  // The BBS has shown a page that no key of the client's own has led to: the same one again,
  void OnAnswer() { answered_ = true; }
  // or another one.
  void OnMove() {
    answered_ = true;
    unanswered_ = std::max(0, unanswered_ - 1);
  }
  // The user asks to go on: the calm need not be waited for.
  void Waive() { wanted_ = true; }
  // The user's keys have brought what they were for: the calm need not be waited for until the next one.
  void Restart() { typed_ = wanted_ = false; }

  // The first moment for a key that is due at `due`.
  std::int64_t Until(std::int64_t due) const {
    if (typed_ && !wanted_) due = std::max(due, lastKey_ + kCalm);
    if (unanswered_ > 0) due = std::max(due, lastKey_ + (answered_ ? kDoubt : kNoAnswer));
    return due;
  }
  // Long ago when there was none.
  std::int64_t LastKey() const { return lastKey_; }

 private:
  std::int64_t lastKey_ = std::numeric_limits<std::int64_t>::min() / 2;
  int unanswered_ = 0;
  bool typed_ = false;
  bool answered_ = false;
  bool wanted_ = false;
};

}  // namespace quillet
