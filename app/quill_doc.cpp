#include "app/quill_doc.h"

#include <utility>

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QTimer>

#include "app/browser_emulation.h"
#include "settings/article_list_file.h"

namespace quillet {
namespace {

Q_LOGGING_CATEGORY(sessionLog, "quillet.session", QtWarningMsg)

// Enough for the sender thread to hand a few bytes to the system, too short to be noticed.
constexpr int kFarewellMs = 100;

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
      files_(registry_, std::move(parts.folders)),
      store_(files_, endpoints_.mainHost),
      account_(registry_, std::move(parts.machineTag)),
      session_(OptionsOf(endpoints_, classifier_, messages_)),
      driver_(session_, signalSettings_, parts.signaller),
      emulatesBrowser_(SetBrowserEmulation(registry_)) {
  store_.Load();
  LoadArticleLists(files_, WebHostsOf(endpoints_), articles_, boards_);
  ApplySettings();
  driver_.SetListHit(ListsHoldSomething());
}

CQuillDoc::~CQuillDoc() = default;

void CQuillDoc::Change(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
  if (const std::u16string* const stored = store_.Map().Find(section, key); stored && *stored == value)
    return;
  store_.Change(section, key, value);
  ApplySettings();
}

void CQuillDoc::ApplySettings() {
  display_ = DisplayOf(Fields());
  signalSettings_ = {.flash = Fields().flash, .playSound = Fields().playSound};
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

void CQuillDoc::OnUserActed() {
  if (!driver_.ListHit()) return;
  driver_.SetListHit(false);
  NoteStatus();
}

void CQuillDoc::Open(Site site) {
  next_ = std::move(site);
  if (connecting_) {
    giveUp_ = true;
    return;
  }
  connecting_ = true;
  while (next_) {
    site_ = *std::exchange(next_, std::nullopt);
    giveUp_ = false;
    RunConnect();
  }
  connecting_ = false;
  NoteStatus();
}

void CQuillDoc::RunConnect() {
  ++connections_;
  leaving_ = false;
  bool told = false;
  const auto idle = [&] {
    // Only now does the session carry the new attempt's state.
    if (!std::exchange(told, true)) NoteStatus();
    QCoreApplication::processEvents();
    return !giveUp_;
  };
  if (site_.makeTransport)
    session_.ConnectWith(site_.makeTransport(), idle);
  else
    session_.Connect(site_.address.toStdString(), idle);
}

void CQuillDoc::Reconnect() {
  Open(site_);
}

void CQuillDoc::Disconnect() {
  next_.reset();
  giveUp_ = true;
  if (!connecting_) session_.Disconnect();
  NoteStatus();
}

void CQuillDoc::DisconnectAfterSending() {
  leaving_ = true;
  QTimer::singleShot(kFarewellMs, this, [this, connection = connections_] {
    if (connection == connections_ && !connecting_) Disconnect();
  });
}

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

QString CQuillDoc::Title() const {
  if (Fields().work) return u"新文字文件.txt - 記事本"_qs;
  QString plain = u"Quillet"_qs;
  switch (session_.state) {
    case kStateConnecting:
      return u"%1（連線中）- %2"_qs.arg(site_.ShownName(), plain);
    case kStateConnected: {
      const bool news = driver_.Status() == ConnectionStatus::kSomethingNew;
      return u"%1%2 - %3"_qs.arg(news ? u"● "_qs : QString(), site_.ShownName(), plain);
    }
    case kStateClosed:
      return u"%1（未連線）- %2"_qs.arg(site_.ShownName(), plain);
    default:
      return plain;
  }
}

void CQuillDoc::OnScreen(ScreenReason reason) {
  if (reason != ScreenReason::kUpdated) NoteStatus();
}

void CQuillDoc::NoteStatus() {
  driver_.UpdateStatus();
  emit StatusChanged();
}

}  // namespace quillet
