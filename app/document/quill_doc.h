// The document: owns the session with its classifier, driver and automation, and all that the user keeps
// (settings, lists, account); opens and closes the connection without ever blocking the window.
// User-interface thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QObject>
#include <QString>

#include "app/session/automation.h"
#include "app/session/message_target.h"
#include "app/session/session_driver.h"
#include "app/session/session_facts.h"
#include "app/session/site.h"
#include "app/session/wiped_text.h"
#include "bbs/article_info.h"
#include "bbs/automation/article_jump.h"
#include "bbs/automation/money_run.h"
#include "bbs/automation/push_run.h"
#include "bbs/screen_classifier.h"
#include "core/term_session.h"
#include "platform/machine_tag.h"
#include "platform/opener.h"
#include "settings/account_store.h"
#include "settings/article_lists.h"
#include "settings/recent_sites.h"
#include "settings/settings_store.h"

namespace quillet {

// What a document is given; the references outlive it.
struct DocumentParts {
  Endpoints endpoints;
  Signaller& signaller;
  Registry& registry;
  Opener& opener;
  DataFiles::Folders folders;
  std::function<std::string()> machineTag = MachineTag;
  SessionDriver::Clock clock{};  // empty: the steady clock
};

class CQuillDoc : public QObject {
  Q_OBJECT

 public:
  // The character tables must have been loaded. Reads the user's files.
  explicit CQuillDoc(DocumentParts parts);
  ~CQuillDoc() override;

  // Connects, and returns when the attempt has ended; events go on being handled meanwhile. Called again from
  // within, it ends the attempt and starts over with the new site.
  void Open(Site site);
  // The same, and then answers the login dialogue; LoginEnded follows in any case, perhaps before this
  // returns.
  void LogIn(Site site, LoginOrder order);
  // Without a login.
  void Reconnect();
  // Ends the connection or the attempt to make one.
  void Disconnect();
  // The user has logged out: the connection will be closed after what was sent last has had time to leave.
  void DisconnectAfterSending();
  // Says goodbye to the BBS in its main menu; LogOutEnded follows in any case. The connection is left for the
  // caller to close. False, and nothing happens, without a connection or while an automation is held up.
  bool LogOut();
  bool IsConnecting() const { return connecting_; }
  bool IsConnected() const { return session_.state == SessionState::kConnected; }

  // Goes to an article and opens it; JumpEnded follows unless the user takes over. False, and nothing
  // happens, without a connection or while another automation is at work.
  bool JumpTo(const ArticleReference& article);
  // Puts the open article among the bookmarks, or takes it out; BookmarkEnded follows. Asks the BBS for the
  // article's code where it is not known. False, and nothing happens, without an open article or a
  // connection, or while another automation is at work.
  bool ToggleBookmark();
  bool IsOpenArticleBookmarked() const;
  // Gives money to one user after another, then goes back to the article; MoneyEnded follows in any case,
  // also when the user takes over. False, and nothing happens, without a connection or while another
  // automation is at work.
  bool GiveMoney(MoneyOrder order);
  // Pushes a longer text piece by piece onto the open article, whose author the order need not name;
  // PushesEnded follows in any case, also when the user takes over. False, and nothing happens, without an
  // open article or a connection, or while another automation is at work.
  bool PushOn(PushOrder order);
  // What an automation is doing for the user now.
  Activity CurrentActivity() const { return automation_.IsRunning() ? activity_ : Activity::kNone; }
  // How far it is, where it counts.
  ActivityProgress CurrentProgress() const;
  // An automation has not ended, even if the user has taken over.
  bool IsAutomationBusy() const { return automation_.IsBusy(); }
  // The user takes over. False when there was nothing to take over.
  bool StopActivity();

  // The last one given to Open or LogIn.
  const Site& CurrentSite() const { return site_; }
  SessionFacts Facts() const;

  TermSession& Session() { return session_; }
  SessionDriver& Driver() { return driver_; }
  MessageTarget& Messages() { return messages_; }
  const PageTests& Pages() const { return classifier_.Pages(); }
  const PageFacts& PageReader() const { return facts_; }
  const Endpoints& Hosts() const { return endpoints_; }
  // What web addresses are opened with.
  Opener& WebOpener() { return opener_; }

