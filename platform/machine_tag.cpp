#include "platform/machine_tag.h"

#include "platform/machine_serial.h"

namespace quillet {
namespace {

constexpr std::size_t kTagLength = 7;

}  // namespace

std::string MachineTag() {
  return TagOfSerial(MachineSerial());
}

std::string TagOfSerial(std::string_view serial) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = serial.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  serial = serial.substr(first, serial.find_last_not_of(kBlanks) - first + 1);
  if (serial.size() >= kTagLength) return std::string(serial.substr(serial.size() - kTagLength));
  return std::string(kTagLength - serial.size(), '0').append(serial);
}

}  // namespace quillet
