// What the links of a page show: marked once in each screen that the view takes over, and carried on by the
// lines of the article that are taken from it. User-interface thread.
#pragma once

#include <utility>

#include "bbs/understood_page.h"
#include "media/media_hosts.h"

namespace quillet {

class LinkMarks {
 public:
  explicit LinkMarks(MediaHosts hosts) : hosts_(std::move(hosts)) {}

  // Of the pages that come from now on.
  void SetHosts(MediaHosts hosts) { hosts_ = std::move(hosts); }
  // Every web address that shows a picture or a video gets its kind. `page` is what stands on `screen`.
  void Mark(const ScreenSnapshot& screen, UnderstoodPage& page) const;

 private:
  MediaHosts hosts_;
};

}  // namespace quillet
