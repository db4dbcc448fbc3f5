// Whether and when a connection that has ended is made anew without being asked for: after growing pauses, as
// long as nobody wished the end. Decides by what it is told, the time among it. Pure; any one thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "app/session/session_facts.h"

namespace quillet {

class ReconnectPlan {
 public:
  // Before the first attempt of a series, the second, and so on; the last goes on.
  static constexpr std::int64_t kPausesMs[] = {1000, 2000, 5000, 10'000, 20'000, 40'000, 60'000};
  // A connection that has stood so long ends the series: what ends it is another event. A site that takes a
  // connection and drops it is asked no more often than one that cannot be reached.
  static constexpr std::int64_t kStandsMs = 10'000;

  // Times are milliseconds of a steady clock.

  void OnConnected(std::int64_t now);
  // The connection, or the attempt to make one, has ended.
  void OnEnded(const ConnectionEnd& end, std::int64_t now);
  // Nothing is made anew until the next connection is lost.
  void Stop();
  // Whoever wants it made anew at once does not end the series.
  void SkipPause() { due_.reset(); }

  // What is left of the pause; none while there is none.
  std::optional<std::int64_t> Left(std::int64_t now) const;
  // The pause is over, and the attempt begins: true once for each.
  bool TakeDue(std::int64_t now);
  // Other logins of the account may be ended by the next attempt, if its user so wishes. Not where the site
  // has hung up by itself: it may have done so because he has logged in elsewhere, and two clients would take
  // turns in throwing each other out.
  bool MayEndOtherLogins() const { return !siteHungUp_; }

 private:
  bool GoesOnAfter(const ConnectionEnd& end) const;

  bool inSeries_ = false;
  std::size_t pause_ = 0;  // the next one's place
  bool siteHungUp_ = false;
  std::optional<std::int64_t> due_;
  std::optional<std::int64_t> standsSince_;
};

}  // namespace quillet
