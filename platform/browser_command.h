// The command of a browser as Windows keeps it for a ProgId, taken apart so that a link can be given to it.
// Pure; any thread. Written without the system, so that it is tested everywhere.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

struct BrowserCommand {
  std::u16string program;  // without quotes; empty: the command names none
  std::u16string arguments;

  bool operator==(const BrowserCommand&) const = default;
};

// The program goes up to and including its ".exe", in any letter case, of which a quote, a blank or the
// command's end follows. In what stands behind it each "%1" is replaced with the link, which must hold no
// quotes and no blanks (see OpenableAddress).
BrowserCommand SplitBrowserCommand(std::u16string_view command, std::u16string_view link);

}  // namespace quillet
