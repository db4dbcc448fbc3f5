// Runs an automation, one at a time, on a worker thread against the document's session, and brings what came
// of it back to the user-interface thread, which owns the object and makes every call. The worker reaches the
// session through its ScreenWaits alone.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>

#include <QObject>

#include "bbs/automation/screen_waits.h"

namespace quillet {

class Automation : public QObject {
 public:
  // Both outlive the object.
  Automation(TermSession& session, const PageTests& pages);
  // Cancels and waits; at once when the session has been disconnected before.
  ~Automation() override;

  // Starts `work(ScreenWaits&)`, whose result goes to `done`. A cancelled run's `done` is never called.
  // False, and nothing is started, while another run has not ended or when the system has no thread left.
  template <typename Work, typename Done>
  bool Run(Work work, Done done) {
    using Result = std::invoke_result_t<Work&, ScreenWaits&>;
    auto result = std::make_shared<std::optional<Result>>();
    return Start(
        [result, work = std::move(work)](ScreenWaits& waits) mutable { result->emplace(work(waits)); },
        [result, done = std::move(done)]() mutable { done(std::move(**result)); });
  }

  // A run goes on and has not been cancelled.
  bool IsRunning() const;
  // The worker has not ended yet, cancelled or not.
  bool IsBusy() const;
  // Asks the run to end, without waiting. False when none was running.
  bool Cancel();
  // Waits for the worker's end at most so long; false when it has not come. A worker that waits for a peer
  // which does not read ends only with the connection.
  bool WaitEnded(std::chrono::milliseconds patience);

  // Waits for it however long it takes; a run that ended by itself is forgotten.
  void Join();

  bool event(QEvent* event) override;

 private:
  struct RunState;

  bool Start(std::function<void(ScreenWaits&)> work, std::function<void()> done);

  TermSession& session_;
  const PageTests& pages_;
  std::shared_ptr<RunState> run_;  // null when none was started, or the last one's end has been handled
  std::thread thread_;
  std::function<void()> done_;
};

}  // namespace quillet
