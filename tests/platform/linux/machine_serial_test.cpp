#include <array>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

#include "platform/linux/serial_file.h"
#include "tests/support/scratch_folder.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

TEST(MachineSerialTest, IsReadFromTheFirstFileThatHoldsOne) {
  const ScratchFolder folder;
  const std::array<fs::path, 4> files = {folder.Path() / "missing", folder.Path() / "blank",
                                         folder.Path() / "serial", folder.Path() / "later"};
  std::ofstream(files[1]) << "  \t\n";
  std::ofstream(files[3]) << "later";
  EXPECT_EQ(SerialFromFiles(files), "later");
  std::ofstream(files[2]) << "the serial\nnot this\n";
  EXPECT_EQ(SerialFromFiles(files), "the serial");
  fs::create_directory(files[0]);
  EXPECT_EQ(SerialFromFiles(files), "the serial") << "a folder is no file";
  EXPECT_EQ(SerialFromFiles(std::span(files).first(2)), "");
}

}  // namespace
}  // namespace quillet
