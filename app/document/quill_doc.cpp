#include "app/document/quill_doc.h"

#include <utility>

#include <QLoggingCategory>

#include "app/document/browser_emulation.h"
#include "platform/clock.h"

namespace quillet {
namespace {

Q_LOGGING_CATEGORY(sessionLog, "quillet.session", QtWarningMsg)

SessionOptions OptionsOf(const Endpoints& endpoints, ScreenWatcher& watcher, NotifyTarget& notify) {
  return {
      .endpoints = endpoints, .watcher = &watcher, .notify = &notify, .debugLine = [](std::string_view line) {
        qCDebug(sessionLog, "%.*s", static_cast<int>(line.size()), line.data());
      }};
}

}  // namespace

CQuillDoc::CQuillDoc(DocumentParts parts)
    : endpoints_(std::move(parts.endpoints)),
      version_(std::move(parts.version)),
      placeFolders_(std::move(parts.placeFolders)),
      cacheFolder_(std::move(parts.cacheFolder)),
      registry_(parts.registry),
      ofSystem_(parts.ofSystem != nullptr ? *parts.ofSystem : parts.registry),
      opener_(parts.opener),
      files_(registry_, std::move(parts.folders)),
      settings_(files_, endpoints_.mainHost),
      account_(registry_, std::move(parts.machineTag)),
      signalSettings_{.flash = [this] { return settings_.Fields().flash; }},
      session_(OptionsOf(endpoints_, classifier_, messages_)),
      driver_(session_, signalSettings_, parts.signaller, parts.clock),
      hostKeys_(files_, [this] { return settings_.Fields().knowHosts; }),
      connection_(
          session_, driver_,
          [this](const QString& address) {
            return QString::fromStdU16String(NameOfSite(settings_.Store().Map(), address.toStdU16String()));
          },
          [this](const Site& site) { return SiteKey(site, endpoints_); },
          [this](const std::string& host) { return hostKeys_.QuestionFor(host); }),
      automations_(connection_, messages_, classifier_.Pages()),
      reconnector_({.connection = connection_,
                    .automations = automations_,
                    .isWanted = [this] { return settings_.Fields().autoReconnect; },
                    .clock = std::move(parts.clock)}),
      bookmarks_({.files = files_,
                  .hosts = WebHostsOf(endpoints_),
                  .settings = settings_.Fields(),
                  .connection = connection_,
                  .automations = automations_}) {
  connect(&settings_, &UserSettings::Changed, this, &CQuillDoc::OnSettingsChanged);
  connect(&connection_, &Connection::SiteReached, this, &CQuillDoc::KeepSite);
  connect(&connection_, &Connection::SiteReached, this, [this] { hostKeys_.OnReached(); });
  connect(&connection_, &Connection::StatusChanged, this, &CQuillDoc::StatusChanged);
  connect(&automations_, &Automations::Changed, this, &CQuillDoc::StatusChanged);
  connect(&reconnector_, &Reconnector::Changed, this, &CQuillDoc::StatusChanged);
}

// What was pushed until then is still bookmarked.
CQuillDoc::~CQuillDoc() {
  automations_.End();
}

void CQuillDoc::Load() {
  files_.Prepare();
  emulatesBrowser_ = SetBrowserEmulation(registry_);
  settings_.Load();
  // An account that an older version kept belongs to the site that is set up now, whatever is chosen later.
  account_.AdoptFor(SiteKey(QString::fromStdU16String(settings_.Fields().site), endpoints_));
  if (!version_.empty()) settings_.Set(&Settings::version, version_);
  bookmarks_.Load();
  connection_.NoteNews(bookmarks_.HoldNews());
}

void CQuillDoc::OnSettingsChanged() {
  signalSettings_.playSound = settings_.Fields().playSound;
  // What the user follows no more is no news.
  if (!bookmarks_.HoldNews()) connection_.NoteNews(false);
}

std::vector<FileProblem> CQuillDoc::TakeFileProblems() {
  std::vector<FileProblem> problems = files_.Problems();
  files_.ClearProblems();
  if (auto problem = registry_.Problem()) problems.push_back(*std::move(problem));
  return problems;
}

void CQuillDoc::KeepSite() {
  const Site& site = connection_.CurrentSite();
  if (!site.Lasts()) return;
  settings_.ChangeMap([&](SettingsMap& map) {
    const std::u16string address = site.address.trimmed().toStdU16String();
    Put(map, {&Settings::site, address});
    NoteSiteUsed(map, address, SecondsNow());
  });
}

SessionFacts CQuillDoc::Facts() const {
  SessionFacts facts = connection_.Facts();
  facts.retrySeconds = reconnector_.SecondsLeft();
  return facts;
}

void CQuillDoc::OnScreen(ScreenReason reason, Sightings seen) {
  connection_.OnScreen(reason, std::move(seen));
  ReviewAnswer();
}

void CQuillDoc::ReviewAnswer() {
  const bool mayWait = connection_.IsConnected() && !automations_.IsBusy();
  const AnswerWait::State now = mayWait ? driver_.Answer() : AnswerWait::State::kNone;
  if (std::exchange(answer_, now) != now) emit StatusChanged();
}

}  // namespace quillet
