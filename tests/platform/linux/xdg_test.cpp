#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

#include "platform/folders.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

// Puts an environment variable back when the test ends.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old, had_ = true;
    setenv(name, value, 1);
  }
  ~Variable() {
    if (had_)
      setenv(name_, old_.c_str(), 1);
    else
      unsetenv(name_);
  }

 private:
  const char* name_;
  std::string old_;
  bool had_ = false;
};

TEST(XdgTest, FoldersOfTheDesktopAreHonouredUnlessTheyAreRelative) {
  const struct {
    const char* variable;
    fs::path (*folder)();
    const char* usual;
  } cases[] = {{"XDG_DATA_HOME", UserDataFolder, "/somebody/.local/share/quillet"},
               {"XDG_CONFIG_HOME", UserConfigFolder, "/somebody/.config/quillet"}};
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
