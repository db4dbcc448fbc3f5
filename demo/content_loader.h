// Reads boards, articles, users and screens from the content folder. Called once at start-up, on one thread.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "demo/article.h"

namespace quillet::demo {

// What stands between two frames of an animation in a loaded body; U+240C in the file.
inline constexpr const char* kFrameSeparator = "\f";

struct Content {
  std::vector<Board> boards;  // in the order of the board list
  std::vector<User> users;    // those of users.txt, then everybody else who writes
  // Every complaint as "file: what"; a file that cannot be used is left out.
  std::vector<std::string> problems;
};

Content LoadContent(const std::filesystem::path& folder);

// The article of one file's UTF-8 text. `path` ("SandBox/001.txt") gives the file name its suffix. Returns
// false and says why in `problem`.
bool ParseArticle(std::string_view utf8, std::string_view path, Article& article, std::string& problem);

// The Big5 lines of screens/NAME; empty when there is no such file.
std::vector<std::string> LoadScreen(const std::filesystem::path& folder, const std::string& name);

}  // namespace quillet::demo
