// Runs a function on a pool's thread and brings what came of it back to the thread of the object that wanted
// it, unless that is gone by then; and how a pool ends.
#pragma once

#include <memory>
#include <utility>

#include <QFutureWatcher>
#include <QObject>
#include <QPromise>
#include <QThreadPool>

namespace quillet {

// `work` returns a value and throws nothing; it owns what it uses. `deliver` takes the value on the owner's
// thread, from its event loop. Called on the owner's thread.
template <typename Work, typename Deliver>
void RunOnWorker(QThreadPool& pool, QObject* owner, Work work, Deliver deliver) {
  using Result = decltype(work());
  const auto promise = std::make_shared<QPromise<Result>>();
  auto* const watcher = new QFutureWatcher<Result>(owner);
  QObject::connect(watcher, &QFutureWatcher<Result>::finished, owner,
                   [watcher, deliver = std::move(deliver)]() mutable {
                     watcher->deleteLater();
                     if (watcher->future().resultCount() > 0) deliver(watcher->future().takeResult());
                   });
  watcher->setFuture(promise->future());
  pool.start([promise, work = std::move(work)] {
    promise->start();
    promise->addResult(work());
    promise->finish();
  });
}

// Waits a moment for what the pool is at; one that a dead disk holds is left behind with its threads.
inline void LetGo(std::unique_ptr<QThreadPool>& pool) {
  constexpr int kPatienceMs = 2000;
  pool->clear();
  if (!pool->waitForDone(kPatienceMs)) static_cast<void>(pool.release());
}

}  // namespace quillet
