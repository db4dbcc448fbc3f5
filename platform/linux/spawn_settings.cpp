#include "platform/linux/spawn_settings.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace quillet {

SpawnSettings::SpawnSettings() {
  posix_spawn_file_actions_init(&files_);
  posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&files_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawnattr_init(&attributes_);
  // A session is a process group too, and does not end with the terminal that this program was started from.
  posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  sigset_t signals;
  sigemptyset(&signals);
  posix_spawnattr_setsigmask(&attributes_, &signals);
  sigfillset(&signals);
  posix_spawnattr_setsigdefault(&attributes_, &signals);
}

SpawnSettings::~SpawnSettings() {
  posix_spawn_file_actions_destroy(&files_);
  posix_spawnattr_destroy(&attributes_);
}

void SpawnSettings::SendOutputTo(int descriptor) {
  posix_spawn_file_actions_adddup2(&files_, descriptor, STDOUT_FILENO);
}

}  // namespace quillet
