#include "platform/linux/run_program.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/spawn_settings.h"

namespace quillet {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kLongestAnswer = 4096;
// How long a stop may go unnoticed.
constexpr std::chrono::milliseconds kGlance{20};

class Pipe {
 public:
  Pipe() { isOpen_ = pipe2(ends_.data(), O_CLOEXEC | O_NONBLOCK) == 0; }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() {
    if (isOpen_) close(ends_[0]);
    CloseInput();
  }
  void CloseInput() {
    if (isOpen_ && ends_[1] >= 0) close(ends_[1]);
    ends_[1] = -1;
  }
  bool IsOpen() const { return isOpen_; }
  int Output() const { return ends_[0]; }
  int Input() const { return ends_[1]; }

 private:
  std::array<int, 2> ends_{-1, -1};
  bool isOpen_ = false;
};

// False at its end.
bool ReadSome(int descriptor, std::string& said) {
  std::array<char, 512> part{};
  const ssize_t count = read(descriptor, part.data(), part.size());
  if (count < 0) return errno == EAGAIN || errno == EINTR;
  said.append(part.data(), std::min(static_cast<std::size_t>(count), kLongestAnswer - said.size()));
  return count > 0;
}

// Its number stays its own until it is waited for.
bool HasEnded(pid_t process) {
  siginfo_t end{};
  const int result = waitid(P_PID, static_cast<id_t>(process), &end, WEXITED | WNOHANG | WNOWAIT);
  return (result != 0 && errno == ECHILD) || (result == 0 && end.si_pid == process);
}

// What it has said by the time that it ends. False when it has not ended by itself.
bool Listen(pid_t process, int output, std::string& said, const std::stop_token& stop,
            Clock::time_point end) {
  bool says = true;
  for (;;) {
    pollfd wait{.fd = says ? output : -1, .events = POLLIN, .revents = 0};
    const int ready = poll(&wait, 1, static_cast<int>(kGlance.count()));
    if (ready > 0) says = ReadSome(output, said);
    // Programs that it has started may keep the output open.
    if (ready == 0 && HasEnded(process)) return true;
    if (stop.stop_requested() || Clock::now() >= end) return false;
  }
}

}  // namespace

pid_t StartProgram(const ProgramCall& call, int output) {
  std::vector<std::string> words = call;
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  SpawnSettings settings;
  if (output >= 0) settings.SendOutputTo(output);
  pid_t process = 0;
  const int error = words.empty() ? ENOENT
                                  : posix_spawnp(&process, arguments.front(), settings.Files(),
                                                 settings.Attributes(), arguments.data(), environ);
  return error == 0 ? process : 0;
}

std::optional<int> WaitForProgram(pid_t process) {
  int status = 0;
  pid_t ended = 0;
  do
    ended = waitpid(process, &status, 0);
  while (ended < 0 && errno == EINTR);
  if (ended < 0) return 0;
  return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
}

std::optional<ProgramAnswer> AskProgram(const ProgramCall& call, const std::stop_token& stop,
                                        std::chrono::milliseconds patience) {
  Pipe pipe;
  if (!pipe.IsOpen()) return std::nullopt;
  const pid_t process = StartProgram(call, pipe.Input());
  pipe.CloseInput();
  if (process == 0) return std::nullopt;
  ProgramAnswer answer;
  const bool ended = Listen(process, pipe.Output(), answer.said, stop, Clock::now() + patience);
  // It leads a group of its own.
  if (!ended) kill(-process, SIGKILL);
  const std::optional<int> status = WaitForProgram(process);
  if (!ended || !status) return std::nullopt;
  answer.status = *status;
  return answer;
}

}  // namespace quillet
