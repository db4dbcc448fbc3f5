#include "platform/registry.h"

#include "platform/folders.h"
#include "platform/linux/file_registry.h"

namespace quillet {

std::unique_ptr<Registry> OpenUserRegistry() {
  return std::make_unique<FileRegistry>(UserConfigFolder() / "registry");
}

std::unique_ptr<Registry> OpenProfileRegistry(const std::filesystem::path& folder) {
  return std::make_unique<FileRegistry>(folder / "registry");
}

}  // namespace quillet
