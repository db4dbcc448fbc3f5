#include "platform/folders.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

namespace fs = std::filesystem;

TEST(FoldersTest, TheProgramLiesWhereItSays) {
  ASSERT_TRUE(ProgramFolder().is_absolute());
  bool found = false;
  for (const auto& entry : fs::directory_iterator(ProgramFolder()))
    found = found || entry.path().stem() == "platform_tests";
  EXPECT_TRUE(found) << ProgramFolder();
}

TEST(FoldersTest, DataIsFoundBesideTheProgram) {
  EXPECT_TRUE(fs::exists(ResourceFolder() / "Data" / "endpoints.ini")) << ResourceFolder();
}

TEST(FoldersTest, TheUserHasFoldersForThisProgramAlone) {
  for (const fs::path& folder : {UserDataFolder(), UserConfigFolder()}) {
    EXPECT_TRUE(folder.is_absolute()) << folder;
    const std::string name = folder.filename().string();
    EXPECT_TRUE(name == "quillet" || name == "Quillet") << name;
  }
}

}  // namespace
}  // namespace quillet
