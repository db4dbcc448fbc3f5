#include "app/document/user_places.h"

#include <system_error>

#include "platform/folders.h"

namespace quillet {

UserPlaces OwnPlaces() {
  return {.registry = OpenUserRegistry(),
          .folders = {.working = IsInstalled() ? std::filesystem::path{} : ProgramFolder(),
                      .data = UserDataFolder()},
          .scratch = nullptr};
}

UserPlaces PlacesForOneRun() {
  auto scratch = std::make_unique<QTemporaryDir>();
  const std::filesystem::path folder(scratch->path().toStdU16String());
  std::error_code ignored;
  std::filesystem::create_directory(folder / "program", ignored);
  return {.registry = std::make_unique<MemoryRegistry>(),
          .folders = {.working = folder / "program", .data = folder / "data"},
          .scratch = std::move(scratch)};
}

}  // namespace quillet
