#include "demo/pages/arrival.h"

#include "core/charset.h"
#include "demo/ansi_line.h"
#include "demo/article_code.h"
#include "demo/content_loader.h"
#include "demo/pages/mail_menu.h"
#include "demo/pages/main_menu.h"
#include "demo/pages/prompts.h"
#include "demo/pages/reader_page.h"
#include "platform/clock.h"

namespace quillet::demo {
namespace {

constexpr int kWelcomeTextRow = 2;

// A question alone on an empty screen; any answer goes on.
class Question : public Page {
 public:
  Question(PageHost& host, int row, std::u16string label)
      : prompt_(host, {row, std::move(label), 4, {}}, {}) {}
  void Draw(Canvas& canvas) override { prompt_.Draw(canvas); }
  void OnKey(const Key& key) override { prompt_.OnKey(key); }

 private:
  LinePrompt prompt_;
};

// The first greeting: who you are, and when you were here last.
class WelcomePage : public Page {
 public:
  explicit WelcomePage(PageHost& host)
      : host_(host), lines_(LoadScreen(host.TheHouse().contentFolder, "welcome.txt")) {}
  void Draw(Canvas& canvas) override {
    canvas.Put(0, 0, u" 奧拉拉文藝坊 ", Attr(kWhite, kBlue, Weight::kBold));
    canvas.Put(0, 16, ToBig5(u"歡迎光臨，") + host_.CurrentUser().id, Attr(kYellow, kBlack, Weight::kBold));
    int row = kWelcomeTextRow;
    for (const std::string& line : lines_)
      canvas.Put(row++, 0, CellsOf(line));
    const std::string last = PushTime(SecondsNow() - 86400);
    canvas.Put(21, 0, ToBig5(u"《上次上站》 ") + last + ToBig5(u" 來自 192.0.2.44"),
               Attr(kCyan, kBlack, Weight::kBold));
    DrawAnyKeyBanner(canvas);
  }
  void OnKey(const Key&) override { host_.CloseTop(); }

 private:
  PageHost& host_;
  std::vector<std::string> lines_;
};

}  // namespace

void OpenArrival(PageHost& host) {
  // From below to above: what is opened last is seen first.
  const User user = host.CurrentUser();
  host.Open(std::make_unique<MainMenu>(host));
  if (user.Has("notice"))
    host.Open(std::make_unique<TextPage>(host, LoadScreen(host.TheHouse().contentFolder, "notice.txt")));
  if (user.Has("mail")) host.Open(std::make_unique<MailMenu>(host));
  if (user.Has("found"))
    host.Open(std::make_unique<Question>(host, kRows - 1, u"找到 3 篇提到您的文章，按 Enter 繼續 "));
  if (user.Has("top-question"))
    host.Open(std::make_unique<Question>(host, 1, u"您要刪除登入失敗的記錄嗎？[y/N] "));
  if (user.Has("bottom-question"))
    host.Open(std::make_unique<Question>(host, kRows - 1, u"您有一篇文章還沒寫完，要繼續嗎？[y/N] "));
  host.Open(std::make_unique<WelcomePage>(host));
}

}  // namespace quillet::demo
