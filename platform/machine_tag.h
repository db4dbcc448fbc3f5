// A short text that tells this machine from others, so that what is sealed here opens nowhere else. Any
// thread; may take some hundred milliseconds.
#pragma once

#include <string>
#include <string_view>

namespace quillet {

// The last 7 characters of the mainboard's serial number, or of the machine's own number where the system
// keeps the serial from ordinary users. Empty only when neither could be read.
std::string MachineTag();

// The last 7 bytes, padded on the left with "0"; empty for an empty serial. Blanks around it are no part of
// it.
std::string TagOfSerial(std::string_view serial);

}  // namespace quillet
