#include "app/document/resources.h"

namespace quillet {

Endpoints LoadAllEndpoints(const std::filesystem::path& userData) {
  constexpr const char* kEndpointsFile = "endpoints.ini";
  Endpoints endpoints;
  LoadEndpoints(ResourceFolder() / "Data" / kEndpointsFile, endpoints);
  LoadEndpoints(userData / kEndpointsFile, endpoints);
  return endpoints;
}

Resources LoadResources(const std::filesystem::path& userData) {
  Resources resources;
  resources.dataFolder = ResourceFolder() / "Data";
  resources.tables = LoadCharsetTables(resources.dataFolder);
  resources.endpoints = LoadAllEndpoints(userData);
  return resources;
}

std::filesystem::path DefaultDemoContent() {
  return ResourceFolder() / "demo" / "content";
}

std::filesystem::path PlacesOfDemo(const std::filesystem::path& content) {
  return content / "places";
}

}  // namespace quillet
