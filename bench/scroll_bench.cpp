// What a step of scrolling costs in the real window: an article of 2,000 lines of the demo BBS, and one with
// a hundred pictures in it, read over loopback into a view of 1280x720, then scrolled by the wheel and by End
// and Home while the animation runs at its own pace.
//
// The work of a step is all the time that the event loop spends in handlers, from the one that moves the
// article up to the next one that does: the step itself, composing and styling the page, drawing it into the
// picture, the paint event that brings the picture to the window, and whatever else comes due meanwhile
// (ticks, the caret). Waiting is not in it, nor is what the system does with the window's finished picture.
// It is counted twice: in processor time of the window's thread, which is the work that the user waits for,
// and in time on the clock, which on a busy machine holds the turns of others too.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

#include <QApplication>
#include <QTemporaryDir>
#include <QWheelEvent>

#include "app/window/toolkit.h"

#include "bench/long_article.h"
#include "bench/statistics.h"
#include "tools/screenshots/demo_run.h"

namespace quillet {
namespace {

constexpr std::size_t kLines = 2000;
constexpr int kJumps = 40;
constexpr int kFullRepaints = 1000;
constexpr int kStepMs = 16;
// What a step should stay below.
constexpr double kMostStepMs = 4;
constexpr double kMostPictureStepMs = 8;
// In the title of that article.
constexpr const char16_t* kHundredPictures = u"一百天的窗";

// In milliseconds.
struct Work {
  double processor = 0;
  double clock = 0;

  Work& operator+=(const Work& more) {
    processor += more.processor;
    clock += more.clock;
    return *this;
  }
};

double ThreadMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return 1000.0 * static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e6;
}

class WorkWatch {
 public:
  Work SinceStart() const {
    const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - start_;
    return {ThreadMilliseconds() - processorStart_, passed.count()};
  }

 private:
  double processorStart_ = ThreadMilliseconds();
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

Percentiles StepPercentiles(const std::vector<Work>& all, double Work::*which) {
  std::vector<double> times;
  for (const Work& work : all)
    times.push_back(work.*which);
  return PercentilesOf(std::move(times));
}

// Takes the work of the handlers and sums it up step by step.
class TimedApplication : public QApplication {
 public:
  using QApplication::QApplication;

  void Begin(std::function<int()> position) {
    position_ = std::move(position);
    steps_.clear();
  }
  // Each step since Begin.
  std::vector<Work> End() {
    position_ = nullptr;
    return std::move(steps_);
  }

  bool notify(QObject* receiver, QEvent* event) override {
    if (!position_ || isInside_) return QApplication::notify(receiver, event);
    const int before = position_();
    const WorkWatch watch;
    isInside_ = true;
    const bool result = QApplication::notify(receiver, event);
    isInside_ = false;
    Add(position_() != before, watch.SinceStart());
    return result;
  }

 private:
  void Add(bool moved, const Work& work) {
    if (moved)
      steps_.push_back(work);
    else if (!steps_.empty())
      steps_.back() += work;
  }

  std::function<int()> position_;
  std::vector<Work> steps_;
  bool isInside_ = false;
};

class Scrolling {
 public:
  Scrolling(TimedApplication& application, DemoRun& run, double mostStepMs)
      : application_(application), run_(run), mostStepMs_(mostStepMs) {}

  void OpenLongArticle(const DemoServer& site) {
    run_.Set(&Settings::showPicMode, PictureScope::kNone);
    run_.Doc().GetConnection().Open(
        {.address = QString::fromStdString(site.Address()), .name = {}, .isBbs = true});
    run_.LogIn();
    run_.GoToBoard(kLongBoard);
    run_.Press({NamedKey(Qt::Key_Right)}, ArticleRests(0, 1));
    if (run_.IsFine()) std::printf("the article has %d lines\n", Article().LineCount());
  }

  // Of the demo's own; its pictures open by themselves as they come into sight.
  void OpenPictures() {
    run_.LogIn();
    run_.GoToBoard(QStringLiteral("Photo"));
    run_.Read(QString::fromUtf16(kHundredPictures));
    run_.Await("the whole article", [&] { return Article().Reading().Lines().IsComplete(); });
    if (run_.IsFine()) std::printf("the article has %d lines\n", Article().LineCount());
  }

  // Rolls the wheel on whenever little is left of the way, so that the article never stops.
  void Roll(const char* name, int notch) {
    Measure(name, [&] {
      run_.Await("the article's end", [&] {
        // Pictures that open on the way make it longer.
        const int end = notch < 0 ? Last() : 0;
        constexpr int kLittle = 6;
        if (Article().TargetRow() != end && std::abs(Article().TargetRow() - Article().TopRow()) < kLittle)
          Wheel(notch);
        return RestsAt(end);
      });
    });
  }

