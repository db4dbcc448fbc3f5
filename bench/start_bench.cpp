// How long the program takes from its start to its first painted frame, beside a bare window of the toolkit's
// with one label, and how long one lives that hands a link over, beside a program that does nothing; by turns
// in processes of their own.
//
//   start_bench              all, medians and their ratios
//   start_bench --child WHAT one start: of "program" or "bare", which prints nanoseconds of the steady clock
//                            behind its first frame; of "link", which hands a link over; of "core", which
//                            does nothing
#include <array>
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
  explicit Child(const QString& what) {
    QProcess process;
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    begin = NowNs();
    process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--child"), what});
    loop.exec();
    end = NowNs();
    written = process.readAllStandardOutput();
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) return;
    std::fprintf(stderr, "start_bench: %s ends wrongly\n", qPrintable(what));
    std::exit(1);
  }

  std::int64_t begin = 0, end = 0;
  QByteArray written;
};

// In milliseconds.
double LifeOf(const QString& what) {
  const Child child(what);
  return static_cast<double>(child.end - child.begin) / 1e6;
}

// In milliseconds.
double TimeOfStart(const QString& what) {
  const Child child(what);
  const std::int64_t painted = child.written.trimmed().toLongLong();
  if (painted != 0) return static_cast<double>(painted - child.begin) / 1e6;
  std::fprintf(stderr, "start_bench: %s shows no window\n", qPrintable(what));
  std::exit(1);
}

[[maybe_unused]] void CompareHandOver() {
  constexpr int kRounds = 50;
  std::atomic<int> taken = 0;
  const auto window = ListenForLinks([&taken](const std::u16string&) { return ++taken > 0; });
  std::vector<double> ours, bare, ratios;
  for (int round = 0; round < kRounds; ++round) {
    ours.push_back(LifeOf(QStringLiteral("link")));
    bare.push_back(LifeOf(QStringLiteral("core")));
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
       {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "LOCALAPPDATA"})
    qputenv(variable, home.path().toUtf8());
  std::vector<double> ours, bare, ratios;
  for (int round = 0; round < kRounds; ++round) {
    ours.push_back(TimeOfStart(QStringLiteral("program")));
    bare.push_back(TimeOfStart(QStringLiteral("bare")));
    ratios.push_back(ours.back() / bare.back());
  }
  std::printf(
      "from the start to the first frame: %.0f ms, a bare window %.0f; %.2f times as long (medians of %d)\n",
      PercentilesOf(ours).median, PercentilesOf(bare).median, PercentilesOf(ratios).median, kRounds);
#ifndef _WIN32  // where a process hands over the command line that the system has of it, which is the bench's
                // own
  CompareHandOver();
#endif
  return 0;
}

int RunLink(char* program) {
  std::string flag = "--single-argument", link = "https://www.bbs.example/bbs/Cats/M.1791980320.A.9CD.html";
  std::array<char*, 4> arguments{program, flag.data(), link.data(), nullptr};
  return RunQuillet(3, arguments.data());
}

int Run(int argc, char** argv) {
  if (argc < 3 || std::string_view(argv[1]) != "--child") return Compare(argc, argv);
  const std::string_view what = argv[2];
  if (what == "bare") return RunBare(argc, argv);
  if (what == "link") return RunLink(argv[0]);
  if (what == "core") {
    const QCoreApplication nothing(argc, argv);
    return 0;
  }
  std::array<char*, 2> arguments{argv[0], nullptr};
  return RunQuillet(1, arguments.data());
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  return quillet::Run(argc, argv);
}
