#include "platform/registry.h"

#include "platform/folders.h"
#include "platform/linux/file_registry.h"

namespace quillet {

std::unique_ptr<Registry> OpenUserRegistry() {
  return std::make_unique<FileRegistry>(UserConfigFolder() / "registry");
}

}  // namespace quillet
