// What a step of scrolling costs in the real window: an article of 2,000 lines of the demo BBS, read over
// loopback into a view of 1280x720, then scrolled by the wheel and by End and Home while the animation runs
// at its own pace.
//
// The work of a step is all the time that the event loop spends in handlers, from the one that moves the
// article up to the next one that does: the step itself, composing and dressing the page, drawing it into the
// picture, the paint event that brings the picture to the window, and whatever else comes due meanwhile
// (ticks, the caret). Waiting is not in it, nor is what the system does with the window's finished picture.
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include <QApplication>
#include <QTemporaryDir>
#include <QWheelEvent>

#include "app/toolkit.h"

#include "bench/long_article.h"
#include "bench/statistics.h"
#include "tools/screenshots/demo_run.h"

namespace quillet {
namespace {

constexpr std::size_t kLines = 2000;
constexpr int kJumps = 40;
constexpr int kFullRepaints = 200;

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// Takes the time of the handlers and sums it up step by step.
class TimedApplication : public QApplication {
 public:
  using QApplication::QApplication;

  void Begin(std::function<int()> position) {
    position_ = std::move(position);
    steps_.clear();
  }
  // Milliseconds of each step since Begin.
  std::vector<double> End() {
    position_ = nullptr;
    return std::move(steps_);
  }

  bool notify(QObject* receiver, QEvent* event) override {
    if (!position_ || isInside_) return QApplication::notify(receiver, event);
    const int before = position_();
    const auto start = Clock::now();
    isInside_ = true;
    const bool result = QApplication::notify(receiver, event);
    isInside_ = false;
    Add(position_() != before, MillisecondsSince(start));
    return result;
  }

 private:
  void Add(bool moved, double milliseconds) {
    if (moved)
      steps_.push_back(milliseconds);
    else if (!steps_.empty())
      steps_.back() += milliseconds;
  }

  std::function<int()> position_;
  std::vector<double> steps_;
  bool isInside_ = false;
};

class Scrolling {
 public:
  Scrolling(TimedApplication& application, DemoRun& run) : application_(application), run_(run) {}

  void OpenLongArticle(const DemoServer& site) {
    run_.Doc().Open({.address = QString::fromStdString(site.Address()), .name = {}, .isBbs = true});
    run_.LogIn();
    run_.GoToBoard(kLongBoard);
    run_.Press({NamedKey(Qt::Key_Right)}, ArticleRests(0, 1));
    if (run_.IsFine()) std::printf("the article has %d lines\n", Article().LineCount());
  }

  // Rolls the wheel on whenever little is left of the way, so that the article never stops.
  void Roll(const char* name, int notch) {
    const int end = notch < 0 ? Last() : 0;
    Measure(name, [&] {
      run_.Await("the article's end", [&] {
        constexpr int kLittle = 6;
        if (Article().TargetLine() != end && std::abs(Article().TargetLine() - Article().TopLine()) < kLittle)
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

  // The same page drawn anew, and the whole widget painted with it.
  void MeasureFullRepaint() {
    FramePainter painter;
    painter.Resize(View().Surface().Picture().width(), View().Surface().Picture().height());
    std::vector<double> drawing, painting;
    for (int i = 0; i <= kFullRepaints; ++i) {
      painter.ApplySettings(run_.Doc().Display());  // makes everything stale and keeps the glyphs
      const auto start = Clock::now();
      painter.Update(View().Frame());
      const auto drawn = Clock::now();
      View().repaint();
      if (i == 0) continue;  // with cold glyphs
      painting.push_back(MillisecondsSince(drawn));
      drawing.push_back(MillisecondsSince(start) - painting.back());
    }
    const double painted = PercentilesOf(painting).median;
    fullRepaint_ = PercentilesOf(drawing).median + painted;
    std::printf("one full repaint: %.2f ms (median), %.2f ms of it bringing the picture to the window\n",
                fullRepaint_, painted);
  }

 private:
  CQuillView& View() { return run_.View(); }
  const ArticleView& Article() { return View().Article(); }
  int Last() { return LastTop(Article().LineCount()); }
  bool RestsAt(int top) { return Article().TopLine() == top && Article().TargetLine() == top; }

  void Wheel(int notches) {
    constexpr int kNotch = 120;
    const QPointF at(View().rect().center());
    QWheelEvent event(at, View().mapToGlobal(at), {}, QPoint(0, notches * kNotch), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&View(), &event);
  }

  void Measure(const char* name, const std::function<void()>& scroll) {
    if (!run_.IsFine()) return;
    application_.Begin([this] { return Article().TopLine(); });
    scroll();
    const std::vector<double> steps = application_.End();
    if (steps.empty()) return run_.Fail(QStringLiteral("Nothing has moved."));
    const auto [median, most, highest] = PercentilesOf(steps);
    std::printf(
        "%-28s %5zu steps: %.2f ms of work a step (median), 99 of 100 below %.2f ms, the most %.2f ms; the "
        "median is %.2f of a full repaint\n",
        name, steps.size(), median, most, highest, median / fullRepaint_);
  }

  TimedApplication& application_;
  DemoRun& run_;
  double fullRepaint_ = 0;
};

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
  Scrolling scrolling(application, run);
  scrolling.OpenLongArticle(site);
  if (run.IsFine()) scrolling.MeasureFullRepaint();
  scrolling.Roll("wheel down, first time", -1);
  scrolling.Roll("wheel up", 1);
  scrolling.Jump();
  if (!run.IsFine()) std::fputs(qPrintable(run.Complaint() + '\n'), stderr);
  return run.IsFine() ? 0 : 1;
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  quillet::TimedApplication application(argc, argv);
  quillet::PrepareToolkit();
  return quillet::Run(application);
}
