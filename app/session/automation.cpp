#include "app/session/automation.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <system_error>

#include <QCoreApplication>
#include <QEvent>

namespace quillet {
namespace {

QEvent::Type EndedEvent() {
  static const int type = QEvent::registerEventType();
  return static_cast<QEvent::Type>(type);
}

}  // namespace

struct Automation::RunState {
  std::atomic<bool> cancelled{false};
  std::mutex lock;
  std::condition_variable changed;
  bool ended = false;  // guarded by lock

  void End() {
    const std::lock_guard guard(lock);
    ended = true;
    changed.notify_all();
  }
  bool HasEnded() {
    const std::lock_guard guard(lock);
    return ended;
  }
};

Automation::Automation(TermSession& session, const PageTests& pages) : session_(session), pages_(pages) {}

Automation::~Automation() {
  Cancel();
  Join();
}

bool Automation::Start(std::function<void(ScreenWaits&)> work, std::function<void()> done) {
  if (IsRunning() || IsBusy()) return false;
  Join();
  auto run = std::make_shared<RunState>();
  // Made here, so that it belongs to the connection that is up now.
  auto waits = std::make_shared<ScreenWaits>(session_, pages_, run->cancelled);
  try {
    thread_ = std::thread([this, run, waits = std::move(waits), work = std::move(work)]() mutable {
      work(*waits);
      // What the run was told, a password among it, goes with it.
      work = nullptr;
      waits.reset();
      run->End();
      QCoreApplication::postEvent(this, new QEvent(EndedEvent()));
    });
  } catch (const std::system_error&) {
    return false;
  }
  run_ = std::move(run);
  done_ = std::move(done);
  return true;
}

bool Automation::IsRunning() const {
  return run_ && !run_->cancelled;
}

bool Automation::IsBusy() const {
  return run_ && !run_->HasEnded();
}

bool Automation::Cancel() {
  if (!IsRunning()) return false;
  run_->cancelled = true;
  done_ = nullptr;
  return true;
}

bool Automation::WaitEnded(std::chrono::milliseconds patience) {
  if (!run_) return true;
  std::unique_lock guard(run_->lock);
  return run_->changed.wait_for(guard, patience, [this] { return run_->ended; });
}

bool Automation::event(QEvent* event) {
  if (event->type() != EndedEvent()) return QObject::event(event);
  // An event of an earlier run may come when the next one has begun.
  if (!run_ || !run_->HasEnded()) return true;
  Join();
  if (const std::function<void()> done = std::exchange(done_, nullptr)) done();
  return true;
}

void Automation::Join() {
  if (thread_.joinable()) thread_.join();
  run_.reset();
}

}  // namespace quillet
