#include "app/document/resources.h"

namespace quillet {
namespace {

constexpr const char* kEndpointsFile = "endpoints.ini";

}  // namespace

Endpoints LoadAllEndpoints(const std::filesystem::path& userData) {
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

Endpoints WebSitesOfDemo(const std::filesystem::path& content) {
  Endpoints endpoints;
  LoadEndpoints(content / "pictures" / kEndpointsFile, endpoints);
  return endpoints;
}

std::filesystem::path PlacesOfDemo(const std::filesystem::path& content) {
  return content / "places";
}

}  // namespace quillet
