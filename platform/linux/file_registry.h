// The registry where the system has none: one text file of the user's, written whole with every change.
// Another process may use the same file: each write, alone at it, takes over what the file holds by then.
// User-interface thread.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/file_lock.h"
#include "platform/registry.h"

namespace quillet {

class FileRegistry : public Registry {
 public:
  // Reads the file. One that could not be opened is never written; then values live as long as the object.
  // One that is damaged or too large is kept aside at once, and not written where it cannot be.
  explicit FileRegistry(std::filesystem::path file);

  std::optional<std::u16string> Text(std::u16string_view path, std::u16string_view name) const override;
  std::optional<std::uint32_t> Number(std::u16string_view path, std::u16string_view name) const override;
  bool SetText(std::u16string_view path, std::u16string_view name, std::u16string_view value) override;
  bool SetNumber(std::u16string_view path, std::u16string_view name, std::uint32_t value) override;
  std::optional<FileProblem> Problem() const override;

  // Some thousand times what the program keeps.
  static constexpr std::size_t kLargestFile = 1U << 20;

 private:
  enum class Found { kNothing, kWhole, kDamaged, kUnreadable };

  bool Set(std::u16string_view path, std::u16string_view name, RegistryValues::Data data);
  Found Read(RegistryValues& values);
  bool Write();
  bool NotWritten(std::string reason);

  std::filesystem::path file_;
  LockPatience patience_;
  RegistryValues values_;
  RegistryValues unwritten_;  // set here and not in the file yet
  bool leftAlone_ = false;    // the file could not be opened
  std::optional<FileProblem> readProblem_;
  std::optional<FileProblem> writeProblem_;
};

}  // namespace quillet
