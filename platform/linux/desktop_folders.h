// Where this system's desktops keep what is not the program's own. Any thread.
#pragma once

#include <filesystem>
#include <vector>

namespace quillet {

// The user's data folder for all programs.
std::filesystem::path DesktopDataFolder();

// Where desktop entries lie: the user's own folder first, then the system's, of which the earlier ones count
// more.
std::vector<std::filesystem::path> ApplicationFolders();

// For sockets and the like, gone when the user logs out. It is the user's own and nobody else writes in it;
// empty where there is none such.
std::filesystem::path RuntimeFolder();

}  // namespace quillet
