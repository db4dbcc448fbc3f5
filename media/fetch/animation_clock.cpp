#include "media/fetch/animation_clock.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "media/fetch/animation_frames.h"
#include "media/fetch/worker_run.h"

namespace quillet {
namespace {

// Of one animation.
constexpr qint64 kMostAheadBytes = qint64{8} << 20;
constexpr std::size_t kMostAhead = 8;
constexpr qint64 kMostKeptBytes = qint64{16} << 20;

std::size_t AheadOf(const QImage& frame) {
  const qint64 count = kMostAheadBytes / std::max<qint64>(frame.sizeInBytes(), 1);
  return static_cast<std::size_t>(std::clamp<qint64>(count, 1, kMostAhead));
}

}  // namespace

struct AnimationClock::Player {
  std::shared_ptr<std::atomic<bool>> dropped = std::make_shared<std::atomic<bool>>(false);
  std::shared_ptr<AnimationFrames> frames;
  PictureBounds bounds;
  QImage now;
  qint64 dueAt = 0;  // when the next frame takes its place, on the clock's time
  std::deque<AnimationFrame> ahead;
  bool isDecoding = false;
  bool isOver = false;  // no more frames come
  // All of a small animation, once its second pass has begun; until then what has come of it.
  std::vector<AnimationFrame> kept;
  qint64 keptBytes = 0;
  bool isSmall = true;
  bool hasBegun = false;
  bool isWhole = false;
  std::size_t nextKept = 0;

  bool HasNext() const { return !ahead.empty() || isWhole; }
  bool NeedsMore() const { return !isDecoding && !isOver && !isWhole && ahead.size() < AheadOf(now); }
  void Accept(AnimationFrame frame);
  // Nothing: it has not been decoded yet, or there is no more.
  std::optional<AnimationFrame> TakeNext();
};

void AnimationClock::Player::Accept(AnimationFrame frame) {
  const bool isSecondPass = frame.beginsPass && std::exchange(hasBegun, true);
  if (isSecondPass && isSmall && frame.isEndless) {
    isWhole = true;
    frames.reset();
    return;
  }
  keptBytes += frame.image.sizeInBytes();
  isSmall = isSmall && !isSecondPass && keptBytes <= kMostKeptBytes;
  if (isSmall) {
    kept.push_back(frame);
  } else {
    kept.clear();
    keptBytes = 0;
  }
  ahead.push_back(std::move(frame));
}

std::optional<AnimationFrame> AnimationClock::Player::TakeNext() {
  if (!ahead.empty()) {
    AnimationFrame frame = std::move(ahead.front());
    ahead.pop_front();
    return frame;
  }
  if (!isWhole) return std::nullopt;
  return kept[nextKept++ % kept.size()];
}

AnimationClock::AnimationClock(QThreadPool& workers, QObject* parent) : QObject(parent), workers_(workers) {
  timer_.setSingleShot(true);
  timer_.setTimerType(Qt::PreciseTimer);
  connect(&timer_, &QTimer::timeout, this, &AnimationClock::Tick);
  time_.start();
}

AnimationClock::~AnimationClock() {
  for (const auto& [link, player] : players_)
    *player->dropped = true;
}

void AnimationClock::Play(const QString& link, const QByteArray& file, const PictureBounds& bounds) {
  std::shared_ptr<Player>& player = players_[link];
  if (player && player->bounds == bounds) return;
  const QImage before = player ? player->now : QImage();
  if (player) *player->dropped = true;
  player = std::make_shared<Player>();
  player->bounds = bounds;
  player->now = before;
  player->dueAt = time_.elapsed();
  player->frames = std::make_shared<AnimationFrames>(file, bounds, player->dropped);
  DecodeAhead(link, *player);
}

void AnimationClock::Stop(const QString& link) {
  const auto found = players_.find(link);
  if (found == players_.end()) return;
  *found->second->dropped = true;
  players_.erase(found);
  SetTimer();
}

QImage AnimationClock::FrameOf(const QString& link) const {
  const auto found = players_.find(link);
  return found == players_.end() ? QImage() : found->second->now;
}

qint64 AnimationClock::Bytes() const {
  qint64 bytes = 0;
  for (const auto& [link, player] : players_) {
    bytes +=
        (player->frames ? player->frames->FileBytes() : 0) + player->now.sizeInBytes() + player->keptBytes;
    for (const AnimationFrame& frame : player->ahead)
      bytes += frame.image.sizeInBytes();
  }
  return bytes;
}

void AnimationClock::Tick() {
  const qint64 now = time_.elapsed();
  for (const auto& [link, player] : std::map(players_))
    if (player->dueAt <= now) Advance(link, *player);
  SetTimer();
}

void AnimationClock::Advance(const QString& link, Player& player) {
  if (std::optional<AnimationFrame> frame = player.TakeNext()) {
    player.now = frame->image;
    player.dueAt = time_.elapsed() + frame->milliseconds;
    emit Moved(link);
  }
  DecodeAhead(link, player);
}

void AnimationClock::DecodeAhead(const QString& link, Player& player) {
  if (!player.NeedsMore()) return;
  player.isDecoding = true;
  RunOnWorker(
      workers_, this, [frames = player.frames] { return frames->Next(); },
      [this, link, decodedFor = std::weak_ptr(players_.at(link))](std::optional<AnimationFrame> frame) {
        const std::shared_ptr<Player> decoded = decodedFor.lock();
        if (!decoded || *decoded->dropped) return;
        decoded->isDecoding = false;
        decoded->isOver = !frame;
        if (frame) decoded->Accept(std::move(*frame));
        // What has waited for it is late already.
        if (decoded->dueAt <= time_.elapsed()) Advance(link, *decoded);
        DecodeAhead(link, *decoded);
        SetTimer();
      });
}

void AnimationClock::SetTimer() {
  qint64 next = std::numeric_limits<qint64>::max();
  for (const auto& [link, player] : players_)
    if (player->HasNext()) next = std::min(next, player->dueAt);
  if (next == std::numeric_limits<qint64>::max())
    timer_.stop();
  else
    timer_.start(static_cast<int>(std::max<qint64>(next - time_.elapsed(), 0)));
}

}  // namespace quillet
