// The only programs on the path are those that a test writes, as shell scripts, and none is left as a zombie.
#pragma once

#include <cerrno>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

#include "tests/support/scratch_folder.h"
#include "tests/support/wait_until.h"

namespace quillet {

// Whether the process has no children, zombies included; looks without taking any away.
inline bool HasNoChildren() {
  siginfo_t ignored{};
  return waitid(P_ALL, 0, &ignored, WEXITED | WNOHANG | WNOWAIT) == -1 && errno == ECHILD;
}

class ScriptsOnPathTest : public testing::Test {
 protected:
  ScriptsOnPathTest() {
    std::filesystem::create_directory(Programs());
    setenv("PATH", Programs().c_str(), 1);
  }
  ~ScriptsOnPathTest() override {
    EXPECT_TRUE(WaitUntil(HasNoChildren)) << "a zombie is left";
    setenv("PATH", path_.c_str(), 1);
  }

  std::filesystem::path Programs() const { return scratch_.Path() / "programs"; }
  // `$notes` is the folder of the notes.
  void WriteScript(const std::string& name, const std::string& body) const {
    PutFile(Programs() / name, "#!/bin/sh\nnotes='" + scratch_.Path().string() + "'\n" + body);
    std::filesystem::permissions(Programs() / name, std::filesystem::perms::owner_all);
  }
  std::string Note(const std::string& name) const { return FileAt(scratch_.Path() / name); }

  const std::string path_ = std::getenv("PATH");
  const ScratchFolder scratch_;
};

}  // namespace quillet
