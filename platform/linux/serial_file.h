// Serial numbers that the system offers as small text files. Any thread.
#pragma once

#include <filesystem>
#include <span>
#include <string>

namespace quillet {

// The first line of the first file that can be read and does not begin with a blank line. Empty when there is
// none.
std::string SerialFromFiles(std::span<const std::filesystem::path> files);

}  // namespace quillet
