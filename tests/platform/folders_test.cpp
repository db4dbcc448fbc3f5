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

TEST(FoldersTest, TheUserHasAFolderForThisProgramAlone) {
  EXPECT_TRUE(UserDataFolder().is_absolute());
  const std::string name = UserDataFolder().filename().string();
  EXPECT_TRUE(name == "quillet" || name == "Quillet") << name;
}

}  // namespace
}  // namespace quillet
