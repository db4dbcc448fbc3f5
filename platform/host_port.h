// What every system's resolver is asked to refuse, because systems differ: some take an empty host for this
// machine, an empty port for 0, and cut a port number to 16 bits. Platform folder only; any thread.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

// Empty when the resolver may be asked, else what is wrong, in words for the user (UTF-8).
std::string HostPortFault(std::string_view host, std::string_view port);

}  // namespace quillet
