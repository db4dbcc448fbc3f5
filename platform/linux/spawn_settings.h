// How programs of the desktop are started: in a session of their own, with nothing to read, nothing to say
// and no signal setting of ours. For posix_spawn; any thread.
#pragma once

#include <spawn.h>

namespace quillet {

class SpawnSettings {
 public:
  SpawnSettings();
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;
  ~SpawnSettings();

  // What the program says goes there instead of nowhere.
  void SendOutputTo(int descriptor);

  const posix_spawn_file_actions_t* Files() const { return &files_; }
  const posix_spawnattr_t* Attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t files_;
  posix_spawnattr_t attributes_;
};

}  // namespace quillet
