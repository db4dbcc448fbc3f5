#include "platform/linux/serial_file.h"

#include <algorithm>
#include <fstream>

namespace quillet {
namespace {

// A file that holds something else does not make the program read all of it.
constexpr std::size_t kLongestSerial = 256;

std::string FirstLine(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::string line(kLongestSerial, '\0');
  in.read(line.data(), static_cast<std::streamsize>(line.size()));
  line.resize(static_cast<std::size_t>(in.gcount()));
  line.resize(std::min(line.find('\n'), line.size()));
  return line;
}

}  // namespace

std::string SerialFromFiles(std::span<const std::filesystem::path> files) {
  for (const std::filesystem::path& file : files) {
    std::string line = FirstLine(file);
    if (line.find_first_not_of(" \t\r") != std::string::npos) return line;
  }
  return {};
}

}  // namespace quillet
