#include <gtest/gtest.h>
#include <string>

#include "platform/folders.h"
#include "tests/support/variable.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

TEST(XdgTest, FoldersOfTheDesktopAreHonouredUnlessTheyAreRelative) {
  const struct {
    const char* variable;
    fs::path (*folder)();
    const char* usual;
  } cases[] = {{"XDG_DATA_HOME", UserDataFolder, "/somebody/.local/share/quillet"},
               {"XDG_CONFIG_HOME", UserConfigFolder, "/somebody/.config/quillet"},
               {"XDG_CACHE_HOME", UserCacheFolder, "/somebody/.cache/quillet"}};
  const Variable home("HOME", "/somebody");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.variable);
    for (const char* useless : {"", "relative/path"}) {
      const Variable set(c.variable, useless);
      EXPECT_EQ(c.folder(), c.usual) << useless;
    }
    const Variable set(c.variable, "/elsewhere");
    EXPECT_EQ(c.folder(), "/elsewhere/quillet");
  }
}

}  // namespace
}  // namespace quillet
