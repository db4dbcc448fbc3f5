#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

#include "platform/folders.h"

namespace quillet {
namespace {

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

TEST(XdgTest, DataHomeIsHonouredUnlessItIsRelative) {
  const Variable home("HOME", "/somebody");
  {
    const Variable data("XDG_DATA_HOME", "/elsewhere");
    EXPECT_EQ(UserDataFolder(), "/elsewhere/quillet");
  }
  for (const char* useless : {"", "relative/path"}) {
    const Variable data("XDG_DATA_HOME", useless);
    EXPECT_EQ(UserDataFolder(), "/somebody/.local/share/quillet") << useless;
  }
}

TEST(XdgTest, ConfigHomeIsHonouredUnlessItIsRelative) {
  const Variable home("HOME", "/somebody");
  const Variable data("XDG_DATA_HOME", "/elsewhere");
  {
    const Variable config("XDG_CONFIG_HOME", "/settings");
    EXPECT_EQ(UserConfigFolder(), "/settings/quillet");
  }
  for (const char* useless : {"", "relative/path"}) {
    const Variable config("XDG_CONFIG_HOME", useless);
    EXPECT_EQ(UserConfigFolder(), "/somebody/.config/quillet") << useless;
  }
}

}  // namespace
}  // namespace quillet
