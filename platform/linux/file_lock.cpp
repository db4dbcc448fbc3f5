#include "platform/file_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillet {

FileLock::Outcome FileLock::Try() {
  const int handle =
      open(file_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, 0600);
  if (handle == -1) return errno == EINTR ? Outcome::kBusy : Outcome::kImpossible;
  Outcome outcome = Outcome::kHeld;
  struct stat held {};
  struct stat named {};
  if (flock(handle, LOCK_EX | LOCK_NB) != 0)
    outcome = errno == EWOULDBLOCK || errno == EINTR ? Outcome::kBusy : Outcome::kImpossible;
  // Whoever had the turn before took the name away, perhaps after the file was opened here.
  else if (fstat(handle, &held) != 0 || lstat(file_.c_str(), &named) != 0 || held.st_ino != named.st_ino ||
           held.st_dev != named.st_dev)
    outcome = Outcome::kBusy;
  if (outcome == Outcome::kHeld)
    handle_ = handle;
  else
    close(handle);
  return outcome;
}

// The name goes while the lock is held, so that nobody else's goes.
void FileLock::Release() {
  unlink(file_.c_str());
  close(handle_);
}

}  // namespace quillet
