#include "demo/pages/main_menu.h"

#include "demo/pages/board_list_page.h"
#include "demo/pages/farewell.h"
#include "demo/pages/mail_menu.h"
#include "demo/pages/system_menu.h"
#include "demo/pages/user_list_page.h"

namespace quillet::demo {

MainMenu::MainMenu(PageHost& host)
    : MenuPage(host, u"【主功能表】", "menu.txt",
               {{'B', "oards", u"看板列表", [&host] { host.Open(std::make_unique<BoardListPage>(host)); }},
                {'M', "ail", u"郵件選單", [&host] { host.Open(std::make_unique<MailMenu>(host)); }},
                {'T', "alk", u"使用者名單", [&host] { host.Open(std::make_unique<UserListPage>(host)); }},
                {'X', "yz", u"系統資訊", [&host] { host.Open(std::make_unique<SystemMenu>(host)); }},
                {'G', "oodbye", u"離開，再見", [&host] { AskToLeave(host); }}},
               Leave::kMovesToLastItem) {}

}  // namespace quillet::demo
