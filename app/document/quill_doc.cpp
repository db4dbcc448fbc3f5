#include "app/document/quill_doc.h"

#include <utility>

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTimer>

#include "app/document/browser_emulation.h"
#include "bbs/automation/article_code_question.h"
#include "bbs/automation/log_out.h"
#include "input/screen_text.h"
#include "platform/clock.h"
#include "settings/article_list_file.h"
#include "settings/bookmarks.h"

namespace quillet {
namespace {

// The list's record of an article that is open.
ArticleItem BookmarkOf(const ArticleInfo& article) {
  ArticleItem item;
  item.postTime = article.postTime;
  item.board = article.board;
  item.code = article.code;
  item.title = article.title;
  return item;
}

Q_LOGGING_CATEGORY(sessionLog, "quillet.session", QtWarningMsg)

// Enough for the sender thread to hand a few bytes to the system, too short to be noticed.
constexpr int kFarewellMs = 100;

// A worker notices within a few milliseconds that it is no longer wanted; one that the peer holds up does not
// hold up the user's key.
constexpr std::chrono::milliseconds kTakeOverPatience{100};

// Where the BBS says why it refuses a login.
constexpr int kRefusalRow = 21;

SessionOptions OptionsOf(const Endpoints& endpoints, ScreenWatcher& watcher, NotifyTarget& notify) {
  return {
      .endpoints = endpoints, .watcher = &watcher, .notify = &notify, .debugLine = [](std::string_view line) {
        qCDebug(sessionLog, "%.*s", static_cast<int>(line.size()), line.data());
      }};
}

}  // namespace

CQuillDoc::CQuillDoc(DocumentParts parts)
    : endpoints_(std::move(parts.endpoints)),
      registry_(parts.registry),
      opener_(parts.opener),
      files_(registry_, std::move(parts.folders)),
      store_(files_, endpoints_.mainHost),
      account_(registry_, std::move(parts.machineTag)),
      session_(OptionsOf(endpoints_, classifier_, messages_)),
      driver_(session_, signalSettings_, parts.signaller, std::move(parts.clock)),
      automation_(session_, classifier_.Pages()) {}

CQuillDoc::~CQuillDoc() {
  EndAutomation();
}

void CQuillDoc::Load() {
  files_.Prepare();
  emulatesBrowser_ = SetBrowserEmulation(registry_);
  store_.Load();
  LoadArticleLists(files_, WebHostsOf(endpoints_), articles_, boards_);
  ApplySettings();
  driver_.SetListHit(ListsHoldSomething());
}

void CQuillDoc::Set(const std::vector<SettingChange>& changes) {
  if (store_.Set(changes)) ApplySettings();
}

void CQuillDoc::ChangeMap(const std::function<void(SettingsMap&)>& change) {
  change(store_.Map());
  store_.Apply();
  store_.Save();
  ApplySettings();
}

void CQuillDoc::RefreshSettings() {
  const std::size_t before = store_.MergedInCount();
  store_.Refresh();
  if (store_.MergedInCount() != before) ApplySettings();
}

void CQuillDoc::ApplySettings() {
  display_ = DisplayOf(Fields());
  signalSettings_ = {.flash = [this] { return store_.Map().Number(u"Basic", u"Flash") != 0; },
                     .playSound = Fields().playSound};
  // What the user follows no more is no news.
  if (driver_.ListHit() && !ListsHoldSomething()) {
    driver_.SetListHit(false);
    NoteStatus();
  }
  emit SettingsChanged();
}

std::vector<FileProblem> CQuillDoc::TakeFileProblems() {
  std::vector<FileProblem> problems = files_.Problems();
  files_.ClearProblems();
  if (auto problem = registry_.Problem()) problems.push_back(*std::move(problem));
  return problems;
}

bool CQuillDoc::ListsHoldSomething() const {
  const auto holds = [&](ArticleListKind kind) { return !articles_.Of(kind).children.empty(); };
  return (Fields().hotArticle && holds(ArticleListKind::kHot)) ||
         (Fields().trackArticle && holds(ArticleListKind::kTracked)) ||
         (Fields().bookmarkUpdate && holds(ArticleListKind::kBookmarks));
}

bool CQuillDoc::OnUserActed() {
  const Activity stopped = CurrentActivity();
  StopActivity();
  if (driver_.ListHit()) {
    driver_.SetListHit(false);
    NoteStatus();
  }
  return stopped != Activity::kPush && stopped != Activity::kGiveMoney;
}

// ---- Connecting

void CQuillDoc::Open(Site site) {
  Begin({std::move(site), nullptr});
}

void CQuillDoc::LogIn(Site site, LoginOrder order) {
  Begin({std::move(site), std::move(order)});
}

void CQuillDoc::Begin(Attempt attempt) {
  next_ = std::move(attempt);
  if (connecting_) {
    giveUp_ = true;
    return;
  }
  connecting_ = true;
  LoginOrder login;
  while (next_) {
    if (std::exchange(login, nullptr)) emit LoginEnded({.how = LoginEnd::How::kTakenOver, .said = {}});
    Attempt now = *std::exchange(next_, std::nullopt);
    site_ = std::move(now.site);
    if (site_.name.isEmpty())
      site_.name = QString::fromStdU16String(NameOfSite(store_.Map(), site_.address.toStdU16String()));
    login = std::move(now.login);
    giveUp_ = false;
    EndAutomation();
    seen_ = {};
    driver_.ForgetTyped();
    emit ConnectionBegins();
    RunConnect(login != nullptr);
  }
  connecting_ = false;
  NoteStatus();
  KeepSite();
  if (login) StartLogin(login);
}

void CQuillDoc::KeepSite() {
  const EndReason end = session_.LastEnd().reason;
  const bool wasMade = IsConnected() || end == EndReason::kClosedByPeer || end == EndReason::kReadFailed;
  if (!wasMade || !site_.Lasts()) return;
  ChangeMap([this](SettingsMap& map) {
    const std::u16string address = site_.address.trimmed().toStdU16String();
    Put(map, {&Settings::site, address});
    NoteSiteUsed(map, address, SecondsNow());
  });
}

void CQuillDoc::RunConnect(bool autoLogin) {
  leaving_ = false;
  bool told = false;
  const auto idle = [&] {
    // Only now does the session carry the new attempt's state.
    if (!std::exchange(told, true)) NoteStatus();
    QCoreApplication::processEvents();
    return !giveUp_;
  };
  const ConnectTraits traits{.isBbs = site_.isBbs, .autoLogin = autoLogin};
  if (site_.makeTransport)
    session_.ConnectWith(site_.makeTransport(), idle, traits);
  else
    session_.Connect(site_.address.toStdString(), idle, traits);
}

void CQuillDoc::Reconnect() {
  Open(site_);
}

void CQuillDoc::Disconnect() {
  next_.reset();
  giveUp_ = true;
  EndAutomation();
  if (!connecting_) session_.Disconnect();
  NoteStatus();
}

void CQuillDoc::DisconnectAfterSending() {
  leaving_ = true;
  QTimer::singleShot(kFarewellMs, this, [this, connection = session_.connectionNumber.load()] {
    if (connection == session_.connectionNumber && !connecting_) Disconnect();
  });
}

bool CQuillDoc::LogOut() {
  if (!IsConnected() || connecting_) return false;
  StopActivity();
  const bool started = automation_.Run([](ScreenWaits& waits) { return quillet::LogOut(waits); },
                                       [this](LogOutResult) {
                                         NoteStatus();
                                         emit LogOutEnded(LogOutEnd::kDone);
                                       });
  if (!started) return false;
  leaving_ = true;
  activity_ = Activity::kLogOut;
  NoteStatus();
  return true;
}

// ---- Automation

void CQuillDoc::StartLogin(const LoginOrder& order) {
  if (!IsConnected()) {
    emit LoginEnded({.how = LoginEnd::How::kNotConnected, .said = {}});
    return;
  }
  struct Outcome {
    LoginResult result;
    std::u16string said;
  };
  const bool started = automation_.Run(
      [order](ScreenWaits& waits) {
        const LoginResult result = AutoLogin(waits, *order);
        return Outcome{result, RowAsText(waits.Seen(), kRefusalRow)};
      },
      [this, order](const Outcome& outcome) { OnLoginDone(order, outcome.result, outcome.said); });
  if (started)
    activity_ = Activity::kLogin;
  else
    emit LoginEnded({.how = LoginEnd::How::kTakenOver, .said = {}});
  NoteStatus();
}

void CQuillDoc::OnLoginDone(const LoginOrder& order, LoginResult result, const std::u16string& said) {
  LoginEnd end;
  switch (result) {
    case LoginResult::kFinished:
      // Without a password the user goes on by himself, perhaps with another id.
      if (order->password.empty()) {
        messages_.Tell([&](ScreenWitness& witness) { witness.Login().Expect(order->account); });
      } else {
        messages_.Tell([&](ScreenWitness& witness) { witness.Login().Set(order->account); });
        seen_.loginId = order->account;
      }
      break;
    case LoginResult::kRefused:
      end = {.how = LoginEnd::How::kRefused, .said = QString::fromStdU16String(said)};
      break;
    case LoginResult::kClosed:
      end.how = LoginEnd::How::kNotConnected;
      break;
  }
  NoteStatus();
  emit LoginEnded(end);
}

bool CQuillDoc::JumpTo(const ArticleReference& article) {
  if (!IsConnected() || connecting_) return false;
  const bool started = automation_.Run(
      [article](ScreenWaits& waits) {
        const JumpResult result = JumpToArticle(waits, article.board, article.code);
        if (result == JumpResult::kFound) waits.OpenArticleUnderCursor(ArticlePart::kTop);
        return result;
      },
      [this, article](JumpResult result) {
        NoteStatus();
        emit JumpEnded(article, result);
      });
  if (!started) return false;
  activity_ = Activity::kJump;
  NoteStatus();
  return true;
}

bool CQuillDoc::IsOpenArticleBookmarked() const {
  return HasBookmarkOf(OpenArticle());
}

bool CQuillDoc::HasBookmarkOf(const ArticleInfo& article) const {
  return article.IsArticle() && IsBookmarked(articles_.Of(ArticleListKind::kBookmarks), BookmarkOf(article));
}

bool CQuillDoc::ToggleBookmark() {
  ArticleInfo article = OpenArticle();
  if (!article.IsArticle() || !IsConnected() || connecting_) return false;
  // One that is there is found without its code.
  if (!article.code.empty() || IsOpenArticleBookmarked()) {
    ToggleBookmarkOf(article);
    return true;
  }
  const bool started = automation_.Run([](ScreenWaits& waits) { return AskArticleCode(waits); },
                                       [this, article](const std::u16string& code) mutable {
                                         article.code = code;
                                         NoteStatus();
                                         ToggleBookmarkOf(article);
                                       });
  if (!started) return false;
  activity_ = Activity::kAskCode;
  NoteStatus();
  return true;
}

void CQuillDoc::ToggleBookmarkOf(const ArticleInfo& article) {
  const ArticleItem item = BookmarkOf(article);
  const bool adds = !IsBookmarked(articles_.Of(ArticleListKind::kBookmarks), item);
  if (article.code.empty() && adds) {
    emit BookmarkEnded(BookmarkEnd::kNoCode);
    return;
  }
  // Another program may have done meanwhile what is wished here.
  ChangeArticleList(ArticleListKind::kBookmarks, [&](ArticleFolder& root) {
    if (IsBookmarked(root, item) != adds) quillet::ToggleBookmark(root, item);
  });
  emit BookmarkEnded(adds ? BookmarkEnd::kAdded : BookmarkEnd::kRemoved);
}

bool CQuillDoc::AddBookmark(const ArticleInfo& article) {
  const ArticleItem item = BookmarkOf(article);
  if (article.code.empty() || IsBookmarked(articles_.Of(ArticleListKind::kBookmarks), item)) return false;
  ChangeArticleList(ArticleListKind::kBookmarks, [&](ArticleFolder& root) {
    // Another program may have added it meanwhile.
    if (!IsBookmarked(root, item)) quillet::ToggleBookmark(root, item);
  });
  return true;
}

// ---- Pushing

bool CQuillDoc::PushOn(PushOrder order) {
  const ArticleInfo article = OpenArticle();
  if (!article.IsArticle() || !IsConnected() || connecting_) return false;
  order.author = article.author;
  order.asksCode = Fields().markAfterPush && article.code.empty() && !IsOpenArticleBookmarked();
  auto ledger = std::make_shared<PushLedger>(order);
  const bool started = automation_.Run(
      [order = std::move(order), ledger](ScreenWaits& waits) { return RunPushOrder(waits, order, *ledger); },
      [this, article](const PushRunResult& result) { OnPushesDone(result, article); });
  if (!started) return false;
  pushes_ = std::move(ledger);
  activity_ = Activity::kPush;
  NoteStatus();
  return true;
}

void CQuillDoc::OnPushesDone(const PushRunResult& result, ArticleInfo article) {
  if (!result.code.empty()) article.code = result.code;
  NoteStatus();
  // The screen that shows the article again may come later than this.
  messages_.Tell([](ScreenWitness& witness) { witness.ForgetPush(); });
  if (result.pushed > 0) {
    if (Fields().markAfterPush) AddBookmark(article);
    emit ArticlePushed();
  }
  emit PushesEnded(result);
}

void CQuillDoc::BookmarkAfterPush(ArticleInfo article) {
  if (!Fields().markAfterPush || !article.IsArticle() || HasBookmarkOf(article)) return;
  const auto add = [this](const ArticleInfo& pushed) {
    if (AddBookmark(pushed)) emit BookmarkEnded(BookmarkEnd::kAdded);
  };
  if (!article.code.empty()) return add(article);
  // The BBS tells the code of the article that is open.
  if (!IsSameArticle(article, OpenArticle())) return;
  const bool started = automation_.Run([](ScreenWaits& waits) { return AskArticleCode(waits); },
                                       [this, article, add](const std::u16string& code) mutable {
                                         article.code = code;
                                         NoteStatus();
                                         add(article);
                                       });
  if (!started) return;
  activity_ = Activity::kAskCode;
  NoteStatus();
}

// ---- Money and lists

bool CQuillDoc::GiveMoney(MoneyOrder order) {
  if (!IsConnected() || connecting_) return false;
  auto ledger = std::make_shared<MoneyLedger>(order.gifts);
  const bool started = automation_.Run(
      [order = std::move(order), ledger](ScreenWaits& waits) {
        RunMoneyOrder(waits, order, *ledger);
        return ledger->Result();
      },
      [this](const MoneyRunResult& result) {
        NoteStatus();
        emit MoneyEnded(result);
      });
  if (!started) return false;
  money_ = std::move(ledger);
  activity_ = Activity::kGiveMoney;
  NoteStatus();
  return true;
}

void CQuillDoc::ChangeArticleList(ArticleListKind kind, const std::function<void(ArticleFolder&)>& change) {
  quillet::ChangeArticleList(files_, WebHostsOf(endpoints_), articles_, kind, change);
  emit ArticleListsChanged();
}

bool CQuillDoc::StopActivity() {
  if (!automation_.Cancel()) return false;
  automation_.WaitEnded(kTakeOverPatience);
  NoteStatus();
  if (activity_ == Activity::kLogin) emit LoginEnded({.how = LoginEnd::How::kTakenOver, .said = {}});
  if (activity_ == Activity::kLogOut) {
    leaving_ = false;
    emit LogOutEnded(LogOutEnd::kTakenOver);
  }
  if (activity_ == Activity::kPush) OnPushesDone(pushes_->Result(), OpenArticle());
  if (activity_ == Activity::kGiveMoney) emit MoneyEnded(money_->Result());
  return true;
}

ActivityProgress CQuillDoc::CurrentProgress() const {
  switch (CurrentActivity()) {
    case Activity::kGiveMoney:
      return {.done = money_->Tried(), .total = money_->Total()};
    case Activity::kPush: {
      const PushRunResult result = pushes_->Result();
      return {.done = result.pushed, .total = result.total, .waitSeconds = result.waitSeconds};
    }
    default:
      return {};
  }
}

void CQuillDoc::EndAutomation() {
  StopActivity();
  // Only the end of the connection frees a worker that waits for a peer which does not read.
  if (automation_.IsBusy()) session_.Disconnect();
  automation_.Join();
}

// ---- What the user is told

SessionFacts CQuillDoc::Facts() const {
  TransportEnd end = session_.LastEnd();
  if (leaving_ && end.reason == EndReason::kClosedByPeer) end.reason = EndReason::kClosedByUser;
  return {.state = session_.state,
          .siteName = site_.ShownName(),
          .host = QString::fromStdString(session_.host),
          .port = QString::fromStdString(session_.port),
          .isRecording = site_.makeTransport != nullptr,
          .end = std::move(end),
          .unsentBytes = session_.UnsentBytes()};
}

void CQuillDoc::OnScreen(ScreenReason reason, Sightings seen) {
  const bool another = reason != ScreenReason::kUpdated || seen.loginId != seen_.loginId;
  seen_ = std::move(seen);
  if (another) NoteStatus();
  ReviewAnswer();
  // What an automation pushes it tells of itself, perhaps only after its last screen.
  if (!seen_.pushed || automation_.IsBusy() || automation_.IsRunning()) return;
  if (IsSameArticle(*seen_.pushed, OpenArticle())) emit ArticlePushed();
  BookmarkAfterPush(*seen_.pushed);
}

void CQuillDoc::ReviewAnswer() {
  const bool mayWait = IsConnected() && !connecting_ && !automation_.IsBusy();
  const AnswerWait::State now = mayWait ? driver_.Answer() : AnswerWait::State::kNone;
  if (std::exchange(answer_, now) != now) NoteStatus();
}

void CQuillDoc::NoteStatus() {
  driver_.UpdateStatus();
  emit StatusChanged();
}

}  // namespace quillet
