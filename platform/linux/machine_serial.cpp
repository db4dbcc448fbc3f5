#include "platform/machine_serial.h"

#include <array>
#include <filesystem>

#include "platform/linux/serial_file.h"

namespace quillet {

std::string MachineSerial() {
  // The board's serial number is for root's eyes on most systems; the numbers of the installation are for
  // all.
  const std::array<std::filesystem::path, 3> files = {"/sys/class/dmi/id/board_serial", "/etc/machine-id",
                                                      "/var/lib/dbus/machine-id"};
  return SerialFromFiles(files);
}

}  // namespace quillet
