// Saving by programs that are ended from outside at any moment.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <thread>

#include "platform/file_lock.h"
#include "platform/user_file.h"
#include "tests/platform/windows/second_process.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

constexpr wchar_t kFolderVariable[] = L"QUILLET_SAVING_TEST";

std::string ContentOfTurn(std::size_t turn) {
  const std::string contents[] = {std::string(90'000, 'a'), std::string(5, 'b'), std::string(7'000, 'c')};
  return contents[turn % std::size(contents)];
}

fs::path FolderOfTest() {
  std::wstring folder(32768, L'\0');
  folder.resize(GetEnvironmentVariableW(kFolderVariable, folder.data(), static_cast<DWORD>(folder.size())));
  return folder;
}

// Not tests: what the other processes do until they are killed.
TEST(SavingProgram, DISABLED_SavesWithoutEnd) {
  const fs::path folder = FolderOfTest();
  if (folder.empty()) GTEST_SKIP();
  PutFile(folder / "begun", "");
  for (std::size_t turn = 0;; ++turn)
    ASSERT_EQ(ReplaceFile(folder / "Quill.ini", ContentOfTurn(turn)), "");
}

TEST(SavingProgram, DISABLED_KeepsTheLock) {
  const fs::path folder = FolderOfTest();
  if (folder.empty()) GTEST_SKIP();
  LockPatience patience;
  const FileLock held(folder / "lock", patience);
  PutFile(folder / "begun", "");
  Sleep(INFINITE);
}

class SavingTest : public testing::Test {
 protected:
  SavingTest() { SetEnvironmentVariableW(kFolderVariable, scratch_.Path().c_str()); }
  ~SavingTest() override { SetEnvironmentVariableW(kFolderVariable, nullptr); }

  void WaitForIt() const {
    ASSERT_TRUE(WaitUntil([&] { return fs::exists(scratch_.Path() / "begun"); }));
  }

  const ScratchFolder scratch_;
  const fs::path file_ = scratch_.Path() / "Quill.ini";
};

TEST_F(SavingTest, KilledAtAnyMomentTheFileIsWholeAndNothingPilesUp) {
  ASSERT_EQ(ReplaceFile(file_, ContentOfTurn(0)), "");
  std::minstd_rand random(2026);
  std::size_t seen[3] = {};
  for (int round = 0; round < 200; ++round) {
    const SecondProcess saver(L"SavingProgram.DISABLED_SavesWithoutEnd");
    ASSERT_NO_FATAL_FAILURE(WaitForIt());
    // No wait for anything: the moment of the kill is the test's input.
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 12'000));
    ASSERT_FALSE(saver.Code()) << "its saving failed";
    saver.Kill();
    fs::remove(scratch_.Path() / "begun");

    const std::string content = ReadUserFile(file_, 1 << 20).bytes;
    std::size_t turn = 0;
    while (turn < std::size(seen) && content != ContentOfTurn(turn))
      ++turn;
    ASSERT_LT(turn, std::size(seen)) << "round " << round << ": " << content.size() << " bytes";
    ++seen[turn];
    EXPECT_LE(std::distance(fs::directory_iterator(scratch_.Path()), {}), 2) << "nobody clears up";
  }
  EXPECT_GT(seen[1] + seen[2], 0U) << "nothing was saved between the kills";
  ASSERT_EQ(ReplaceFile(file_, "at last"), "");
  EXPECT_EQ(std::distance(fs::directory_iterator(scratch_.Path()), {}), 1);
}

TEST_F(SavingTest, ALockGoesWithItsProgram) {
  const SecondProcess keeper(L"SavingProgram.DISABLED_KeepsTheLock");
  ASSERT_NO_FATAL_FAILURE(WaitForIt());
  LockPatience patience(std::chrono::seconds(1));
  EXPECT_FALSE(FileLock(scratch_.Path() / "lock", patience).IsHeld());
  keeper.Kill();
  EXPECT_TRUE(FileLock(scratch_.Path() / "lock", patience).IsHeld());
}

}  // namespace
}  // namespace quillet
