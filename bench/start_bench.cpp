// How long the program takes from its start to its first painted frame, beside a bare window of the toolkit's
// with one label, and how long one lives that hands a link over, beside a program that does nothing; by turns
// in processes of their own.
//
//   start_bench              all, medians and their ratios
//   start_bench --child WHAT of "bare", which prints nanoseconds of the steady clock behind its first
//                            frame; of "core", which does nothing
//   start_bench --profile FOLDER, start_bench --single-argument LINK
//                            are the program, as it is called by these
#include <atomic>
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include <QApplication>
#include <QEvent>
#include <QEventLoop>
#include <QLabel>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include "app/window/quill_app.h"
#include "platform/instance_link.h"

#include "bench/statistics.h"

namespace quillet {
namespace {

std::int64_t NowNs() {
  return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Ends the process once the first window has been painted.
class FirstFrame : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint && !isPainted_) {
      isPainted_ = true;
      // Behind everything that this frame is made of.
      QTimer::singleShot(0, this, [] {
        std::printf("%" PRId64 "\n", NowNs());
        std::fflush(stdout);
        std::_Exit(0);
      });
    }
    return false;
  }

 private:
  bool isPainted_ = false;
};

void WatchForFirstFrame() {
  if (qobject_cast<QApplication*>(qApp) != nullptr) qApp->installEventFilter(new FirstFrame(qApp));
}
Q_COREAPP_STARTUP_FUNCTION(WatchForFirstFrame)

int RunBare(int argc, char** argv) {
  const QApplication toolkit(argc, argv);
  QWidget window;
  window.resize(1280, 720);
  QLabel label(QStringLiteral("Quillet"), &window);
  window.show();
  return QApplication::exec();
}

// Of a process of this program's: what it has written once it has ended, and when it was begun.
struct Child {
  explicit Child(const QStringList& arguments) {
    QProcess process;
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    begin = NowNs();
    process.start(QCoreApplication::applicationFilePath(), arguments);
    loop.exec();
    end = NowNs();
    written = process.readAllStandardOutput();
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) return;
    std::fprintf(stderr, "start_bench: %s ends wrongly\n", qPrintable(arguments.join(u' ')));
    std::exit(1);
  }

  std::int64_t begin = 0, end = 0;
  QByteArray written;
};

// In milliseconds.
double LifeOf(const QStringList& arguments) {
  const Child child(arguments);
  return static_cast<double>(child.end - child.begin) / 1e6;
}

// In milliseconds.
double TimeOfStart(const QStringList& arguments) {
  const Child child(arguments);
  const std::int64_t painted = child.written.trimmed().toLongLong();
  if (painted != 0) return static_cast<double>(painted - child.begin) / 1e6;
  std::fprintf(stderr, "start_bench: %s shows no window\n", qPrintable(arguments.join(u' ')));
  std::exit(1);
}

void CompareHandOver() {
  constexpr int kRounds = 50;
  std::atomic<int> taken = 0;
  const auto window = ListenForLinks([&taken](const std::u16string&) { return ++taken > 0; });
  const QString link = QStringLiteral("https://www.bbs.example/bbs/Cats/M.1791980320.A.9CD.html");
  std::vector<double> ours, bare, ratios;
  for (int round = 0; round < kRounds; ++round) {
    ours.push_back(LifeOf({QStringLiteral("--single-argument"), link}));
    bare.push_back(LifeOf({QStringLiteral("--child"), QStringLiteral("core")}));
    ratios.push_back(ours.back() / bare.back());
  }
  std::printf(
      "handing a link over: %.1f ms, a program that does nothing %.1f; %.2f times as long (%d of %d taken)\n",
      PercentilesOf(ours).median, PercentilesOf(bare).median, PercentilesOf(ratios).median, taken.load(),
      kRounds);
}

int Compare(int argc, char** argv) {
  const QCoreApplication loops(argc, argv);
  constexpr int kRounds = 25;
  // Nothing of the user's is read, and nothing is left in it.
  const QTemporaryDir home;
  for (const char* variable :
       {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
    qputenv(variable, home.path().toUtf8());
  std::vector<double> ours, bare, ratios;
  for (int round = 0; round < kRounds; ++round) {
    ours.push_back(TimeOfStart({QStringLiteral("--profile"), home.filePath(QStringLiteral("profile"))}));
    bare.push_back(TimeOfStart({QStringLiteral("--child"), QStringLiteral("bare")}));
    ratios.push_back(ours.back() / bare.back());
  }
  std::printf(
      "from the start to the first frame: %.0f ms, a bare window %.0f; %.2f times as long (medians of %d)\n",
      PercentilesOf(ours).median, PercentilesOf(bare).median, PercentilesOf(ratios).median, kRounds);
  CompareHandOver();
  return 0;
}

int Run(int argc, char** argv) {
  if (argc < 3) return Compare(argc, argv);
  if (std::string_view(argv[1]) != "--child") return RunQuillet(argc, argv);
  if (std::string_view(argv[2]) == "bare") return RunBare(argc, argv);
  const QCoreApplication nothing(argc, argv);
  return 0;
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  return quillet::Run(argc, argv);
}
