// A turn at files that several programs of one user read anew, change and replace: whoever holds the lock is
// alone at it from the reading to the replacing. It lies in a file of its own, which is there only meanwhile;
// a program that dies leaves none held. One object per turn, never two of one file within each other. Any
// thread.
#pragma once

#include <chrono>
#include <filesystem>

namespace quillet {

// How long to wait for a turn. A holder that is stuck is waited for once; from then on only for a moment,
// until a turn was had again. Outlives the locks that are given it.
class LockPatience {
 public:
  // Within three seconds the slowest disks flush a small file, and the window may stand still as long once.
  explicit LockPatience(std::chrono::milliseconds first = std::chrono::seconds(3)) : first_(first) {}
  std::chrono::milliseconds ForNextTurn() const;
  void NoteHeld() { isStuck_ = false; }
  void NoteGivenUp() { isStuck_ = true; }

 private:
  std::chrono::milliseconds first_;
  bool isStuck_ = false;
};

class FileLock {
 public:
  // `file` is the lock's own, never the one that is replaced. Returns with the lock; or without it when there
  // can be none there, as on a disk that is only read, or when patience ends. Not to save at all would be
  // worse then.
  FileLock(std::filesystem::path file, LockPatience& patience);
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  ~FileLock();

  bool IsHeld() const { return isHeld_; }

 private:
  enum class Outcome { kHeld, kBusy, kImpossible };
  // In the system's own calls.
  Outcome Try();
  void Release();

  std::filesystem::path file_;
  bool isHeld_ = false;
#ifdef _WIN32
  void* handle_ = nullptr;
#else
  int handle_ = -1;
#endif
};

}  // namespace quillet
