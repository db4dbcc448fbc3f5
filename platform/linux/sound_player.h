// One sound file in the hands of a player program of the desktop's. Start and Stop on any one thread; a
// thread of its own waits for the program's end, so that none is left behind as a zombie.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <mutex>
#include <sys/types.h>

namespace quillet {

class SoundPlayer {
 public:
  // Null when no player program can be started. A player that says it failed (it may be installed without the
  // sound server that it serves) is followed by the next one.
  static std::shared_ptr<SoundPlayer> Start(const std::filesystem::path& file);

  explicit SoundPlayer(std::filesystem::path file) : file_(std::move(file)) {}
  SoundPlayer(const SoundPlayer&) = delete;
  SoundPlayer& operator=(const SoundPlayer&) = delete;

  // Ends the program, even one that hangs, without waiting for that.
  void Stop();
  // Every player has said that it failed.
  bool HasFailed() const;

 private:
  bool StartNextProgram();
  bool EndsWell();
  void Watch();

  const std::filesystem::path file_;
  mutable std::mutex lock_;
  std::size_t next_ = 0;  // of the programs that can play
  pid_t program_ = 0;     // 0 when none runs; leads a process group of its own
  bool stopped_ = false;
  bool failed_ = false;
};

}  // namespace quillet
