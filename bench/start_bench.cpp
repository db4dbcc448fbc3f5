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
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <QApplication>
#include <QEvent>
#include <QLabel>
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
        _exit(0);
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

// In milliseconds.
double LifeOf(const std::string& program, const char* what) {
  std::string name = program, flag = "--child", kind = what;
  std::array<char*, 4> arguments{name.data(), flag.data(), kind.data(), nullptr};
  pid_t child = 0;
  int status = -1;
  const std::int64_t begin = NowNs();
  const bool hasRun =
      posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) == 0 &&
      waitpid(child, &status, 0) == child && status == 0;
  if (!hasRun) {
    std::fprintf(stderr, "start_bench: %s ends wrongly\n", what);
    std::exit(1);
  }
  return static_cast<double>(NowNs() - begin) / 1e6;
}

void CompareHandOver(const std::string& program) {
  constexpr int kRounds = 50;
  std::atomic<int> taken = 0;
  const auto window = ListenForLinks([&taken](const std::u16string&) { return ++taken > 0; });
  std::vector<double> ours, bare, ratios;
  for (int round = 0; round < kRounds; ++round) {
    ours.push_back(LifeOf(program, "link"));
    bare.push_back(LifeOf(program, "core"));
    ratios.push_back(ours.back() / bare.back());
  }
  std::printf(
      "handing a link over: %.1f ms, a program that does nothing %.1f; %.2f times as long (%d of %d taken)\n",
      PercentilesOf(ours).median, PercentilesOf(bare).median, PercentilesOf(ratios).median, taken.load(),
      kRounds);
}

// In milliseconds.
double TimeOfStart(const std::string& program, const char* what) {
  const std::string command = program + " --child " + what;
  const std::int64_t begin = NowNs();
  std::FILE* const child = popen(command.c_str(), "r");
  std::int64_t end = 0;
  const bool hasTold = child != nullptr && std::fscanf(child, "%" SCNd64, &end) == 1;
  if (child != nullptr) pclose(child);
  if (!hasTold) {
    std::fprintf(stderr, "start_bench: %s shows no window\n", what);
    std::exit(1);
  }
  return static_cast<double>(end - begin) / 1e6;
}

int Compare(const std::string& program) {
  constexpr int kRounds = 25;
  // Nothing of the user's is read, and nothing is left in it.
  const QTemporaryDir home;
  for (const char* variable :
       {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
    qputenv(variable, home.path().toUtf8());
  std::vector<double> ours, bare, ratios;
  for (int round = 0; round < kRounds; ++round) {
    ours.push_back(TimeOfStart(program, "program"));
    bare.push_back(TimeOfStart(program, "bare"));
    ratios.push_back(ours.back() / bare.back());
  }
  std::printf(
      "from the start to the first frame: %.0f ms, a bare window %.0f; %.2f times as long (medians of %d)\n",
      PercentilesOf(ours).median, PercentilesOf(bare).median, PercentilesOf(ratios).median, kRounds);
  CompareHandOver(program);
  return 0;
}

int RunLink(char* program) {
  std::string flag = "--single-argument", link = "https://www.bbs.example/bbs/Cats/M.1791980320.A.9CD.html";
  std::array<char*, 4> arguments{program, flag.data(), link.data(), nullptr};
  return RunQuillet(3, arguments.data());
}

int Run(int argc, char** argv) {
  if (argc < 3 || std::string_view(argv[1]) != "--child") return Compare(argv[0]);
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
