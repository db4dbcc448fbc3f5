#include "app/session/reconnect_plan.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quillet {
namespace {

enum class Kind {
  kLost,         // a connection, without anybody's wish
  kUnreachable,  // the network or the site may come back
  kFinal         // asking again changes nothing, or is not wished
};

Kind KindOf(const ConnectionEnd& end) {
  if (end.isWished || end.farewell != Farewell::kNone) return Kind::kFinal;
  switch (end.reason) {
    case EndReason::kClosedByPeer:
    case EndReason::kReadFailed:
      return end.wasMade ? Kind::kLost : Kind::kUnreachable;
    case EndReason::kResolveFailed:
    case EndReason::kConnectFailed:
    case EndReason::kGatewayUnreachable:
    case EndReason::kGatewaySilent:
      return Kind::kUnreachable;
    default:
      return Kind::kFinal;
  }
}

}  // namespace

void ReconnectPlan::OnConnected(std::int64_t now) {
  due_.reset();
  standsSince_ = now;
}

void ReconnectPlan::OnEnded(const ConnectionEnd& end, std::int64_t now) {
  const auto stoodSince = std::exchange(standsSince_, std::nullopt);
  if (stoodSince && now - *stoodSince >= kStandsMs) Stop();
  if (!GoesOnAfter(end)) return Stop();
  if (end.wasMade) siteHungUp_ = end.reason == EndReason::kClosedByPeer;
  inSeries_ = true;
  due_ = now + kPausesMs[pause_];
  pause_ = std::min(pause_ + 1, std::size(kPausesMs) - 1);
}

bool ReconnectPlan::GoesOnAfter(const ConnectionEnd& end) const {
  switch (KindOf(end)) {
    case Kind::kLost:
      return inSeries_ || !end.isLoginOpen;
    case Kind::kUnreachable:
      return inSeries_;
    case Kind::kFinal:
      break;
  }
  return false;
}

void ReconnectPlan::Stop() {
  inSeries_ = false;
  pause_ = 0;
  due_.reset();
}

std::optional<std::int64_t> ReconnectPlan::Left(std::int64_t now) const {
  if (!due_) return std::nullopt;
  return std::max<std::int64_t>(*due_ - now, 0);
}

bool ReconnectPlan::TakeDue(std::int64_t now) {
  if (!due_ || now < *due_) return false;
  due_.reset();
  return true;
}

}  // namespace quillet
