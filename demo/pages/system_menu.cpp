#include "demo/pages/system_menu.h"

#include "demo/content_loader.h"
#include "demo/pages/money_page.h"
#include "demo/pages/prompts.h"
#include "demo/pages/reader_page.h"

namespace quillet::demo {
namespace {

void OpenMoney(PageHost& host) {
  if (host.CurrentUser().id == kGuestId)
    host.Open(std::make_unique<MessagePage>(host, u"訪客沒有文藝幣"));
  else
    host.Open(std::make_unique<MoneyPage>(host));
}

void OpenFacts(PageHost& host) {
  host.Open(std::make_unique<TextPage>(host, LoadScreen(host.TheHouse().contentFolder, "system.txt")));
}

}  // namespace

SystemMenu::SystemMenu(PageHost& host)
    : MenuPage(host, u"【系統資訊】", "menu.txt",
               {{'A', "bout", u"關於本站", [&host] { OpenFacts(host); }},
                {'P', "resent", u"送人文藝幣", [&host] { OpenMoney(host); }}},
               Leave::kCloses) {}

}  // namespace quillet::demo
