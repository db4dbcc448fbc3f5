#include "platform/instance_link.h"

#include <atomic>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/instance_message.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/variable.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

class InstanceLinkTest : public testing::Test {
 protected:
  static std::unique_ptr<InstanceLink> Window(std::u16string& taken) {
    return ListenForLinks([&taken](const std::u16string& text) {
      if (text == u"refused") return false;
      taken = text;
      return true;
    });
  }
  std::vector<fs::path> Sockets() const {
    return {fs::directory_iterator(scratch_.Path()), fs::directory_iterator()};
  }
  // Whether it was answered with a yes.
  bool SendBytes(const std::string& bytes) const {
    const int connection = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, Sockets().at(0).c_str());
    EXPECT_EQ(connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    char answer = 'n';
    const bool taken = recv(connection, &answer, 1, 0) == 1 && answer == 'y';
    close(connection);
    return taken;
  }

  const ScratchFolder scratch_;
  const Variable runtime_{"XDG_RUNTIME_DIR", scratch_.Path().c_str()};
};

TEST_F(InstanceLinkTest, AWindowTakesOrRefusesAndLeavesNothingBehind) {
  EXPECT_FALSE(SendToInstance(u"--single-argument x"));
  std::u16string taken;
  auto window = Window(taken);
  ASSERT_TRUE(window);
  EXPECT_TRUE(SendToInstance(u"--single-argument 文"));
  EXPECT_EQ(taken, u"--single-argument 文");
  EXPECT_FALSE(SendToInstance(u"refused"));
  EXPECT_FALSE(SendToInstance(std::u16string(kMostMessageUnits, u'x')));
  ASSERT_EQ(Sockets().size(), 1U);
  EXPECT_TRUE(Sockets()[0].filename().string().starts_with("Quill.AppID.NoVersion."));
  struct stat facts {};
  stat(Sockets()[0].c_str(), &facts);
  EXPECT_EQ(facts.st_mode & 0777U, 0600U);
  window.reset();
  EXPECT_EQ(Sockets().size(), 0U);
}

TEST_F(InstanceLinkTest, WhateverComesInTheWindowGoesOnListening) {
  std::u16string taken;
  const auto window = Window(taken);
  for (const std::string& bytes :
       {std::string("x"), std::string("ab"), std::string(3, '\0'), std::string("\x3D\xD8\0\0", 4),
        std::string(2 * kMostMessageUnits + 2, '\0'), std::string(100000, 'x')})
    EXPECT_FALSE(SendBytes(bytes)) << bytes.size();
  EXPECT_FALSE(SendBytes({})) << "hangs up without a word";
  EXPECT_EQ(taken, u"");
  EXPECT_TRUE(SendToInstance(u"x"));
}

TEST_F(InstanceLinkTest, OfSeveralWindowsTheOneUsedLastIsAskedAndADeadOneIsClearedAway) {
  const int dead = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strcpy(address.sun_path, (scratch_.Path() / "Quill.AppID.NoVersion.0").c_str());
  ASSERT_EQ(bind(dead, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  close(dead);
  std::u16string first;
  std::u16string second;
  auto firstWindow = Window(first);
  const fs::path firstSocket = [&] {
    for (const fs::path& path : Sockets())
      if (path != address.sun_path) return path;
    return fs::path();
  }();
  const auto secondWindow = Window(second);
  for (const fs::path& path : Sockets())
    fs::last_write_time(
        path, fs::file_time_type::clock::now() - std::chrono::hours(path == firstSocket        ? 2
                                                                    : path == address.sun_path ? 0
                                                                                               : 1));
  EXPECT_TRUE(SendToInstance(u"1"));
  EXPECT_EQ(second, u"1");
  firstWindow->NoteUserHere();
  EXPECT_TRUE(SendToInstance(u"2"));
  EXPECT_EQ(first, u"2");
  firstWindow.reset();
  EXPECT_TRUE(SendToInstance(u"3"));
  EXPECT_EQ(second, u"3");
  EXPECT_EQ(Sockets().size(), 1U);
}

TEST_F(InstanceLinkTest, WithoutAFolderOfTheUsersOwnNobodyListens) {
  fs::permissions(scratch_.Path(), fs::perms::all);
  std::u16string taken;
  if (fs::exists("/run/user/" + std::to_string(geteuid()))) GTEST_SKIP() << "the system has another one";
  EXPECT_FALSE(Window(taken));
}

}  // namespace
}  // namespace quillet
