#include "platform/file_lock.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace quillet {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kMoment{100};
constexpr milliseconds kLongestPause{8};

}  // namespace

milliseconds LockPatience::ForNextTurn() const {
  return isStuck_ ? std::min(kMoment, first_) : first_;
}

FileLock::FileLock(std::filesystem::path file, LockPatience& patience) : file_(std::move(file)) {
  const auto end = Clock::now() + patience.ForNextTurn();
  Outcome outcome = Try();
  for (milliseconds pause{1}; outcome == Outcome::kBusy && Clock::now() < end;
       pause = std::min(2 * pause, kLongestPause)) {
    std::this_thread::sleep_for(pause);
    outcome = Try();
  }
  isHeld_ = outcome == Outcome::kHeld;
  if (isHeld_) patience.NoteHeld();
  if (outcome == Outcome::kBusy) patience.NoteGivenUp();
}

FileLock::~FileLock() {
  if (isHeld_) Release();
}

}  // namespace quillet
