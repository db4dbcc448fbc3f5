#include "platform/opener.h"

#include <array>
#include <cerrno>
#include <future>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "platform/linux/spawn_settings.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

// 0 when it cannot be started.
pid_t Spawn(std::string program, std::string argument) {
  const std::array<char*, 3> arguments{program.data(), argument.data(), nullptr};
  const SpawnSettings settings;
  pid_t process = 0;
  const int error = posix_spawnp(&process, program.c_str(), settings.Files(), settings.Attributes(),
                                 arguments.data(), environ);
  return error == 0 ? process : 0;
}

void WaitForEnd(pid_t process) {
  while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
  }
}

// The program may run as long as the browser that it becomes. It has a thread that waits for its end, so that
// no zombie is left; the thread comes first, since without one no program may be started.
bool StartAndForget(const std::string& program, const std::string& argument) {
  std::promise<pid_t> started;
  try {
    std::thread([process = started.get_future()]() mutable {
      if (const pid_t number = process.get(); number != 0) WaitForEnd(number);
    }).detach();
  } catch (const std::system_error&) {
    return false;
  }
  const pid_t process = Spawn(program, argument);
  started.set_value(process);
  return process != 0;
}

}  // namespace

bool SystemOpener::Open(std::u16string_view address) {
  const std::string openable = OpenableAddress(address);
  return !openable.empty() && StartAndForget("xdg-open", openable);
}

}  // namespace quillet
