// A folder of a test's own, removed with all it holds when the test ends, and the files in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
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

inline void PutFile(const std::filesystem::path& file, std::string_view bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

// Empty when there is none.
inline std::string FileAt(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace quillet
