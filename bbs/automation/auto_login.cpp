#include "bbs/automation/auto_login.h"

#include <algorithm>
#include <array>
#include <optional>

#include "core/charset.h"
#include "core/key_sequence.h"

namespace quillet {
namespace {

using namespace std::chrono_literals;

constexpr int kPasswordRow = 21;
constexpr std::u16string_view kPasswordPrompt = u"請輸入您的密碼";

// What can follow the password.
enum class Page {
  kOtherLogins,  // shall other logins of the account end?
  kBottomQuestion,
  kTopQuestion,  //
  kMailMenu,     //
  kReader,       // a notice shown as an article
  kMainMenu,     //
  kFound,        // a search result line
  kWrongPassword,
  kAskAgain,
  kWelcome  // waits for any key
};

struct PageMark {
  Page page;
  std::uint8_t row;
  std::uint8_t col;
  std::u16string_view text;
};

// Looked for in this order.
constexpr PageMark kPageMarks[] = {
    {Page::kOtherLogins, 22, 0, u"您"},  {Page::kBottomQuestion, 23, 0, u"您"},
    {Page::kTopQuestion, 1, 0, u"您"},   {Page::kMailMenu, 0, 2, u"郵"},
    {Page::kReader, 23, 2, u"瀏覽"},     {Page::kMainMenu, 0, 2, u"主"},
    {Page::kFound, 23, 0, u"找到"},      {Page::kWrongPassword, 21, 0, u"密碼不對"},
    {Page::kAskAgain, 21, 0, u"請重新"}, {Page::kWelcome, 23, 0, u" ▄▄▄▄▄▄▄▄▄▄▄▄▄▄▄ 請按任意鍵繼續 "},
};

struct PageAnswer {
  Page page;
  std::string_view typed;
  enum class Then { kNothing, kDismiss } then;
  int times;
};

// Each is given at most once and in this order: a page that comes back, or comes late, is left to the user.
constexpr PageAnswer kAnswers[] = {
    {Page::kBottomQuestion, "n\r", PageAnswer::Then::kDismiss, 1},
    {Page::kTopQuestion, "q\r", PageAnswer::Then::kDismiss, 1},
    {Page::kFound, "\r", PageAnswer::Then::kDismiss, 1},
    {Page::kMailMenu, "q", PageAnswer::Then::kNothing, 1},
    {Page::kReader, "q", PageAnswer::Then::kNothing, 10},
};

class LoginDialogue {
 public:
  LoginDialogue(ScreenWaits& waits, const LoginRequest& request) : waits_(waits), request_(request) {}
  LoginResult Run();

 private:
  enum class Entry { kPasswordTyped, kNotNeeded, kUnknownUser, kEnded };
  Entry EnterPassword();
  bool WaitBehindPassword();
  std::optional<Page> FirstPage();
  void AnswerOtherLogins();
  LoginResult FollowPages(Page page);

  // None when the run ended.
  std::optional<Page> WaitForPage();
  std::vector<ScreenProbe> Probes() const;
  void NoLongerExpect(std::initializer_list<Page> pages);
  // Passes a pause; does nothing on other pages, where Delete and the key for a pause have no meaning.
  void Dismiss();

