#include "platform/opener.h"

#include <chrono>
#include <system_error>
#include <thread>

#include "platform/link_handler.h"
#include "platform/linux/run_program.h"
#include "platform/web_address.h"

namespace quillet {
namespace {

// The desktop's program may become the browser, whose end much later says nothing about the address.
constexpr std::chrono::seconds kSoon{10};

// Returns when the program that was started has ended.
bool OpenWithDesktop(const std::string& address) {
  const auto begin = std::chrono::steady_clock::now();
  const pid_t process = StartProgram({"xdg-open", address});
  if (process == 0) return false;
  const std::optional<int> status = WaitForProgram(process);
  return status == 0 || std::chrono::steady_clock::now() - begin > kSoon;
}

}  // namespace

// The thread stays as long as the program that it has started, so that no zombie is left of it.
bool SystemOpener::Open(std::u16string_view address) {
  const std::string openable = OpenableAddress(address);
  if (openable.empty()) return false;
  try {
    std::thread([openable, other = otherBrowser_ ? otherBrowser_() : std::u16string(), failures = failures_] {
      // What the desktop would hand back to this program goes straight on.
      const bool isOurs = CurrentLinkHandling().owner == LinkOwner::kThisProgram;
      const std::u16string wide(openable.begin(), openable.end());  // ASCII
      const bool opened = isOurs ? OpenInOtherBrowser(wide, other) : OpenWithDesktop(openable);
      if (!opened) failures->Tell(wide);
    }).detach();
  } catch (const std::system_error&) {
    return false;
  }
  return true;
}

}  // namespace quillet
