// The document: owns the session with its classifier and driver, and all that the user keeps (settings,
// lists, account); opens and closes the connection without ever blocking the window. User-interface thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QObject>
#include <QString>

#include "app/message_target.h"
#include "app/session_driver.h"
#include "app/session_words.h"
#include "bbs/screen_classifier.h"
#include "core/term_session.h"
#include "platform/machine_tag.h"
#include "settings/account_store.h"
#include "settings/article_lists.h"
#include "settings/settings_store.h"

namespace quillet {

// Where to connect to.
struct Site {
  QString address;
  QString name;  // shown instead of the address when not empty
  // Makes the transport when the address does not: a recording, a test's script.
  std::function<std::unique_ptr<Transport>()> makeTransport;

  const QString& ShownName() const { return name.isEmpty() ? address : name; }
};

// What a document is given; the references outlive it.
struct DocumentParts {
  Endpoints endpoints;
  Signaller& signaller;
  Registry& registry;
  DataFiles::Folders folders;
  std::function<std::string()> machineTag = MachineTag;
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
  void Reconnect();
  // Ends the connection or the attempt to make one.
  void Disconnect();
  // The user has logged out: the connection will be closed after what was sent last has had time to leave.
  void DisconnectAfterSending();
  bool IsConnecting() const { return connecting_; }
  bool IsConnected() const { return session_.state == kStateConnected; }

  SessionFacts Facts() const;
  // "site - Quillet", with what the user should know of its state; in work mode a text editor's.
  QString Title() const;

  TermSession& Session() { return session_; }
  SessionDriver& Driver() { return driver_; }
  MessageTarget& Messages() { return messages_; }
  const PageTests& Pages() const { return classifier_.Pages(); }
  const Endpoints& Hosts() const { return endpoints_; }

  // A dialog that changes it calls ApplySettings when it has done so; single values go through Change.
  SettingsStore& Store() { return store_; }
  const Settings& Fields() const { return store_.Fields(); }
  const DisplaySettings& Display() const { return display_; }
  AccountStore& Account() { return account_; }
  ArticleLists& Articles() { return articles_; }
  BoardWeights& Boards() { return boards_; }
  // One value, applied and saved at once. Nothing when it stands there already.
  void Change(std::u16string_view section, std::u16string_view key, std::u16string_view value);
  // Brings the store's fields to everything that is made of them.
  void ApplySettings();
  // What could not be read or written since the last call. What the registry's file suffers from is always
  // among it.
  std::vector<FileProblem> TakeFileProblems();
  // The system's embedded browser takes web articles as a current one does.
  bool EmulatesBrowser() const { return emulatesBrowser_; }

  // A screen with this reason has reached the view.
  void OnScreen(ScreenReason reason);
  // The user has typed to the site, and so has seen that his lists hold something.
  void OnUserActed();

 signals:
  // State, status or title are different from before.
  void StatusChanged();
  // A setting or a list is different, or could not be saved.
  void SettingsChanged();

 private:
  // Something that the user follows stands in the lists.
  bool ListsHoldSomething() const;
  void RunConnect();
  void NoteStatus();

  Endpoints endpoints_;
  Registry& registry_;
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
  Site site_;
  std::optional<Site> next_;
  bool emulatesBrowser_ = false;
  bool connecting_ = false;
  bool giveUp_ = false;
  bool leaving_ = false;      // the user logged out: whoever hangs up first, he ended it
  unsigned connections_ = 0;  // made so far; tells a late timer that its connection is gone
};

}  // namespace quillet
