#include "app/window/tour/tour.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTimer>
#include <QWindow>

#include "input/text/screen_text.h"

namespace quillet {
namespace {

constexpr int kPageLimitMs = 30000;  // generous: a busy machine may be slow, a missing page never comes
constexpr int kRestMs = 150;         // a page that did not change for so long has arrived completely

// Tells whether the picture has come to rest.
class RestWatch {
 public:
  explicit RestWatch(const CQuillView& view) : view_(view), count_(view.ScreenCount()) { since_.start(); }

  bool AtRest() {
    if (view_.ScreenCount() != count_) {
      count_ = view_.ScreenCount();
      since_.start();
    }
    return since_.elapsed() >= kRestMs;
  }

 private:
  const CQuillView& view_;
  unsigned count_;
  QElapsedTimer since_;
};

// Something went wrong that no page will follow: the connection has ended, or a notice is up.
bool IsStuck(const CQuillView& view) {
  return view.Panel().IsShown() && !view.Panel().IsBusy();
}

enum class Arrival { kThere, kTooLate, kStuck };

Arrival Arrive(CMainFrame& frame, const TourStep& step) {
  const CQuillView& view = frame.View();
  const QDeadlineTimer deadline(kPageLimitMs);
  do {
    RestWatch rest(view);
    const auto settled = [&] {
      return rest.AtRest() && (step.arrived(view) || step.onTheWay.key != 0 || IsStuck(view));
    };
    if (!HandleEventsUntil(settled, static_cast<int>(deadline.remainingTime()))) return Arrival::kTooLate;
    if (step.arrived(view)) return Arrival::kThere;
    if (IsStuck(view)) return Arrival::kStuck;
    PressKey(frame, step.onTheWay);
  } while (!deadline.hasExpired());
  return Arrival::kTooLate;
}

// The file's full path; empty when it cannot be written.
QString SavePicture(CMainFrame& frame, const TourSettings& settings, qsizetype number, const QString& name) {
  const QString file =
      QDir(settings.folder)
          .absoluteFilePath(
              QStringLiteral("%1%2-%3.png").arg(settings.prefix).arg(number, 2, 10, QChar(u'0')).arg(name));
  const QPixmap image = settings.picture == TourPicture::kWindow ? frame.grab() : frame.View().grab();
  return image.save(file) ? file : QString();
}

QString WhatIsShowing(const CQuillView& view) {
  if (view.Panel().IsActive()) return view.Panel().Text().title + '\n' + view.Panel().Text().lines.join('\n');
  return QString::fromStdU16String(ScreenAsText(view.Screen()));
}

QString Complaint(Arrival arrival, const TourStep& step, const CQuillView& view) {
  const QString how = arrival == Arrival::kTooLate
                          ? QStringLiteral(" within %1 seconds").arg(kPageLimitMs / 1000)
                          : QString();
  return QStringLiteral("The page \"%1\" did not come%2. The window shows:\n%3")
      .arg(step.name, how, WhatIsShowing(view));
}

}  // namespace

bool HandleEventsUntil(const std::function<bool()>& done, int milliseconds) {
  constexpr int kPollMs = 10;
  const QDeadlineTimer deadline(milliseconds);
  QEventLoop loop;
  QTimer poll;
  // Not asked again afterwards: what asks may do something each time.
  bool isDone = false;
  QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
    isDone = done();
    if (isDone || deadline.hasExpired()) loop.quit();
  });
  poll.start(kPollMs);
  loop.exec();
  return isDone;
}

void PressKey(CMainFrame& frame, const TourKey& key) {
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key.key, key.modifiers, key.text);
    QCoreApplication::sendEvent(frame.windowHandle(), &event);
  }
}

TourResult WalkTour(CMainFrame& frame, const TourSettings& settings, const std::vector<TourStep>& steps) {
  TourResult result;
  const QString folder = QDir(settings.folder).absolutePath();
  if (!QDir(folder).mkpath(".")) {
    result.message = QStringLiteral("The folder \"%1\" cannot be made.").arg(folder);
    return result;
  }
  frame.SizeForView(settings.view);
  qsizetype number = 0;
  for (const TourStep& step : steps) {
    for (const TourKey& key : step.keys)
      PressKey(frame, key);
    if (const Arrival arrival = Arrive(frame, step); arrival != Arrival::kThere) {
      result.message = Complaint(arrival, step, frame.View());
      return result;
    }
    if (step.name.isEmpty()) continue;
    ++number;
    if (!settings.only.isEmpty() && step.name != settings.only) continue;
    const QString file = SavePicture(frame, settings, number, step.name);
    if (file.isEmpty()) {
      result.message = QStringLiteral("No picture can be written in \"%1\".").arg(folder);
      return result;
    }
    result.pictures << file;
    if (!settings.only.isEmpty()) break;
  }
  result.ok = true;
  result.message =
      QStringLiteral("The pictures of the demo (%1) are in %2").arg(result.pictures.size()).arg(folder);
  return result;
}

}  // namespace quillet
