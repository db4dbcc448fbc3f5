// Small values kept for the user outside the program's files, each a name under a key path like
// "SOFTWARE\Quillet" of the current user. On Windows the system's registry, elsewhere a file of the user's
// configuration folder; in memory for tests. User-interface thread; one object per process.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_problem.h"
#include "platform/registry_values.h"

namespace quillet {

// Where the program keeps its own.
inline constexpr std::u16string_view kRegistryPath = u"SOFTWARE\\Quillet";

class Registry {
 public:
  Registry() = default;
  Registry(const Registry&) = delete;
  Registry& operator=(const Registry&) = delete;
  virtual ~Registry() = default;

  // Names and paths are compared as the system does: letter case does not matter. Nothing when the value is
  // missing or of the other type. Paths, names and texts end at their first NUL.
  virtual std::optional<std::u16string> Text(std::u16string_view path, std::u16string_view name) const = 0;
  virtual std::optional<std::uint32_t> Number(std::u16string_view path, std::u16string_view name) const = 0;

  // Makes the key when it is missing and writes at once. False when the system refuses; the value is then
  // still what this object answers for the rest of the run.
  virtual bool SetText(std::u16string_view path, std::u16string_view name, std::u16string_view value) = 0;
  virtual bool SetNumber(std::u16string_view path, std::u16string_view name, std::uint32_t value) = 0;

  // Makes a key that holds nothing, where the system knows such. False when it refuses.
  virtual bool MakeKey(std::u16string_view /*path*/) { return true; }

  // What went wrong with the file or the key behind it, if something did.
  virtual std::optional<FileProblem> Problem() const { return std::nullopt; }
};

// The user's own. Never null: where the system refuses, values live as long as the object.
std::unique_ptr<Registry> OpenUserRegistry();
// The same, kept apart from it and from those of other folders: of a profile that lies in that folder.
std::unique_ptr<Registry> OpenProfileRegistry(const std::filesystem::path& folder);

// Forgets everything at its end.
class MemoryRegistry : public Registry {
 public:
  std::optional<std::u16string> Text(std::u16string_view path, std::u16string_view name) const override;
  std::optional<std::uint32_t> Number(std::u16string_view path, std::u16string_view name) const override;
  bool SetText(std::u16string_view path, std::u16string_view name, std::u16string_view value) override;
  bool SetNumber(std::u16string_view path, std::u16string_view name, std::uint32_t value) override;

 private:
  RegistryValues values_;
};

}  // namespace quillet
