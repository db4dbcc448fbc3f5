// The menu behind "Xyz": facts about this BBS, and giving money to somebody. The client's thread.
#pragma once

#include "demo/pages/menu_page.h"

namespace quillet::demo {

class SystemMenu : public MenuPage {
 public:
  explicit SystemMenu(PageHost& host);
};

}  // namespace quillet::demo