  // A dialog that changes it calls ApplySettings when it has done so; single values go through Change.
  SettingsStore& Store() { return store_; }
  const Settings& Fields() const { return store_.Fields(); }
  const DisplaySettings& Display() const { return display_; }
  AccountStore& Account() { return account_; }
  Registry& UserRegistry() { return registry_; }
  const ArticleInfo& OpenArticle() const { return seen_.article; }
  // An article is open, even where its header has not been seen.
  bool IsArticleOpen() const { return seen_.articleOpen; }
  // Empty while nobody is known to be logged in.
  const std::u16string& LoginId() const { return seen_.loginId; }
  const ArticleLists& Articles() const { return articles_; }
  // Takes in what another program has written to the list's file, changes the list and saves it.
  void ChangeArticleList(ArticleListKind kind, const std::function<void(ArticleFolder&)>& change);
  BoardWeights& Boards() { return boards_; }
  // One value, applied and saved at once. Nothing when it stands there already.
  void Change(std::u16string_view section, std::u16string_view key, std::u16string_view value);
  // The same for what is more than one value.
  void ChangeMap(const std::function<void(SettingsMap&)>& change);
  // Where the user has been, the last site first.
  std::vector<RecentSite> RecentSites() const { return RecentSitesIn(store_.Map()); }
  // Takes in what another window of the program has saved meanwhile; not while a dialog shows the settings.
  void RefreshSettings();
  // Brings the store's fields to everything that is made of them.
  void ApplySettings();
  // What could not be read or written since the last call. What the registry's file suffers from is always
  // among it.
  std::vector<FileProblem> TakeFileProblems();
  // The system's embedded browser takes web articles as a current one does.
  bool EmulatesBrowser() const { return emulatesBrowser_; }

  // A screen with this reason has reached the view, and what has been seen up to it.
  void OnScreen(ScreenReason reason, Sightings seen);
  // Whether the site leaves what the user typed without an answer; kNone while an automation is at work.
  AnswerWait::State Answer() const { return answer_; }
  // A few times a second.
  void ReviewAnswer();
  // The user is about to type to the site: he has seen that his lists hold something, and no automation types
  // between his keys. False when that has stopped one that was filling in prompts: what he types was meant
  // for another page, and must not go out.
  [[nodiscard]] bool OnUserActed();

 signals:
  // A connection is about to be made.
  void ConnectionBegins();
  void LoginEnded(const LoginEnd& end);
  void LogOutEnded(quillet::LogOutEnd end);
  void JumpEnded(const ArticleReference& article, JumpResult result);
  void BookmarkEnded(quillet::BookmarkEnd end);
  void MoneyEnded(const quillet::MoneyRunResult& result);
  void PushesEnded(const quillet::PushRunResult& result);
  // The user, or an automation of his, has pushed the article that is open.
  void ArticlePushed();
  // One of the lists of articles is different.
  void ArticleListsChanged();
  // State, status or title are different from before.
  void StatusChanged();
  // A setting or a list is different, or could not be saved.
  void SettingsChanged();

 private:
  // Something that the user follows stands in the lists.
  bool ListsHoldSomething() const;
  struct Attempt {
    Site site;
    LoginOrder login;  // null: none
  };
  void Begin(Attempt attempt);
  void RunConnect(bool autoLogin);
  // The connection was made: this is the site used last.
  void KeepSite();
  void StartLogin(const LoginOrder& order);
  void ToggleBookmarkOf(const ArticleInfo& article);
  // Among the bookmarks unless it is there already, or its code is not known; whether it is new there.
  bool AddBookmark(const ArticleInfo& article);
  bool HasBookmarkOf(const ArticleInfo& article) const;
  // "MarkAfterPush", for a push made by hand.
  void BookmarkAfterPush(ArticleInfo article);
  void OnPushesDone(const PushRunResult& result, ArticleInfo article);
  void OnLoginDone(const LoginOrder& order, LoginResult result, const std::u16string& said);
  // Before the connection that it runs on is replaced or closed: nothing of it is left when this returns.
  void EndAutomation();
  void NoteStatus();

  Endpoints endpoints_;
  Registry& registry_;
  Opener& opener_;
  DataFiles files_;
  SettingsStore store_;
  AccountStore account_;
  ArticleLists articles_;
  BoardWeights boards_;
  DisplaySettings display_;
  SignalSettings signalSettings_;
  ScreenClassifier classifier_;
  // Before the session: its threads post here until it is gone.
  MessageTarget messages_;
  TermSession session_;
  SessionDriver driver_;
  Automation automation_;
  Activity activity_ = Activity::kNone;  // of the last automation
  std::shared_ptr<MoneyLedger> money_;   // of the last order
  std::shared_ptr<PushLedger> pushes_;   // of the last order
  PageFacts facts_;
  Sightings seen_;  // up to the screen that the view took last
  AnswerWait::State answer_ = AnswerWait::State::kNone;
  Site site_;
  std::optional<Attempt> next_;
  bool emulatesBrowser_ = false;
  bool connecting_ = false;
  bool giveUp_ = false;
  bool leaving_ = false;  // the user logged out: whoever hangs up first, he ended it
};

}  // namespace quillet
