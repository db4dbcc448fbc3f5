// The serial number that this machine's tag is made of, as the system knows it. Platform folder only; any
// thread; may take some hundred milliseconds.
#pragma once

#include <string>

namespace quillet {

// The mainboard's serial number, else the machine's own number; empty when neither can be read.
std::string MachineSerial();

}  // namespace quillet
