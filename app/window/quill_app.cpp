#include "app/window/quill_app.h"

#include <cstdio>

#include <QFileInfo>
#include <QTimer>

#include "app/document/resources.h"
#include "app/messages/link_messages.h"
#include "app/window/start_aim.h"
#include "app/window/toolkit.h"
#include "app/window/window_signaller.h"
#include "core/transport/replay_transport.h"
#include "platform/console.h"
#include "platform/link_handler.h"

namespace quillet {
namespace {

constexpr int kExitWrongUsage = 2;

void NameTheProgram() {
  QCoreApplication::setApplicationName("Quillet");
  QCoreApplication::setApplicationVersion(QUILLET_VERSION);
}

// --help and --version are answered where no window can be opened too.
bool AsksForTextOnly(int argc, char** argv) {
  for (int i = 1; i < argc; ++i)
    for (const char* option : {"--help", "-h", "-?", "--version", "-v"})
      if (std::string_view(argv[i]) == option) return true;
  return false;
}

int Report(const StartParse& parsed) {
  const bool wrong = parsed.result == StartParse::Result::kWrong;
  std::fputs(qPrintable(parsed.text), wrong ? stderr : stdout);
  return wrong ? kExitWrongUsage : 0;
}

UserPlaces PlacesFor(const StartOptions& options) {
  if (!options.tourFolder.isEmpty()) return PlacesForOneRun();
  if (options.profileFolder.isEmpty()) return OwnPlaces();
  return PlacesOfProfile(std::filesystem::absolute(options.profileFolder.toStdU16String()));
}

}  // namespace

CQuillApp::CQuillApp(QApplication& toolkit, StartOptions options, TourSettings tour)
    : toolkit_(toolkit),
      options_(std::move(options)),
      tour_(std::move(tour)),
      opener_([this] { return OtherBrowser(SystemRegistry()); },
              [this](const std::u16string& address) {
                QMetaObject::invokeMethod(
                    &toolkit_, [this, address] { OnNotOpened(address); }, Qt::QueuedConnection);
              }) {
  tour_.folder = options_.tourFolder;
  places_ = PlacesFor(options_);
}

CQuillApp::~CQuillApp() = default;

int CQuillApp::Run() {
  PrepareToolkit();
  InitInstance();
  frame_->show();
  // Where no window manager gives the keyboard away, one has to ask for it.
  frame_->activateWindow();
  if (!IsTour()) TakeLinks();
  QTimer::singleShot(0, frame_.get(), [this] { Start(); });
  return toolkit_.exec();
}

void CQuillApp::InitInstance() {
  places_.registry->MakeKey(kRegistryPath);
  if (!IsTour())
    RefreshLinkHandler(SystemRegistry(), [](std::string_view what) {
      std::fwrite(what.data(), sizeof what.front(), what.size(), stderr);
    });
  ssh_.emplace();
  Resources resources = LoadResources(places_.folders.data);
  auto signaller = std::make_unique<WindowSignaller>();
  doc_ =
      std::make_unique<CQuillDoc>(DocumentParts{.endpoints = std::move(resources.endpoints),
                                                .signaller = *signaller,
                                                .registry = *places_.registry,
                                                .ofSystem = &SystemRegistry(),
                                                .opener = opener_,
                                                .folders = places_.folders,
                                                .placeFolders = {resources.dataFolder, places_.folders.data},
                                                .cacheFolder = places_.cache,
                                                .version = QStringLiteral(QUILLET_VERSION).toStdU16String()});
  doc_->Load();
  demo_ = std::make_unique<DemoHost>(options_.contentFolder.isEmpty()
                                         ? DefaultDemoContent()
                                         : std::filesystem::path(options_.contentFolder.toStdU16String()),
                                     doc_->Hosts());
  frame_ = std::make_unique<CMainFrame>(*doc_);
  signaller->SetWindow(frame_.get());
  signaller_ = std::move(signaller);
  QObject::connect(frame_.get(), &CMainFrame::DemoRequested, frame_.get(),
                   [this](const LoginOrder& login, TransportKind way) { OpenDemo(login, way); });
  frame_->View().ShowNotice(DescribeTables(resources.tables, resources.dataFolder));
}

void CQuillApp::TakeLinks() {
  links_ = std::make_unique<LinkIntake>(WebHostsOf(doc_->Hosts()));
  QObject::connect(links_.get(), &LinkIntake::Arrived, frame_.get(), &CMainFrame::ShowArticle);
}

void CQuillApp::OnNotOpened(const std::u16string& address) {
  if (frame_) frame_->View().ShowNotice(DescribeNoBrowser(address));
}

void CQuillApp::Start() {
  // A recording or a walk is looked at by whoever wants to see that and nothing else.
  if (doc_->IsFirstStart() && !IsTour() && options_.replayFile.isEmpty()) frame_->View().AskAboutPictures();
  if (IsTour())
    RunTour();
  else if (options_.demo)
    OpenDemo(nullptr, options_.demoWay);
  else if (!options_.replayFile.isEmpty())
    OpenReplay();
  else if (!options_.address.isEmpty())
    doc_->GetConnection().Open({.address = options_.address, .name = {}, .makeTransport = {}});
  else
    frame_->View().WhenSeen([this] { frame_->View().AskLogin(); });
}

void CQuillApp::OpenDemo(const LoginOrder& login, TransportKind way) {
  const std::variant<Site, QString> demo = demo_->SiteBy(way);
  if (const auto* const site = std::get_if<Site>(&demo))
    doc_->GetConnection().Open(*site, login);
  else
    frame_->View().ShowNotice(DescribeDemoFailure(std::get<QString>(demo)));
}

void CQuillApp::OpenReplay() {
  const std::filesystem::path file(options_.replayFile.toStdU16String());
  const auto speed = static_cast<std::uint32_t>(options_.speed.value_or(0));
  doc_->GetConnection().Open(
      {.address = options_.replayFile,
       .name = QFileInfo(options_.replayFile).fileName(),
       .makeTransport = [file, speed] { return std::make_unique<ReplayTransport>(file, speed); },
       .isRecording = true});
}

void CQuillApp::RunTour() {
  OpenDemo(nullptr, options_.demoWay);
  const TourResult result = WalkTour(*frame_, tour_);
  std::fputs(qPrintable(result.message + '\n'), result.ok ? stdout : stderr);
  toolkit_.exit(result.ok ? 0 : 1);
}

int RunQuillet(int argc, char** argv) {
  NameProcess();
  const std::u16string commandLine = CommandLineText(argc, argv);
  const StartAim aim = AimOfStart(commandLine, [] { return WebHostsOf(LoadAllEndpoints()); });
  if (aim.kind != StartAim::Kind::kWindow) return PassLinkOn(aim, commandLine);
  JoinConsole();
  NameTheProgram();
  if (AsksForTextOnly(argc, argv)) {
    const QCoreApplication windowless(argc, argv);
    return Report(ParseStartOptions(QCoreApplication::arguments()));
  }
  // Where the compiler emulates a thread's own variables, as for Windows, the toolkit frees what its
  // expressions are run with behind the thread's end, and the program hangs at its own.
  qputenv("QT_ENABLE_REGEXP_JIT", "0");
  QApplication toolkit(argc, argv);
  StartParse parsed = ParseStartOptions(QApplication::arguments());
  if (parsed.result != StartParse::Result::kRun) return Report(parsed);
  CQuillApp app(toolkit, std::move(parsed.options));
  return app.Run();
}

}  // namespace quillet
