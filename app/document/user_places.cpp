#include "app/document/user_places.h"

#include <system_error>

#include "platform/folders.h"

namespace quillet {

UserPlaces OwnPlaces() {
  return {.registry = OpenUserRegistry(),
          .ofSystem = nullptr,
          .folders = {.working = IsInstalled() ? std::filesystem::path{} : ProgramFolder(),
                      .data = UserDataFolder()},
          .cache = UserCacheFolder(),
          .scratch = nullptr};
}

UserPlaces PlacesOfProfile(const std::filesystem::path& folder) {
  return {.registry = OpenProfileRegistry(folder),
          .ofSystem = OpenUserRegistry(),
          .folders = {.working = {}, .data = folder},
          .cache = folder / "cache",
          .scratch = nullptr};
}

UserPlaces PlacesForOneRun() {
  auto scratch = std::make_unique<QTemporaryDir>();
  const std::filesystem::path folder(scratch->path().toStdU16String());
  std::error_code ignored;
  std::filesystem::create_directory(folder / "program", ignored);
  return {.registry = std::make_unique<MemoryRegistry>(),
          .ofSystem = nullptr,
          .folders = {.working = folder / "program", .data = folder / "data"},
          .scratch = std::move(scratch)};
}

}  // namespace quillet
