#include "app/document/resources.h"

#include "platform/folders.h"

namespace quillet {

Resources LoadResources() {
  constexpr const char* kEndpointsFile = "endpoints.ini";
  Resources resources;
  resources.dataFolder = ResourceFolder() / "Data";
  resources.tables = LoadCharsetTables(resources.dataFolder);
  LoadEndpoints(resources.dataFolder / kEndpointsFile, resources.endpoints);
  LoadEndpoints(UserDataFolder() / kEndpointsFile, resources.endpoints);
  return resources;
}

std::filesystem::path DefaultDemoContent() {
  return ResourceFolder() / "demo" / "content";
}

std::filesystem::path PlacesOfDemo(const std::filesystem::path& content) {
  return content / "places";
}

}  // namespace quillet
