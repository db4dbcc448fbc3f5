#include "demo/pages/mail_menu.h"

#include "core/charset.h"
#include "demo/article_code.h"
#include "demo/big5_text.h"
#include "demo/pages/list_page.h"
#include "demo/pages/post_flow.h"
#include "demo/pages/reader_page.h"

namespace quillet::demo {
namespace {

class MailList : public ListPage {
 public:
  explicit MailList(PageHost& host) : ListPage(host) {}

 protected:
  int Count() const override { return static_cast<int>(mails_.size()); }
  void Update() override { mails_ = host_.TheWorld().Mails(host_.CurrentUser().id); }
  void DrawFrame(Canvas& canvas) override {
    DrawTitleBar(canvas, u"【郵件列表】");
    canvas.Put(1, 0, u"[←]離開 [→]讀信 [↑↓]選擇");
    canvas.Fill(2, 0, kBarEnd, kHeads);
    canvas.Put(2, 0, u"   編號    日 期 寄信人       信  件  標  題", kHeads);
    if (mails_.empty()) canvas.Put(5, 10, u"信箱是空的。");
    DrawStatusBar(canvas, host_);
  }
  void DrawItem(Canvas& canvas, int row, int index) override {
    const Mail& mail = mails_[static_cast<std::size_t>(index)];
    canvas.Put(row, 1, PadLeft(std::to_string(index + 1), 6));
    canvas.Put(row, 8, mail.read ? u" " : u"+");
    canvas.Put(row, 11, PushTime(mail.seconds).substr(0, 5));
    canvas.Put(row, 17, PadRight(mail.fromId, 12));
    canvas.Put(row, 30, ToBig5(u"◇ ") + mail.title);
  }
  void OpenItem(int index) override {
    const Mail& mail = mails_[static_cast<std::size_t>(index)];
    std::vector<std::string> lines{ToBig5(u"寄信人: ") + mail.fromId, ToBig5(u"標  題: ") + mail.title,
                                   ToBig5(u"時  間: ") + HeaderTime(mail.seconds), ""};
    lines.insert(lines.end(), mail.body.begin(), mail.body.end());
    host_.TheWorld().MarkMailRead(host_.CurrentUser().id, static_cast<std::size_t>(index));
    host_.Open(std::make_unique<TextPage>(host_, lines));
  }
  void OnOtherKey(const Key&) override {}

 private:
  std::vector<Mail> mails_;
};

}  // namespace

MailMenu::MailMenu(PageHost& host)
    : MenuPage(host, u"【郵件選單】", "mail.txt",
               {{'R', "ead", u"我的信箱", [&host] { host.Open(std::make_unique<MailList>(host)); }},
                {'W', "rite", u"寫信給人", [&host] { StartMail(host); }}},
               Leave::kCloses) {}

}  // namespace quillet::demo
