// Leaves the article that is open and opens it anew, because the BBS shows what has been added to an article
// only then. Used by the article reading, on its thread.
//
//   reader --Left--> article list, cursor on a line of the article's author --Right--> the article's top
//
// Whatever else the BBS shows on the way, and no answer within kNoAnswer, ends the attempt: nothing more is
// sent, and the user sees what there is.
#pragma once

#include <cstdint>
#include <string>

#include "bbs/understood_page.h"
#include "core/screen_snapshot.h"

namespace quillet {

class ArticleReopening {
 public:
  enum class Step {
    kWait,     // nothing to do
    kOpen,     // the list has come: press Right
    kArrived,  // a whole page of a reader has come: whose it is, the caller finds out
    kFailed    // over
  };
  // Left has just been pressed. `author` as the list prints it.
  void Begin(std::u16string author, std::int64_t now);
  void Stop() { state_ = State::kOff; }
  bool IsOn() const { return state_ != State::kOff; }

  // Only while on; off after kArrived and kFailed. `now` in milliseconds of a steady clock.
  Step OnScreen(const ScreenSnapshot& screen, const UnderstoodPage& page, std::int64_t now);
  Step OnTick(std::int64_t now);

  static constexpr std::int64_t kNoAnswer = 5000;  // ms

 private:
  enum class State { kOff, kLeaving, kOpening };
  State state_ = State::kOff;
  std::u16string author_;
  std::int64_t since_ = 0;
};

}  // namespace quillet
