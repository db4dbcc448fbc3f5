// Where the program's files live. Any thread.
#pragma once

#include <filesystem>

namespace quillet {

// The file of the running program; empty when the system does not say.
std::filesystem::path ProgramFile();

// The folder of the running program; empty when the system does not say.
std::filesystem::path ProgramFolder();

// Where "Data/" and "demo/content/" lie: beside the program, or in its "../share/quillet". Falls back to the
// working folder, so that a missing installation shows as missing files.
std::filesystem::path ResourceFolder();

// Whether they lie in its "../share/quillet": then the program's folder is one for programs, and nothing else
// belongs there.
bool IsInstalled();

// The user's own data folder for Quillet (not created here).
std::filesystem::path UserDataFolder();

// The user's own configuration folder for Quillet (not created here). Where the system keeps configuration
// elsewhere it is the data folder.
std::filesystem::path UserConfigFolder();

// The user's folder for what Quillet can fetch anew (not created here).
std::filesystem::path UserCacheFolder();

}  // namespace quillet
