#include "core/transport/websocket_exchange.h"

#include <utility>

namespace quillet {

void WebSocketExchange::PutOpened() {
  std::lock_guard lock(mutex_);
  opened_ = true;
  changed_.notify_all();
}

void WebSocketExchange::PutBytes(std::string bytes) {
  if (bytes.empty()) return;
  std::unique_lock lock(mutex_);
  // The library tells of the connection on another thread than of its messages.
  opened_ = true;
  changed_.wait(lock, [this] { return stopped_ || waiting_ < kMostWaiting; });
  if (stopped_) return;
  waiting_ += bytes.size();
  messages_.push_back(std::move(bytes));
  changed_.notify_all();
}

void WebSocketExchange::PutSignOfLife() {
  std::lock_guard lock(mutex_);
  signOfLife_ = true;
  changed_.notify_all();
}

void WebSocketExchange::PutEnd(TransportEnd end) {
  std::lock_guard lock(mutex_);
  if (!end_) end_ = std::move(end);
  changed_.notify_all();
}

void WebSocketExchange::PutSent(bool taken) {
  std::lock_guard lock(mutex_);
  sent_ = taken;
  changed_.notify_all();
}

void WebSocketExchange::PutConnectDone() {
  std::lock_guard lock(mutex_);
  connectDone_ = true;
  changed_.notify_all();
}

void WebSocketExchange::PutClosed() {
  std::lock_guard lock(mutex_);
  closed_ = true;
  changed_.notify_all();
}

WebSocketExchange::Item WebSocketExchange::Take(Patience patience) {
  std::unique_lock lock(mutex_);
  const auto hasCome = [this] {
    return stopped_ || (opened_ && !openedTaken_) || !messages_.empty() || signOfLife_ || end_;
  };
  if (!changed_.wait_for(lock, patience, hasCome)) return {};
  if (stopped_) return {Kind::kStopped, {}, {}};
  if (opened_ && !openedTaken_) {
    openedTaken_ = true;
    return {Kind::kOpened, {}, {}};
  }
  if (!messages_.empty()) {
    Item item{Kind::kBytes, std::move(messages_.front()), {}};
    messages_.pop_front();
    waiting_ -= item.bytes.size();
    changed_.notify_all();
    return item;
  }
  if (std::exchange(signOfLife_, false)) return {Kind::kSignOfLife, {}, {}};
  return {Kind::kEnd, {}, *end_};
}

bool WebSocketExchange::MaySend() const {
  std::lock_guard lock(mutex_);
  return opened_ && !end_ && !stopped_;
}

bool WebSocketExchange::WaitSent() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return sent_ || end_ || stopped_; });
  return std::exchange(sent_, std::nullopt).value_or(false);
}

void WebSocketExchange::WaitConnectDone() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return connectDone_; });
}

bool WebSocketExchange::WaitClosed(Patience patience) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, patience, [this] { return closed_; });
}

void WebSocketExchange::Stop() {
  std::lock_guard lock(mutex_);
  stopped_ = true;
  changed_.notify_all();
}

bool WebSocketExchange::Stopped() const {
  std::lock_guard lock(mutex_);
  return stopped_;
}

}  // namespace quillet
