#include "demo/pages/login_page.h"

#include "core/charset.h"
#include "demo/ansi_line.h"
#include "demo/big5_text.h"
#include "demo/content_loader.h"
#include "demo/pages/arrival.h"
#include "demo/pages/farewell.h"

namespace quillet::demo {
namespace {

constexpr int kIdRow = 20;
constexpr int kPasswordRow = 21;
constexpr int kQuestionRow = 22;
constexpr int kIdColumns = 12;
constexpr int kPasswordColumns = 16;
constexpr int kMostFailures = 3;
constexpr const char* kAskedAgainFlag = "asked-again";

constexpr std::u16string_view kIdPrompt = u"請輸入代號，或以 guest 參觀，或以 new 註冊:";
constexpr std::u16string_view kPasswordPrompt = u"請輸入您的密碼: ";
constexpr std::u16string_view kOtherLoginsQuestion = u"您想刪除其他重複登入的連線嗎？[Y/n] ";

}  // namespace

LoginPage::LoginPage(PageHost& host)
    : host_(host),
      banner_(LoadScreen(host.TheHouse().contentFolder, "login.txt")),
      id_(kIdColumns),
      password_(kPasswordColumns, {}, Echo::kNothing),
      answer_(2) {}

void LoginPage::Draw(Canvas& canvas) {
  for (int row = 0; row < kIdRow && row < std::ssize(banner_); ++row)
    canvas.Put(row, 0, CellsOf(banner_[static_cast<std::size_t>(row)]));
  canvas.Put(kPasswordRow, 0, message_, Attr(kYellow, kBlack, Weight::kBold));
  id_.Draw(canvas, kIdRow, canvas.Put(kIdRow, 0, kIdPrompt) + 1);
  if (step_ == Step::kId) return;
  canvas.ClearRow(kPasswordRow);
  password_.Draw(canvas, kPasswordRow, canvas.Put(kPasswordRow, 0, kPasswordPrompt));
  if (step_ == Step::kPassword) return;
  answer_.Draw(canvas, kQuestionRow, canvas.Put(kQuestionRow, 0, kOtherLoginsQuestion));
}

void LoginPage::OnKey(const Key& key) {
  LineField& field = step_ == Step::kId ? id_ : step_ == Step::kPassword ? password_ : answer_;
  if (!key.Is(KeyKind::kEnter)) {
    field.OnKey(key);
    return;
  }
  switch (step_) {
    case Step::kId:
      OnId();
      break;
    case Step::kPassword:
      OnPassword();
      break;
    case Step::kOtherLogins:
      OnOtherLogins();
      break;
  }
}

void LoginPage::OnId() {
  const std::string id(Trimmed(id_.Text()));
  if (id.empty()) return;
  if (EqualsIgnoringCase(id, "new")) {
    AskId(ToBig5(u"本站目前不開放線上註冊，請用上面的試用帳號進站。"));
    return;
  }
  const auto user = host_.TheWorld().FindUser(id);
  if (!user) {
    Refuse(ToBig5(u"這裡沒有「") + id + ToBig5(u"」這個代號，請再試一次。"));
    return;
  }
  user_ = *user;
  if (user_.id == kGuestId) {
    LogIn();
    return;
  }
  step_ = Step::kPassword;
  password_.SetText({});
}

void LoginPage::OnPassword() {
  if (password_.Text().empty() || user_.Has(kAskedAgainFlag))
    Refuse(ToBig5(u"請重新輸入您的代號與密碼。"));
  else if (password_.Text() != user_.password)
    Refuse(ToBig5(u"密碼不對喔！請檢查大小寫有無輸入錯誤。"));
  else if (host_.TheWorld().HasOtherLogin(user_))
    step_ = Step::kOtherLogins;
  else
    LogIn();
}

void LoginPage::OnOtherLogins() {
  const std::string& answer = answer_.Text();
  if (answer.empty() || (answer[0] != 'n' && answer[0] != 'N')) host_.TheWorld().KickOtherLogins(user_.id);
  LogIn();
}

void LoginPage::AskId(std::string message) {
  message_ = std::move(message);
  step_ = Step::kId;
  id_.SetText({});
}

void LoginPage::Refuse(std::string message) {
  AskId(std::move(message));
  if (++failures_ < kMostFailures) return;
  ShowFarewell(host_, u"錯誤太多次，先休息一下再來吧。");
}

void LoginPage::LogIn() {
  host_.LogIn(user_);
  OpenArrival(host_);
}

}  // namespace quillet::demo
