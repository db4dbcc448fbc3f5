#include "platform/opener.h"

#include <atomic>
#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

#include "tests/platform/linux/scripts_on_path.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

// The script puts what it was given, one argument a line, into the file "call", which is there at once and
// whole.
class OpenerTest : public ScriptsOnPathTest {
 protected:
  void WriteProgram(const std::string& more = {}) const {
    WriteScript("xdg-open",
                "cd \"$notes\" || exit 1\n" + more + "\nprintf '%s\\n' \"$@\" > part\n/bin/mv part call\n");
  }
  // What the program was given when the address was opened; empty when it was not started.
  std::string Given(std::u16string_view address) {
    fs::remove(scratch_.Path() / "call");
    if (!opener_.Open(address)) return {};
    EXPECT_TRUE(WaitUntil([&] { return fs::exists(scratch_.Path() / "call"); }));
    return Note("call");
  }

  SystemOpener opener_;
};

TEST_F(OpenerTest, TheProgramIsGivenTheAddressAsItsOneArgument) {
  WriteProgram();
  EXPECT_EQ(Given(u"https://www.a.example:8080/b/c.html?d=e&f=%41#g"),
            "https://www.a.example:8080/b/c.html?d=e&f=%41#g\n");
  EXPECT_EQ(Given(u"HTTP://A.example"), "http://A.example\n");
  EXPECT_EQ(Given(u"https://a.example/search?q=文藝 C"),
            "https://a.example/search?q=%E6%96%87%E8%97%9D%20C\n");
}

TEST_F(OpenerTest, NothingInAnAddressIsACommand) {
  WriteProgram();
  EXPECT_EQ(Given(u"http://a.example/$(touch x);touch x&touch x|`touch x`"),
            "http://a.example/$(touch%20x);touch%20x&touch%20x%7C%60touch%20x%60\n");
  EXPECT_EQ(Given(u"http://a.example/' 'b\" \"c -d --e \\ *"),
            "http://a.example/'%20'b%22%20%22c%20-d%20--e%20%5C%20*\n");
  EXPECT_FALSE(fs::exists(scratch_.Path() / "x"));
}

TEST_F(OpenerTest, WhatIsNoWebAddressStartsNothing) {
  WriteProgram();
  for (const std::u16string_view address :
       {u"", u"file:///etc/passwd", u"-http://a.example", u" http://a.example",
        u"http://a.example\nfile:///b", u"http://a.example/\x7F"})
    EXPECT_FALSE(opener_.Open(address));
  EXPECT_FALSE(opener_.Open(std::u16string_view(u"http://a.example/\0b", 19)));
  EXPECT_FALSE(opener_.Open(u"http://a.example/" + std::u16string(50000, u'b')));
  EXPECT_TRUE(HasNoChildren());
  EXPECT_EQ(Note("call"), "");
}

TEST_F(OpenerTest, WhatCannotBeOpenedIsToldLater) {
  std::atomic<int> failures{0};
  SystemOpener opener({}, [&](const std::u16string& address) {
    EXPECT_EQ(address, u"http://a.example/");
    ++failures;
  });
  auto fails = [&, told = 0]() mutable {
    EXPECT_TRUE(opener.Open(u"http://a.example/"));
    ++told;
    return WaitUntil([&] { return failures == told; });
  };
  EXPECT_TRUE(fails()) << "no program";
  PutFile(Programs() / "xdg-open", "no program");
  EXPECT_TRUE(fails()) << "not one that can be started";
  WriteScript("xdg-open", "exit 4");
  EXPECT_TRUE(fails()) << "one that gives up";
}

TEST_F(OpenerTest, TheProgramHasASessionOfItsOwnAndIsNotWaitedFor) {
  // It stays until the test lets it go.
  WriteProgram(
      "read -r process name state parent group session rest < /proc/$$/stat\n"
      "echo \"$process $session\" > session\n"
      "streams=$(cd /proc/$$/fd; /bin/readlink 0 1 2); echo \"$streams\" > streams\n"
      "while [ ! -e go ]; do /bin/sleep 0.01; done");
  ASSERT_TRUE(opener_.Open(u"http://a.example/"));
  ASSERT_TRUE(WaitUntil([&] { return Note("streams").ends_with("null\n"); }));
  EXPECT_FALSE(fs::exists(scratch_.Path() / "call"));
  EXPECT_EQ(Note("streams"), "/dev/null\n/dev/null\n/dev/null\n");
  std::istringstream session(Note("session"));
  pid_t process = 0;
  pid_t leader = 0;
  session >> process >> leader;
  EXPECT_EQ(process, leader);
  EXPECT_NE(leader, getsid(0));
  PutFile(scratch_.Path() / "go", "on");
}

}  // namespace
}  // namespace quillet
