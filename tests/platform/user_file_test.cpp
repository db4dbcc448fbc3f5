#include "platform/user_file.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/scratch_folder.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using State = FileBytes::State;

constexpr std::size_t kPlenty = 1 << 20;

std::vector<std::string> Names(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

class UserFileTest : public testing::Test {
 protected:
  ScratchFolder scratch_;
  const fs::path file_ = scratch_.Path() / "Quill.ini";
};

TEST_F(UserFileTest, ReadingTellsMissingFromTooLargeFromUnreadable) {
  EXPECT_EQ(ReadUserFile(file_, kPlenty).state, State::kMissing);
  EXPECT_EQ(ReadUserFile(file_ / "below", kPlenty).state, State::kMissing);

  const std::string bytes("a\r\n\0\xff", 5);
  PutFile(file_, bytes);
  EXPECT_EQ(ReadUserFile(file_, 5).bytes, bytes);
  EXPECT_EQ(ReadUserFile(file_, 4).state, State::kTooLarge);
  EXPECT_TRUE(ReadUserFile(file_, 4).bytes.empty());
  PutFile(file_, "");
  EXPECT_EQ(ReadUserFile(file_, 0).state, State::kRead);

  const FileBytes folder = ReadUserFile(scratch_.Path(), kPlenty);
  EXPECT_EQ(folder.state, State::kUnreadable);
  EXPECT_FALSE(folder.reason.empty());
}

TEST_F(UserFileTest, ReplacingLeavesNothingButTheNewContent) {
  const std::string large(300'000, 'x');
  for (const std::string& bytes : {large, std::string("short\n"), std::string(), std::string("a\0b", 3)}) {
    ASSERT_EQ(ReplaceFile(file_, bytes), "");
    EXPECT_EQ(ReadUserFile(file_, kPlenty).bytes, bytes);
  }
  EXPECT_EQ(Names(scratch_.Path()), std::vector<std::string>{"Quill.ini"});
}

TEST_F(UserFileTest, WhatMayNotBeReplacedStaysAsItWas) {
  PutFile(file_, "old");
  fs::permissions(file_, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
  EXPECT_NE(ReplaceFile(file_, "new"), "");
  EXPECT_EQ(FileAt(file_), "old");
  fs::permissions(file_, fs::perms::owner_write, fs::perm_options::add);

  const fs::path folder = scratch_.Path() / "black.txt";
  fs::create_directory(folder);
  EXPECT_NE(ReplaceFile(folder, "new"), "");
  EXPECT_TRUE(fs::is_directory(folder));

  EXPECT_NE(ReplaceFile(scratch_.Path() / "nowhere" / "hot.txt", "new"), "");
  EXPECT_EQ(Names(scratch_.Path()), (std::vector<std::string>{"Quill.ini", "black.txt"}));
}

TEST_F(UserFileTest, TwoWritersNeverMixAndNeverClearAwayEachOthersWork) {
  const std::string contents[] = {std::string(20'000, 'a'), std::string(35'000, 'b')};
  ASSERT_EQ(ReplaceFile(file_, contents[0]), "");
  std::atomic<bool> refused = false;
  std::vector<std::thread> writers;
  for (const std::string& bytes : contents)
    writers.emplace_back([&] {
      for (int times = 0; times < 100; ++times)
        if (!ReplaceFile(file_, bytes).empty()) refused = true;
    });
  for (int times = 0; times < 100; ++times) {
    const std::string seen = ReadUserFile(file_, kPlenty).bytes;
    EXPECT_TRUE(seen == contents[0] || seen == contents[1]) << seen.size();
  }
  for (std::thread& writer : writers)
    writer.join();
  EXPECT_FALSE(refused);
  EXPECT_EQ(Names(scratch_.Path()), std::vector<std::string>{"Quill.ini"});
}

TEST_F(UserFileTest, OnlyWhatAKilledRunLeftIsClearedAway) {
  // No system gives out this process number.
  PutFile(scratch_.Path() / "Quill.ini.quillet-4294967294-0badcafe.tmp", "half");
  const std::vector<std::string> others = {"Quill.ini.tmp", "black.txt.quillet-4294967294-0badcafe.tmp"};
  for (const std::string& name : others)
    PutFile(scratch_.Path() / name, "kept");
  ASSERT_EQ(ReplaceFile(file_, "new"), "");
  EXPECT_EQ(Names(scratch_.Path()), (std::vector<std::string>{"Quill.ini", others[0], others[1]}));
}

TEST_F(UserFileTest, MovingNeverReplaces) {
  const fs::path to = scratch_.Path() / "data" / "Quill.ini";
  PutFile(file_, "mine");
  EXPECT_FALSE(MoveUserFile(file_, to)) << "the folder is missing";
  EXPECT_EQ(FileAt(file_), "mine");

  fs::create_directory(to.parent_path());
  PutFile(to, "theirs");
  EXPECT_FALSE(MoveUserFile(file_, to));
  EXPECT_EQ(FileAt(file_), "mine");
  EXPECT_EQ(FileAt(to), "theirs");

  fs::remove(to);
  EXPECT_TRUE(MoveUserFile(file_, to));
  EXPECT_FALSE(fs::exists(file_));
  EXPECT_EQ(FileAt(to), "mine");
  EXPECT_FALSE(MoveUserFile(file_, to)) << "nothing there to move";
  EXPECT_EQ(Names(to.parent_path()), std::vector<std::string>{"Quill.ini"});
}

TEST_F(UserFileTest, EachContentIsKeptAsideOnceAndNoMoreThanNine) {
  PutFile(file_, "strange");
  const fs::path first = scratch_.Path() / "Quill.ini.unreadable";
  EXPECT_EQ(KeepAside(file_), first);
  EXPECT_EQ(KeepAside(file_), first);
  EXPECT_EQ(FileAt(file_), "strange");
  for (int number = 2; number <= 9; ++number) {
    const std::string end = std::to_string(number);
    PutFile(file_, "stranger " + end);
    const fs::path next = scratch_.Path() / ("Quill.ini.unreadable-" + end);
    EXPECT_EQ(KeepAside(file_), next);
    EXPECT_EQ(FileAt(next), "stranger " + end);
  }
  EXPECT_EQ(FileAt(first), "strange");
  EXPECT_EQ(KeepAside(file_), scratch_.Path() / "Quill.ini.unreadable-9");
  PutFile(file_, "one too many");
  EXPECT_TRUE(KeepAside(file_).empty());
  EXPECT_TRUE(KeepAside(scratch_.Path() / "missing").empty());
  EXPECT_TRUE(KeepAside(scratch_.Path()).empty()) << "a folder";
  EXPECT_EQ(Names(scratch_.Path()).size(), 10U);
}

TEST_F(UserFileTest, ALargeFileIsKeptAsideWithoutACopyOfItsContent) {
  constexpr std::uintmax_t kHuge = std::uintmax_t{40} << 30;  // a hole: it takes no room
  const fs::path real = scratch_.Path() / "real";
  PutFile(real, "beginning");
  fs::resize_file(real, kHuge);
  std::error_code error;
  fs::create_symlink(real, file_, error);
  if (error) fs::rename(real, file_);
  const fs::path kept = KeepAside(file_);
  ASSERT_EQ(kept, scratch_.Path() / "Quill.ini.unreadable");
  EXPECT_EQ(KeepAside(file_), kept);
  EXPECT_EQ(ReplaceFile(file_, "new"), "");
  EXPECT_EQ(FileAt(file_), "new");
  EXPECT_EQ(fs::file_size(kept), kHuge);
  char beginning[9] = {};
  std::ifstream(kept, std::ios::binary).read(beginning, sizeof(beginning));
  EXPECT_EQ(std::string_view(beginning, sizeof(beginning)), "beginning");

  // Another one of its size.
  fs::resize_file(file_, kHuge);
  EXPECT_EQ(KeepAside(file_), scratch_.Path() / "Quill.ini.unreadable-2");
}

TEST_F(UserFileTest, AFileThatCannotBeLinkedIsCopiedUnlessItIsHuge) {
  // A disk of its own on most systems.
  const fs::path otherDisk = "/dev/shm";
  std::error_code error;
  if (!fs::is_directory(otherDisk, error)) GTEST_SKIP() << "one disk only";
  const fs::path real = otherDisk / scratch_.Path().filename();
  PutFile(real, "beginning");
  fs::create_hard_link(real, scratch_.Path() / "probe", error);
  const bool isOtherDisk = error == std::errc::cross_device_link;
  fs::create_symlink(real, file_, error);
  if (isOtherDisk && !error) {
    fs::resize_file(real, (17U << 20));
    const fs::path kept = KeepAside(file_);
    EXPECT_EQ(kept, scratch_.Path() / "Quill.ini.unreadable");
    EXPECT_EQ(FileAt(kept), FileAt(real));
    fs::resize_file(real, std::uintmax_t{2} << 30);
    EXPECT_TRUE(KeepAside(file_).empty());
    EXPECT_EQ(Names(scratch_.Path()), (std::vector<std::string>{"Quill.ini", "Quill.ini.unreadable"}));
  }
  fs::remove(real);
}

TEST_F(UserFileTest, AFolderIsWritableOrNot) {
  EXPECT_TRUE(IsFolderWritable(scratch_.Path()));
  EXPECT_FALSE(IsFolderWritable(scratch_.Path() / "missing"));
  PutFile(file_, "");
  EXPECT_FALSE(IsFolderWritable(file_));
  EXPECT_EQ(Names(scratch_.Path()), std::vector<std::string>{"Quill.ini"}) << "the try left something";
}

}  // namespace
}  // namespace quillet
