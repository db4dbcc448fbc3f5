// What the program reads from its data folder at start-up. User-interface thread, before any session exists.
#pragma once

#include <filesystem>

#include "core/charset.h"
#include "core/endpoints.h"
#include "platform/folders.h"

namespace quillet {

struct Resources {
  std::filesystem::path dataFolder;
  CharsetLoad tables;
  Endpoints endpoints;  // the user's own file laid over the program's
};

// `userData`: the user's data folder.
Resources LoadResources(const std::filesystem::path& userData = UserDataFolder());

// Only those, for a start that needs no more.
Endpoints LoadAllEndpoints(const std::filesystem::path& userData = UserDataFolder());

// Where the demo's content lies when nobody says otherwise.
std::filesystem::path DefaultDemoContent();
// What the services are that a demo's articles link to, in the form of "endpoints.ini"; empty where its
// content says nothing of them.
Endpoints WebSitesOfDemo(const std::filesystem::path& content);
// Where a demo's content holds the tables of places for those who write there.
std::filesystem::path PlacesOfDemo(const std::filesystem::path& content);

}  // namespace quillet
