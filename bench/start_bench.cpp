// How long the program takes from its start to its first painted frame, beside a bare window of the toolkit's
// with one label, by turns in processes of their own.
//
//   start_bench              both, medians and their ratio
//   start_bench --child WHAT one start: "program" or "bare"; prints nanoseconds of the steady clock at the
//   end
//                            of its first frame
#include <array>
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QTemporaryDir>
#include <QTimer>

#include "app/window/quill_app.h"

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
  return 0;
}

int Run(int argc, char** argv) {
  if (argc < 3 || std::string_view(argv[1]) != "--child") return Compare(argv[0]);
  if (std::string_view(argv[2]) == "bare") return RunBare(argc, argv);
  std::array<char*, 2> arguments{argv[0], nullptr};
  return RunQuillet(1, arguments.data());
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  return quillet::Run(argc, argv);
}
