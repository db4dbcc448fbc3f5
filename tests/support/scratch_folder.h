// A folder of a test's own, removed with all it holds when the test ends.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <system_error>

namespace quillet {

class ScratchFolder {
 public:
  ScratchFolder()
      : path_(
            std::filesystem::path(testing::TempDir()) /
            ("quillet_" + std::to_string(std::random_device{}()) + std::to_string(std::random_device{}()))) {
    std::filesystem::create_directories(path_);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace quillet
