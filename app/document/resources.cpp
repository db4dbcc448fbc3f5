#include "app/document/resources.h"

#include "platform/folders.h"

namespace quillet {

Endpoints LoadAllEndpoints() {
  constexpr const char* kEndpointsFile = "endpoints.ini";
  Endpoints endpoints;
  LoadEndpoints(ResourceFolder() / "Data" / kEndpointsFile, endpoints);
  LoadEndpoints(UserDataFolder() / kEndpointsFile, endpoints);
  return endpoints;
}

Resources LoadResources() {
  Resources resources;
  resources.dataFolder = ResourceFolder() / "Data";
  resources.tables = LoadCharsetTables(resources.dataFolder);
  resources.endpoints = LoadAllEndpoints();
  return resources;
}

std::filesystem::path DefaultDemoContent() {
  return ResourceFolder() / "demo" / "content";
}

std::filesystem::path PlacesOfDemo(const std::filesystem::path& content) {
  return content / "places";
}

}  // namespace quillet
