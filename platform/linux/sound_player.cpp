#include "platform/linux/sound_player.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/linux/spawn_settings.h"

namespace quillet {
namespace {

struct PlayerProgram {
  const char* name;
  const char* option;  // null when there is none
};

// PipeWire's, PulseAudio's, ALSA's: from the newest sound system to the one below all.
constexpr std::array<PlayerProgram, 3> kPrograms{
    {{"pw-play", nullptr}, {"paplay", nullptr}, {"aplay", "-q"}}};

// The process number; 0 when the program cannot be started, most often because it is not installed.
pid_t Spawn(const PlayerProgram& program, std::string file) {
  std::string name = program.name;
  std::string option = program.option ? program.option : "";
  std::vector<char*> arguments{name.data()};
  if (program.option) arguments.push_back(option.data());
  arguments.push_back(file.data());
  arguments.push_back(nullptr);
  const SpawnSettings settings;
  pid_t process = 0;
  const int error = posix_spawnp(&process, program.name, settings.Files(), settings.Attributes(),
                                 arguments.data(), environ);
  return error == 0 ? process : 0;
}

}  // namespace

std::shared_ptr<SoundPlayer> SoundPlayer::Start(const std::filesystem::path& file) {
  auto player = std::make_shared<SoundPlayer>(file);
  if (!player->StartNextProgram()) return nullptr;
  try {
    // Nobody can wait for this thread: a program that is stuck in the system outlives even SIGKILL.
    std::thread([player] { player->Watch(); }).detach();
  } catch (const std::system_error&) {
    player->Stop();
    player->EndsWell();
    return nullptr;
  }
  return player;
}

void SoundPlayer::Stop() {
  const std::lock_guard guard(lock_);
  stopped_ = true;
  // SIGKILL, since a player has nothing to lose and a hanging one may heed nothing else.
  if (program_ != 0) kill(-program_, SIGKILL);
}

bool SoundPlayer::HasFailed() const {
  const std::lock_guard guard(lock_);
  return failed_;
}

bool SoundPlayer::StartNextProgram() {
  const std::lock_guard guard(lock_);
  while (!stopped_ && program_ == 0 && next_ < kPrograms.size())
    program_ = Spawn(kPrograms[next_++], file_);
  return program_ != 0;
}

// Waits for the end of the program. Where the process ignores SIGCHLD the system keeps no result; it counts
// as a good one, and so does the end by a signal, which somebody wanted.
bool SoundPlayer::EndsWell() {
  siginfo_t end{};
  int result = 0;
  // The number stays the program's own until it is forgotten under the lock: Stop must not hit another.
  do
    result = waitid(P_PID, static_cast<id_t>(program_), &end, WEXITED | WNOWAIT);
  while (result != 0 && errno == EINTR);
  const std::lock_guard guard(lock_);
  if (result == 0) waitpid(program_, nullptr, 0);
  program_ = 0;
  return result != 0 || end.si_code != CLD_EXITED || end.si_status == 0;
}

void SoundPlayer::Watch() {
  do {
    if (EndsWell()) return;
  } while (StartNextProgram());
  const std::lock_guard guard(lock_);
  failed_ = !stopped_;
}

}  // namespace quillet
