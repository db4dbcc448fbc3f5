// The main menu, the lowest page of everybody who is logged in. The client's thread.
#pragma once

#include "demo/pages/menu_page.h"

namespace quillet::demo {

class MainMenu : public MenuPage {
 public:
  explicit MainMenu(PageHost& host);
};

}  // namespace quillet::demo
