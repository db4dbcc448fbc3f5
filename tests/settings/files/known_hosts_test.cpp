#include "settings/files/known_hosts.h"

#include <gtest/gtest.h>

#include "tests/settings/user_folders.h"

namespace quillet {
namespace {

const HostKey kFirst{"ssh-ed25519", "SHA256:first"};
const HostKey kOther{"ssh-rsa", "SHA256:other"};

class KnownHostsTest : public testing::Test, public UserFolders {
 protected:
  // A program of the user's that has just started.
  struct Program {
    explicit Program(UserFolders& user) : files(user) {}
    StartedFiles files;
    KnownHosts hosts{files};
  };
};

TEST_F(KnownHostsTest, TheFirstKeyStaysUntilTheUserTakesAnother) {
  Program program(*this);
  EXPECT_EQ(program.hosts.KeyOf("bbs.example"), std::nullopt);
  EXPECT_TRUE(program.hosts.Keep("BBS.example", kFirst));
  EXPECT_TRUE(program.hosts.Keep("bbs.example", kFirst)) << "it is on disk";
  EXPECT_FALSE(program.hosts.Keep("bbs.example", kOther));
  EXPECT_EQ(Program(*this).hosts.KeyOf("bbs.example"), kFirst);
  EXPECT_TRUE(program.hosts.Keep("2001:db8::5", kFirst));
  EXPECT_TRUE(program.hosts.Replace("bbs.example", kOther));
  EXPECT_EQ(program.hosts.KeyOf("bbs.example"), kOther);
  EXPECT_EQ(LinesOf(kKnownHostsFile), (std::vector<std::u16string>{u"bbs.example ssh-rsa SHA256:other",
                                                                   u"2001:db8::5 ssh-ed25519 SHA256:first"}));
}

TEST_F(KnownHostsTest, TwoProgramsKeepEachOthersKeys) {
  Program a(*this);
  Program b(*this);
  EXPECT_TRUE(a.hosts.Keep("one.example", kFirst));
  EXPECT_TRUE(b.hosts.Keep("two.example", kFirst));
  EXPECT_FALSE(b.hosts.Keep("one.example", kOther)) << "the other program was first";
  EXPECT_EQ(b.hosts.KeyOf("one.example"), kFirst);
  EXPECT_TRUE(a.hosts.Replace("two.example", kOther));
  EXPECT_EQ(LinesOf(kKnownHostsFile).size(), 2u);
  EXPECT_EQ(Program(*this).hosts.KeyOf("two.example"), kOther);
}

TEST_F(KnownHostsTest, LinesThatAreNoneStayAndNamesThatAreNoneAreNotKept) {
  Put(kKnownHostsFile,
      "# mine\r\nshort line\r\na  b c\r\nh t f g\r\n bbs.example t f \r\nbbs.example t g\r\n");
  Program program(*this);
  EXPECT_EQ(program.hosts.KeyOf("bbs.example"), (HostKey{"t", "f"})) << "the first one counts";
  for (const char* none : {"", "two words", "a\nb c d", "\xff", "h", "#", "a"})
    EXPECT_EQ(program.hosts.KeyOf(none), std::nullopt) << none;
  for (const char* none : {"", "two words", "a\nb c d", "\xff"})
    EXPECT_FALSE(program.hosts.Keep(none, kFirst)) << none;
  EXPECT_FALSE(program.hosts.Keep(std::string(254, 'h'), kFirst));
  EXPECT_FALSE(program.hosts.Keep("h", {"", "SHA256:x"}));
  EXPECT_TRUE(program.hosts.Keep("h", kFirst));
  EXPECT_EQ(LinesOf(kKnownHostsFile).size(), 7u);
  EXPECT_EQ(LinesOf(kKnownHostsFile)[2], u"a  b c");
}

TEST_F(KnownHostsTest, WhatCannotBeWrittenIsNotKept) {
  std::filesystem::create_directories(At(kKnownHostsFile));
  Program program(*this);
  EXPECT_FALSE(program.hosts.Keep("bbs.example", kFirst));
  EXPECT_FALSE(program.files.Problems().empty());
}

}  // namespace
}  // namespace quillet