  void Jump() {
    Measure("End and Home in turn", [&] {
      for (int jump = 0; jump < kJumps; ++jump) {
        const bool toEnd = jump % 2 == 0;
        PressKey(run_.Frame(), NamedKey(toEnd ? Qt::Key_End : Qt::Key_Home));
        run_.Await("the end of the jump", [&] { return RestsAt(toEnd ? Last() : 0); });
      }
    });
  }

  // The same page drawn anew, and the whole widget painted with it, as seldom as the animation's steps come.
  void MeasureFullRepaint() {
    FramePainter painter;
    painter.Resize(View().Surface().Picture().width(), View().Surface().Picture().height());
    painter.Update(View().Frame());  // with cold glyphs
    std::vector<double> whole, bringing;
    for (int i = 0; i < kFullRepaints; ++i) {
      HandleEventsUntil([] { return false; }, kStepMs);
      painter.ApplySettings(
          run_.Doc().GetSettings().Display());  // makes everything stale and keeps the glyphs
      const WorkWatch watch;
      painter.Update(View().Frame());
      const double drawn = watch.SinceStart().processor;
      View().repaint();
      whole.push_back(watch.SinceStart().processor);
      bringing.push_back(whole.back() - drawn);
    }
    // The same work each time: the most of it is what the machine adds to any step.
    const auto [median, most, highest] = PercentilesOf(whole);
    fullRepaint_ = median;
    std::printf("one full repaint: %.2f ms (median, the most %.2f), %.2f ms of it bringing the picture to ",
                median, highest, PercentilesOf(bringing).median);
    std::printf("the window\n");
  }

 private:
  CQuillView& View() { return run_.View(); }
  const ArticleView& Article() { return View().Article(); }
  int Last() { return Article().LastTopRow(); }
  bool RestsAt(int top) { return Article().TopRow() == top && Article().TargetRow() == top; }

  void Wheel(int notches) {
    constexpr int kNotch = 120;
    const QPointF at(View().rect().center());
    QWheelEvent event(at, View().mapToGlobal(at), {}, QPoint(0, notches * kNotch), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&View(), &event);
  }

  void Measure(const char* name, const std::function<void()>& scroll) {
    if (!run_.IsFine()) return;
    application_.Begin([this] { return Article().TopRow(); });
    scroll();
    const std::vector<Work> steps = application_.End();
    if (steps.empty()) return run_.Fail(QStringLiteral("Nothing has moved."));
    const auto [median, most, highest] = StepPercentiles(steps, &Work::processor);
    const Percentiles clock = StepPercentiles(steps, &Work::clock);
    const auto over = std::count_if(steps.begin(), steps.end(),
                                    [this](const Work& step) { return step.processor > mostStepMs_; });
    std::printf("%s, %zu steps: %.2f ms of work a step (median, %.1f full repaints), ", name, steps.size(),
                median, median / fullRepaint_);
    std::printf("99 of 100 below %.2f ms, the most %.2f ms, %d above %.0f ms; ", most, highest,
                static_cast<int>(over), mostStepMs_);
    std::printf("by the clock %.2f, %.2f and %.2f ms\n", clock.median, clock.most, clock.highest);
  }

  TimedApplication& application_;
  DemoRun& run_;
  double mostStepMs_;
  double fullRepaint_ = 0;
};

bool RunPictures(TimedApplication& application) {
  const QTemporaryDir scratch;
  DemoRun run(scratch.path());
  Scrolling scrolling(application, run, kMostPictureStepMs);
  scrolling.OpenPictures();
  if (run.IsFine()) scrolling.MeasureFullRepaint();
  scrolling.Roll("pictures, wheel down, first time", -1);
  scrolling.Roll("pictures, wheel up", 1);
  scrolling.Roll("pictures, wheel down", -1);
  if (!run.IsFine()) std::fputs(qPrintable(run.Complaint() + '\n'), stderr);
  return run.IsFine();
}

int Run(TimedApplication& application) {
  const QTemporaryDir scratch;
  const std::filesystem::path folder = std::filesystem::path(scratch.path().toStdU16String()) / "content";
  if (!WriteLongArticle(DefaultDemoContent(), folder, kLines)) {
    std::fputs("The long article cannot be written.\n", stderr);
    return 1;
  }
  DemoRun run(scratch.path());
  DemoOptions options;
  options.contentFolder = folder;
  const DemoServer site(options);
  if (!site.Error().empty()) run.Fail(QString::fromStdString(site.Error()));
  Scrolling scrolling(application, run, kMostStepMs);
  scrolling.OpenLongArticle(site);
  if (run.IsFine()) scrolling.MeasureFullRepaint();
  scrolling.Roll("wheel down, first time", -1);
  scrolling.Roll("wheel up", 1);
  scrolling.Jump();
  if (!run.IsFine()) std::fputs(qPrintable(run.Complaint() + '\n'), stderr);
  return run.IsFine() && RunPictures(application) ? 0 : 1;
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  quillet::TimedApplication application(argc, argv);
  quillet::PrepareToolkit();
  return quillet::Run(application);
}