  ScreenWaits& waits_;
  const LoginRequest& request_;
  std::vector<PageMark> expected_{std::begin(kPageMarks), std::end(kPageMarks)};
};

LoginResult LoginDialogue::Run() {
  if (waits_.WaitForProbes(Want::kMatch, {{20, 0, u"請輸入代號，或以 guest 參觀，或以 new 註冊:"}}) == 0)
    return LoginResult::kClosed;
  if (!waits_.IsAlive()) return LoginResult::kClosed;
  waits_.SendText(request_.account + u"\r");
  if (request_.password.empty()) return LoginResult::kFinished;

  const Entry entry = EnterPassword();
  if (entry == Entry::kEnded) return LoginResult::kClosed;
  if (entry == Entry::kUnknownUser) return LoginResult::kRefused;
  std::optional<Page> page = FirstPage();
  if (!page) return LoginResult::kClosed;
  if (page == Page::kWrongPassword || page == Page::kAskAgain) return LoginResult::kRefused;

  NoLongerExpect({Page::kWrongPassword, Page::kAskAgain, Page::kWelcome});
  if (page == Page::kOtherLogins) {
    AnswerOtherLogins();
    if (!request_.continueToMenu) return LoginResult::kFinished;
    NoLongerExpect({Page::kOtherLogins});
    page = WaitForPage();
    if (!page) return LoginResult::kClosed;
  }
  return request_.continueToMenu ? FollowPages(*page) : LoginResult::kFinished;
}

LoginDialogue::Entry LoginDialogue::EnterPassword() {
  const PageMark& welcome = kPageMarks[std::size(kPageMarks) - 1];
  switch (waits_.WaitForProbes(Want::kMatch, {{kPasswordRow, 0, std::u16string(kPasswordPrompt)},
                                              {kPasswordRow, 0, u"這裡沒有"},
                                              {welcome.row, welcome.col, std::u16string(welcome.text)}})) {
    case 0:
      return Entry::kEnded;
    case 1:
      waits_.SendText(request_.password + u"\r");
      return Entry::kPasswordTyped;
    case 2:
      return Entry::kUnknownUser;
    default:
      return Entry::kNotNeeded;  // a guest's
  }
}

// The prompt that has just been answered is an input field as well, as long as the BBS has not reacted. A
// refusal may come on a page without any field.
bool LoginDialogue::WaitBehindPassword() {
  const std::string prompt = ToBig5(kPasswordPrompt);
  const ProbeList marks(Probes());
  const PageTests& pages = waits_.Pages();
  return waits_.WaitUntil(
      [&](const ScreenSnapshot& screen) {
        const bool answered = screen.cursorRow == kPasswordRow &&
                              RowStartsWith(screen, kPasswordRow, 0, std::string_view(prompt));
        return pages.IsAnyKeyBanner(screen) || (pages.IsInputField(screen) && !answered) ||
               pages.IsListCursor(screen) || pages.IsReader(screen, PageTests::ReaderForm::kPlain) ||
               marks.First(screen, Want::kMatch) != 0;
      },
      10ms);
}

std::optional<Page> LoginDialogue::FirstPage() {
  if (!WaitBehindPassword()) return std::nullopt;
  if (waits_.Pages().IsAnyKeyBanner(waits_.Seen())) {
    Dismiss();
    NoLongerExpect({Page::kWelcome});
  }
  std::optional<Page> page = WaitForPage();
  // A page that was caught half drawn may have hidden that it was the welcome.
  if (page == Page::kWelcome) {
    Dismiss();
    NoLongerExpect({Page::kWelcome});
    page = WaitForPage();
  }
  return page;
}

void LoginDialogue::AnswerOtherLogins() {
  if (!request_.kickOthers) waits_.Send("n");
  waits_.Send("\r");
  Dismiss();
  Dismiss();
}

LoginResult LoginDialogue::FollowPages(Page page) {
  NoLongerExpect({Page::kOtherLogins});
  for (std::size_t i = 0; i < std::size(kAnswers); ++i) {
    const PageAnswer& answer = kAnswers[i];
    if (page != answer.page) continue;
    for (int time = 0; time < answer.times; ++time)
      waits_.Send(answer.typed);
    if (answer.then == PageAnswer::Then::kDismiss) Dismiss();
    for (std::size_t done = 0; done <= i; ++done)
      NoLongerExpect({kAnswers[done].page});
    const std::optional<Page> next = WaitForPage();
    if (!next) return LoginResult::kClosed;
    page = *next;
  }
  return waits_.IsAlive() ? LoginResult::kFinished : LoginResult::kClosed;
}

std::optional<Page> LoginDialogue::WaitForPage() {
  const int place = waits_.WaitForProbes(Want::kMatch, Probes());
  if (place == 0 || !waits_.IsAlive()) return std::nullopt;
  return expected_[static_cast<std::size_t>(place - 1)].page;
}

std::vector<ScreenProbe> LoginDialogue::Probes() const {
  std::vector<ScreenProbe> probes;
  for (const PageMark& mark : expected_)
    probes.push_back({mark.row, mark.col, std::u16string(mark.text)});
  return probes;
}

void LoginDialogue::NoLongerExpect(std::initializer_list<Page> pages) {
  std::erase_if(expected_, [&](const PageMark& mark) {
    return std::find(pages.begin(), pages.end(), mark.page) != pages.end();
  });
}

void LoginDialogue::Dismiss() {
  waits_.Send(ScreenWaits::kDismissKey);
  waits_.Send(KeySequence(kKeyDelete));
}

}  // namespace

LoginResult AutoLogin(ScreenWaits& waits, const LoginRequest& request) {
  if (!waits.IsAlive()) return LoginResult::kClosed;
  if (!waits.Session().autoLogin || request.account.empty()) return LoginResult::kFinished;
  const LoginResult result = LoginDialogue(waits, request).Run();
  if (result == LoginResult::kRefused) waits.Disconnect();
  return result;
}

}  // namespace quillet
