// What only a system with fork, limits and links can show of saving: runs that are killed, disks that are
// full, links, pipes and permissions.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "platform/file_lock.h"
#include "platform/user_file.h"
#include "tests/support/scratch_folder.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using State = FileBytes::State;

constexpr std::size_t kPlenty = 1 << 20;

std::string Content(const fs::path& file) {
  return ReadUserFile(file, kPlenty).bytes;
}

std::size_t FileCount(const fs::path& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

mode_t ModeOf(const fs::path& file) {
  struct stat about {};
  EXPECT_EQ(stat(file.c_str(), &about), 0);
  return about.st_mode & 07777;
}

// Runs `body` in a child; its exit status is what `body` returns.
template <typename Body>
pid_t Fork(Body body) {
  const pid_t child = fork();
  if (child == 0) _exit(body());
  return child;
}

int StatusOf(pid_t child) {
  int status = -1;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return status;
}

class SavingTest : public testing::Test {
 protected:
  ScratchFolder scratch_;
  const fs::path file_ = scratch_.Path() / "Quill.ini";
};

TEST_F(SavingTest, KilledAtAnyMomentTheFileIsWholeAndNothingPilesUp) {
  const std::string contents[] = {std::string(90'000, 'a'), std::string(5, 'b'), std::string(7'000, 'c')};
  ASSERT_EQ(ReplaceFile(file_, contents[0]), "");
  std::minstd_rand random(2026);
  std::size_t lengthsSeen[3] = {};
  int leftovers = 0;
  for (int round = 0; round < 200; ++round) {
    const pid_t child = Fork([&]() -> int {
      for (std::size_t turn = 0;; ++turn)
        if (!ReplaceFile(file_, contents[turn % 3]).empty()) return 1;
    });
    ASSERT_GT(child, 0);
    // No wait for anything: the moment of the kill is the test's input.
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 12'000));
    kill(child, SIGKILL);
    ASSERT_TRUE(WIFSIGNALED(StatusOf(child))) << "the child's saving failed";

    const std::string seen = Content(file_);
    const auto* match = std::find(std::begin(contents), std::end(contents), seen);
    ASSERT_NE(match, std::end(contents)) << "round " << round << ": " << seen.size() << " bytes";
    ++lengthsSeen[match - contents];
    const std::size_t files = FileCount(scratch_.Path());
    EXPECT_LE(files, 2U) << "the next run did not clear up";
    leftovers += files == 2;
  }
  // Otherwise the kills came before any saving, or never in the midst of one.
  EXPECT_GT(lengthsSeen[1] + lengthsSeen[2], 0U);
  EXPECT_GT(leftovers, 0);
  ASSERT_EQ(ReplaceFile(file_, "at last"), "");
  EXPECT_EQ(FileCount(scratch_.Path()), 1U);
}

TEST_F(SavingTest, ALockGoesWithItsProgramAndAStuckOneIsWaitedForOnce) {
  const fs::path lock = scratch_.Path() / "Quill.ini.lock";
  const pid_t child = Fork([&]() -> int {
    LockPatience patience;
    const FileLock held(lock, patience);
    while (true)
      raise(SIGSTOP);
  });
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, WUNTRACED), child);
  LockPatience patience(std::chrono::seconds(1));
  EXPECT_FALSE(FileLock(lock, patience).IsHeld());
  EXPECT_LT(patience.ForNextTurn(), std::chrono::seconds(1));
  kill(child, SIGKILL);
  StatusOf(child);
  EXPECT_TRUE(FileLock(lock, patience).IsHeld());
  EXPECT_EQ(patience.ForNextTurn(), std::chrono::seconds(1));
  EXPECT_EQ(FileCount(scratch_.Path()), 0U);
  EXPECT_FALSE(FileLock(scratch_.Path() / "none" / "lock", patience).IsHeld());
}

TEST_F(SavingTest, AFullDiskLeavesTheOldFileAndAReason) {
  ASSERT_EQ(ReplaceFile(file_, "old"), "");
  const fs::path aside = scratch_.Path() / "large";
  ASSERT_EQ(ReplaceFile(aside, std::string(9000, 'x')), "");
  // A limit on the size of files fails as a disk does that runs full: in the midst of a write.
  const int status = StatusOf(Fork([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{5000, 5000};
    setrlimit(RLIMIT_FSIZE, &limit);
    if (ReplaceFile(file_, std::string(9000, 'n')).empty()) return 1;
    if (ReplaceFile(scratch_.Path() / "new", std::string(9000, 'n')).empty()) return 2;
    if (!KeepAside(aside).empty()) return 3;
    return 0;
  }));
  EXPECT_EQ(status, 0) << "step " << WEXITSTATUS(status);
  EXPECT_EQ(Content(file_), "old");
  EXPECT_EQ(FileCount(scratch_.Path()), 2U);
}

