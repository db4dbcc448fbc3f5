// The mail menu, the list of a user's letters, and writing one. The client's thread.
#pragma once

#include "demo/pages/menu_page.h"

namespace quillet::demo {

class MailMenu : public MenuPage {
 public:
  explicit MailMenu(PageHost& host);
};

}  // namespace quillet::demo
