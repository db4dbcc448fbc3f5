// A screen of the BBS as it is shown: list lines darkened, masked or removed, push lines in their colours,
// the cursor bar, ages and marks. Called by the view for every screen that is not shown as a local article.
// User-interface thread; pure.
#pragma once

#include "bbs/understood_page.h"
#include "render/page_row.h"
#include "render/style/style_rules.h"

namespace quillet {

struct StyledScreen {
  Page page;
  // Which row of the screen each row of the page shows; -1: none, where a removed push line left room.
  std::array<int, kRows> rowOf{};
};

// `page` is what stands on `screen`, marked with the user's keywords; `postTime` is the open article's, 0
// unknown.
StyledScreen StyleScreen(const ScreenSnapshot& screen, const UnderstoodPage& page, const StyleRules& rules,
                         std::int64_t postTime);

}  // namespace quillet
