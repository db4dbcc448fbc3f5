// Winsock started once per process, and its error texts. Windows sources only; any thread.
#pragma once

#include <string>
#include <winsock2.h>

namespace quillet {

// Starts Winsock at the first call; it stays until the process ends.
void NeedWinsock();

// The system's text for an error number, UTF-8, without the line end.
std::string SystemErrorText(int code);

}  // namespace quillet
