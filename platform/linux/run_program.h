// Starts programs of the desktop, never through a shell: to run on by themselves, or to be asked something.
// Any thread.
#pragma once

#include <chrono>
#include <optional>
#include <stop_token>
#include <string>
#include <sys/types.h>
#include <vector>

namespace quillet {

// The program's name, looked for on the path unless it has a slash, and its arguments.
using ProgramCall = std::vector<std::string>;

// The process; 0 when it cannot be started. It has nothing to read and nothing to say (see SpawnSettings).
pid_t StartProgram(const ProgramCall& call, int output = -1);
// Its exit status; 0 where the system does not tell, nothing after the end by a signal.
std::optional<int> WaitForProgram(pid_t process);

struct ProgramAnswer {
  int status = 0;
  std::string said;  // of its output, as much as an answer of one line may be
};
// Runs it to its end, which comes by force after `patience`, or soon after a stop is asked for. Nothing when
// it could not be started or has not ended by itself.
std::optional<ProgramAnswer> AskProgram(const ProgramCall& call, const std::stop_token& stop,
                                        std::chrono::milliseconds patience = std::chrono::seconds(10));

}  // namespace quillet
