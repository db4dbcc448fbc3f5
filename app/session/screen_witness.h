// Looks at every screen of a connection, also at those that the view never takes over: understands the page,
// and keeps what the screens tell by following one another: which article is open, who logs in, that the user
// has pushed. The message target owns it and guards it: any thread, one at a time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/session/login_id_watch.h"
#include "bbs/article/article_info.h"
#include "bbs/article/push_watch.h"
#include "bbs/farewell_watch.h"
#include "bbs/page_understanding.h"
#include "core/screen_snapshot.h"
#include "core/screen_watcher.h"

namespace quillet {

// What the screens up to the newest one have told.
struct Sightings {
  ArticleInfo article{};
  bool articleOpen = false;           // even where its header has not been seen
  std::u16string loginId{};           // empty while nobody is known to be logged in
  std::vector<ArticleInfo> pushed{};  // the articles that have been pushed to since they were taken last
  Farewell farewell = Farewell::kNone;
};

class ScreenWitness {
 public:
  // The next screen, classified; tells it whether a push prompt lies over an open article. `now` in seconds
  // since 1970.
  void Look(ScreenSnapshot& screen, ScreenReason reason, std::int64_t now);
  // What stands on the screen that came last.
  const UnderstoodPage& Page() const { return understanding_.Page(); }
  Sightings Take();

  // What is known of the login without looking.
  LoginIdWatch& Login() { return login_; }
  // An automation has pushed, and tells of it itself.
  void ForgetPush();

 private:
  PageUnderstanding understanding_;
  ArticleTracker article_;
  LoginIdWatch login_;
  PushWatch push_;
  FarewellWatch farewell_;
  ArticleInfo pushing_;  // open when a push was last asked for
  std::vector<ArticleInfo> pushed_;
  std::uint32_t connection_ = 0;  // of the screen that came last
};

}  // namespace quillet
