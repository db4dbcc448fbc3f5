#include "demo/pages/user_list_page.h"

#include "core/charset.h"
#include "demo/big5_text.h"
#include "demo/pages/menu_page.h"
#include "demo/pages/prompts.h"

namespace quillet::demo {
namespace {

constexpr int kMessageColumns = 50;

}  // namespace

void UserListPage::DrawFrame(Canvas& canvas) {
  DrawTitleBar(canvas, u"【使用者名單】");
  canvas.Put(1, 0, u"[←]離開 [→]傳訊息 [↑↓]選擇");
  canvas.Fill(2, 0, kBarEnd, kHeads);
  canvas.Put(2, 0, u"   編號   代號          暱稱                  來自", kHeads);
  DrawStatusBar(canvas, host_);
}

void UserListPage::DrawItem(Canvas& canvas, int row, int index) {
  const OnlineUser& user = users_[static_cast<std::size_t>(index)];
  canvas.Put(row, 3, PadLeft(std::to_string(index + 1), 4));
  canvas.Put(row, 10, PadRight(user.id, 12), Attr(kGreen, kBlack, Weight::kBold));
  canvas.Put(row, 24, PadRight(user.nickname, 20));
  canvas.Put(row, 46, user.address);
}

void UserListPage::OpenItem(int index) {
  const std::string to = users_[static_cast<std::size_t>(index)].id;
  if (host_.CurrentUser().id == kGuestId) {
    host_.Open(std::make_unique<MessagePage>(host_, u"訪客不能傳訊息"));
    return;
  }
  host_.Open(std::make_unique<LinePrompt>(
      host_, LinePrompt::Place{kBottomRow, u"★ 傳訊給 " + FromBig5(to) + u": ", kMessageColumns, {}},
      [this, to](const std::string& text) {
        if (Trimmed(text).empty()) return;
        if (!host_.TheWorld().SendMessage(host_.CurrentUser(), to, text))
          host_.Open(std::make_unique<MessagePage>(host_, u"對方已經離開了"));
      }));
}

}  // namespace quillet::demo
