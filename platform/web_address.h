// Which web addresses may leave the program, and in what form: the one rule for the links on the screen and
// for all that the opener is given. Pure; any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet {

// In UTF-16 units.
inline constexpr std::size_t kLongestWebAddress = 2048;

// An address as it stands in a text. Its scheme is http or https in any letter case; its host a name of ASCII
// letters, digits, "-", "_" and dots, or an IPv6 address in brackets; a port may follow. A user's name before
// the host is refused, since it makes one site look like another. The rest is ASCII without blanks, control
// characters, double quotes, "<", ">", "`" and "\".
bool IsWebAddress(std::u16string_view address);

// The address in the form that programs take: ASCII, its scheme in lower case. What no address may hold, such
// as blanks, quotes and Chinese behind the host, is percent-encoded as UTF-8; escapes that are there already
// stay. Empty when it may not be opened: its scheme or host is none that IsWebAddress takes, it holds control
// characters or is longer than kLongestWebAddress.
std::string OpenableAddress(std::u16string_view address);

// Where the host stands in an address, by the same rules for scheme, host and port, whatever follows them and
// however long it is: units first to last-1, without the port. Empty where no such site begins the address.
struct HostPlace {
  std::size_t first = 0;
  std::size_t last = 0;

  bool IsEmpty() const { return first == last; }
};
HostPlace HostIn(std::u16string_view address);

}  // namespace quillet