TEST_F(SavingTest, PermissionsStay) {
  ASSERT_EQ(ReplaceFile(file_, "old"), "");
  for (const mode_t mode : {0600U, 0664U, 0606U}) {
    ASSERT_EQ(chmod(file_.c_str(), mode), 0);
    ASSERT_EQ(ReplaceFile(file_, std::to_string(mode)), "");
    EXPECT_EQ(ModeOf(file_), mode);
    const fs::path aside = KeepAside(file_);
    EXPECT_EQ(ModeOf(aside), mode);
  }
  const mode_t mask = umask(0);
  umask(mask);
  const fs::path fresh = scratch_.Path() / "fresh";
  ASSERT_EQ(ReplaceFile(fresh, "new"), "");
  EXPECT_EQ(ModeOf(fresh), 0666U & ~mask);
}

TEST_F(SavingTest, ThroughLinksTheFileBehindIsReplaced) {
  fs::create_directory(scratch_.Path() / "dotfiles");
  const fs::path real = scratch_.Path() / "dotfiles" / "real.ini";
  fs::create_symlink("dotfiles/second", file_);
  fs::create_symlink("real.ini", scratch_.Path() / "dotfiles" / "second");
  ASSERT_EQ(ReplaceFile(file_, "made"), "") << "a link to nothing yet";
  EXPECT_EQ(Content(real), "made");
  ASSERT_EQ(ReplaceFile(file_, "replaced"), "");
  EXPECT_TRUE(fs::is_symlink(file_));
  EXPECT_TRUE(fs::is_symlink(scratch_.Path() / "dotfiles" / "second"));
  EXPECT_EQ(Content(real), "replaced");

  const fs::path circle = scratch_.Path() / "circle";
  fs::create_symlink("circle", circle);
  EXPECT_NE(ReplaceFile(circle, "new"), "");
  EXPECT_EQ(ReadUserFile(circle, kPlenty).state, State::kUnreadable);

  const fs::path moved = scratch_.Path() / "dotfiles" / "moved";
  EXPECT_TRUE(MoveUserFile(file_, moved));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(moved)));
  EXPECT_EQ(Content(moved), "replaced");
  EXPECT_FALSE(fs::exists(fs::symlink_status(file_)));
}

TEST_F(SavingTest, PipesAndDevicesAreNeitherWaitedForNorReplaced) {
  const fs::path pipe = scratch_.Path() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
  for (const fs::path& strange : {pipe, fs::path("/dev/zero"), fs::path("/dev/null")}) {
    const FileBytes read = ReadUserFile(strange, kPlenty);
    EXPECT_EQ(read.state, State::kUnreadable) << strange;
    EXPECT_FALSE(read.reason.empty());
    fs::create_symlink(strange, file_);
    EXPECT_NE(ReplaceFile(file_, "new"), "") << strange;
    EXPECT_TRUE(KeepAside(file_).empty());
    EXPECT_FALSE(MoveUserFile(file_, scratch_.Path() / "moved"));
    fs::remove(file_);
  }
  EXPECT_EQ(FileCount(scratch_.Path()), 1U);
}

TEST_F(SavingTest, AnotherDiskGetsTheWholeFileOrNothing) {
  const fs::path shared = "/dev/shm";
  struct stat here {};
  struct stat there {};
  ASSERT_EQ(stat(scratch_.Path().c_str(), &here), 0);
  if (stat(shared.c_str(), &there) != 0 || here.st_dev == there.st_dev || !IsFolderWritable(shared))
    GTEST_SKIP() << "no second disk";
  const fs::path folder = shared / scratch_.Path().filename();
  fs::create_directory(folder);
  const std::string bytes(200'000, 'x');
  ASSERT_EQ(ReplaceFile(file_, bytes), "");
  ASSERT_EQ(chmod(file_.c_str(), 0640), 0);
  const int status = StatusOf(Fork([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100'000, 100'000};
    setrlimit(RLIMIT_FSIZE, &limit);
    return MoveUserFile(file_, folder / "Quill.ini") ? 1 : 0;
  }));
  EXPECT_EQ(status, 0) << "half a file counted as moved";
  EXPECT_EQ(Content(file_), bytes);
  EXPECT_EQ(FileCount(folder), 0U);

  EXPECT_TRUE(MoveUserFile(file_, folder / "Quill.ini"));
  EXPECT_FALSE(fs::exists(file_));
  EXPECT_EQ(Content(folder / "Quill.ini"), bytes);
  EXPECT_EQ(ModeOf(folder / "Quill.ini"), 0640U);
  ASSERT_EQ(ReplaceFile(file_, "another"), "");
  EXPECT_FALSE(MoveUserFile(file_, folder / "Quill.ini"));
  EXPECT_EQ(Content(folder / "Quill.ini"), bytes);
  EXPECT_EQ(FileCount(folder), 1U);
  fs::remove_all(folder);
}

TEST_F(SavingTest, AFolderWithoutWritePermissionIsNotWritable) {
  ASSERT_EQ(chmod(scratch_.Path().c_str(), 0555), 0);
  EXPECT_FALSE(IsFolderWritable(scratch_.Path()));
  ASSERT_EQ(chmod(scratch_.Path().c_str(), 0755), 0);
  EXPECT_FALSE(IsFolderWritable("/proc/self"));
}

}  // namespace
}  // namespace quillet
