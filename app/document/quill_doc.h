// The document: owns the session with everything that is about it, and all that the user keeps (settings,
// lists, account), and hands each out to whoever uses it. Only the window knows it whole. User-interface
// thread.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <QObject>

#include "app/document/bookmarks.h"
#include "app/document/host_keys.h"
#include "app/document/user_settings.h"
#include "app/session/automations.h"
#include "app/session/connection.h"
#include "app/session/message_target.h"
#include "app/session/reconnector.h"
#include "app/session/session_driver.h"
#include "bbs/screen_classifier.h"
#include "core/term_session.h"
#include "platform/machine_tag.h"
#include "platform/opener.h"
#include "settings/account_store.h"

namespace quillet {

// What a document is given; the references outlive it.
struct DocumentParts {
  Endpoints endpoints;
  Signaller& signaller;
  Registry& registry;
  Registry* ofSystem = nullptr;  // for what concerns the whole system; null: `registry`
  Opener& opener;
  DataFiles::Folders folders;
  std::vector<std::filesystem::path> placeFolders{};  // see PlaceBook
  std::filesystem::path cacheFolder{};  // of what can be fetched again; empty: nothing of it is kept
  std::function<std::string()> machineTag = MachineTag;
  SessionDriver::Clock clock{};  // empty: the steady clock
  std::u16string version{};      // the program's, noted among the settings; empty: none is
};

class CQuillDoc : public QObject {
  Q_OBJECT

 public:
  // The character tables must have been loaded.
  explicit CQuillDoc(DocumentParts parts);
  ~CQuillDoc() override;

  // Reads what the user keeps, brings it up to date and prepares the system's embedded browser. Once, before
  // any window.
  void Load();

  Connection& GetConnection() { return connection_; }
  Automations& GetAutomations() { return automations_; }
  Reconnector& GetReconnector() { return reconnector_; }
  HostKeys& GetHostKeys() { return hostKeys_; }
  UserSettings& GetSettings() { return settings_; }
  Bookmarks& GetBookmarks() { return bookmarks_; }
  AccountStore& Account() { return account_; }
  Registry& UserRegistry() { return registry_; }
  Registry& SystemRegistry() { return ofSystem_; }
  SessionDriver& Driver() { return driver_; }
  MessageTarget& Messages() { return messages_; }
  const Endpoints& Hosts() const { return endpoints_; }
  const std::vector<std::filesystem::path>& PlaceFolders() const { return placeFolders_; }
  const std::filesystem::path& CacheFolder() const { return cacheFolder_; }
  // What web addresses are opened with.
  Opener& WebOpener() { return opener_; }

  // Nothing of the user's was there yet when it was loaded.
  bool IsFirstStart() const { return settings_.Store().IsFirstStart(); }
  // What could not be read or written since the last call. What the registry's file suffers from is always
  // among it.
  std::vector<FileProblem> TakeFileProblems();
  // The system's embedded browser takes web articles as a current one does.
  bool EmulatesBrowser() const { return emulatesBrowser_; }

  // Of the connection, and of what is done to have it again.
  SessionFacts Facts() const;
  // A screen with this reason has reached the view, and what has been seen up to it.
  void OnScreen(ScreenReason reason, Sightings seen);
  // Whether the site leaves what the user typed without an answer; kNone while an automation is at work.
  AnswerWait::State Answer() const { return answer_; }
  // A few times a second.
  void ReviewAnswer();

 signals:
  // Of the connection, the reconnector, the automations or the answer.
  void StatusChanged();

 private:
  void OnSettingsChanged();
  // The site was reached: it is the one used last.
  void KeepSite();

  Endpoints endpoints_;
  const std::u16string version_;
  const std::vector<std::filesystem::path> placeFolders_;
  const std::filesystem::path cacheFolder_;
  Registry& registry_;
  Registry& ofSystem_;
  Opener& opener_;
  DataFiles files_;
  UserSettings settings_;
  AccountStore account_;
  SignalSettings signalSettings_;
  ScreenClassifier classifier_;
  // Before the session: its threads post here until it is gone.
  MessageTarget messages_;
  TermSession session_;
  SessionDriver driver_;
  HostKeys hostKeys_;
  Connection connection_;
  Automations automations_;
  Reconnector reconnector_;
  Bookmarks bookmarks_;
  AnswerWait::State answer_ = AnswerWait::State::kNone;
  bool emulatesBrowser_ = false;
};

}  // namespace quillet
