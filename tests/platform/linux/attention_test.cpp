#include "platform/attention.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sstream>

#include "tests/platform/linux/scripts_on_path.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

// A zombie runs no more, although its number is still taken.
bool IsRunning(const std::string& process) {
  std::ifstream stream("/proc/" + process + "/stat");
  std::string number, name, state;
  return stream >> number >> name >> state && state != "Z";
}

// The scripts are players. "calls" is where they note how they were called.
class AttentionTest : public ScriptsOnPathTest {
 protected:
  AttentionTest() { PutFile(sound_, "a sound"); }

  void WritePlayer(const std::string& name, const std::string& body) const {
    WriteScript(name, "echo \"${0##*/}|$*\" >> \"$notes/calls\"\n" + body + "\n");
  }
  // One that notes its process number and then stays, deaf to a polite request.
  void WriteHangingPlayer(const std::string& name) const {
    WritePlayer(name,
                "trap '' TERM; echo $$ > \"$notes/part\"; /bin/mv \"$notes/part\" \"$notes/process\"\n"
                "exec /bin/sleep 1000");
  }

  std::string TakeProcess() const {
    EXPECT_TRUE(WaitUntil([&] { return fs::exists(scratch_.Path() / "process"); }));
    const std::string process = Note("process");
    fs::remove(scratch_.Path() / "process");
    return process.substr(0, process.find('\n'));
  }
  bool IsCalled(const std::string& calls) const {
    return WaitUntil([&] { return Note("calls") == calls && HasNoChildren(); });
  }

  const fs::path sound_ = scratch_.Path() / "new things.wav";
  std::unique_ptr<Attention> attention_ = OpenAttention();
};

TEST_F(AttentionTest, TheFirstPlayerThereIsPlaysTheFileAndIsCleanedUp) {
  WritePlayer("aplay", "");
  ASSERT_TRUE(attention_->PlaySoundFile(sound_));
  std::string calls = "aplay|-q " + sound_.string() + "\n";
  EXPECT_TRUE(IsCalled(calls)) << Note("calls");
  WritePlayer("pw-play", "");
  ASSERT_TRUE(attention_->PlaySoundFile(sound_));
  calls += "pw-play|" + sound_.string() + "\n";
  EXPECT_TRUE(IsCalled(calls)) << Note("calls");
}

TEST_F(AttentionTest, ThePlayerHasNothingOfOurs) {
  WritePlayer("paplay",
              "cd /proc/$$/fd; streams=$(/bin/readlink 0 1 2); echo \"$streams\" > \"$notes/streams\"\n"
              "/bin/grep SigIgn /proc/$$/status > \"$notes/ignored\"");
  const auto old = std::signal(SIGUSR1, SIG_IGN);
  EXPECT_TRUE(attention_->PlaySoundFile(sound_));
  EXPECT_TRUE(WaitUntil(HasNoChildren));
  std::signal(SIGUSR1, old);
  EXPECT_EQ(Note("streams"), "/dev/null\n/dev/null\n/dev/null\n");
  // A hexadecimal word with a bit for each signal.
  std::istringstream ignored(Note("ignored"));
  std::string label;
  unsigned long long mask = ~0ULL;
  ignored >> label >> std::hex >> mask;
  EXPECT_EQ(mask & (1ULL << (SIGUSR1 - 1)), 0u) << Note("ignored");
}

TEST_F(AttentionTest, WithoutAPlayerOrAFileNothingIsPromised) {
  EXPECT_FALSE(attention_->PlaySoundFile(sound_));
  WritePlayer("aplay", "");
  EXPECT_FALSE(attention_->PlaySoundFile(scratch_.Path() / "missing.wav"));
  EXPECT_FALSE(attention_->PlaySoundFile(scratch_.Path()));
  EXPECT_FALSE(attention_->PlaySoundFile({}));
  EXPECT_EQ(Note("calls"), "");
}

TEST_F(AttentionTest, APlayerThatFailsIsFollowedByTheNext) {
  WritePlayer("pw-play", "exit 1");
  WritePlayer("aplay", "");
  ASSERT_TRUE(attention_->PlaySoundFile(sound_));
  const std::string calls = "pw-play|" + sound_.string() + "\naplay|-q " + sound_.string() + "\n";
  EXPECT_TRUE(IsCalled(calls)) << Note("calls");
  EXPECT_TRUE(attention_->PlaySoundFile(sound_)) << "the sound before was played";
}

TEST_F(AttentionTest, AfterAllPlayersFailedTheNextCallSaysSoAndTriesAgain) {
  WritePlayer("paplay", "exit 1");
  ASSERT_TRUE(attention_->PlaySoundFile(sound_));
  const std::string call = "paplay|" + sound_.string() + "\n";
  ASSERT_TRUE(IsCalled(call));
  // The failure is noted just after the program is cleaned up.
  ASSERT_TRUE(WaitUntil([&] { return !attention_->PlaySoundFile(sound_); }));
  ASSERT_TRUE(WaitUntil(HasNoChildren));
  EXPECT_GT(Note("calls").size(), call.size());
}

TEST_F(AttentionTest, ANewSoundTakesThePlaceOfOneThatHangs) {
  WriteHangingPlayer("pw-play");
  WritePlayer("aplay", "");
  ASSERT_TRUE(attention_->PlaySoundFile(sound_));
  const std::string first = TakeProcess();
  ASSERT_TRUE(IsRunning(first));
  ASSERT_TRUE(attention_->PlaySoundFile(sound_));
  const std::string second = TakeProcess();
  EXPECT_TRUE(WaitUntil([&] { return !IsRunning(first); }));
  EXPECT_TRUE(IsRunning(second));
  attention_.reset();
  EXPECT_TRUE(WaitUntil([&] { return !IsRunning(second); }));
  EXPECT_TRUE(WaitUntil(HasNoChildren));
  EXPECT_EQ(Note("calls").find("aplay"), std::string::npos) << "one that was ended has not failed";
}

TEST_F(AttentionTest, AHangingPlayerDoesNotHoldUpTheProgramsEnd) {
  WriteHangingPlayer("aplay");
  const auto playAndLeave = [&] {
    std::string process;
    {
      const std::unique_ptr<Attention> attention = OpenAttention();
      if (attention->PlaySoundFile(sound_)) process = TakeProcess();
    }
    PutFile(scratch_.Path() / "player", process);
    std::exit(process.empty() ? 1 : 0);
  };
  EXPECT_EXIT(playAndLeave(), testing::ExitedWithCode(0), "");
  EXPECT_TRUE(WaitUntil([&] { return !IsRunning(Note("player")); }));
}

TEST_F(AttentionTest, WhereChildrenAreNotWaitedForAPlayerCountsAsGood) {
  WritePlayer("pw-play", "exit 1");
  WritePlayer("aplay", "");
  const auto old = std::signal(SIGCHLD, SIG_IGN);
  EXPECT_TRUE(attention_->PlaySoundFile(sound_));
  EXPECT_TRUE(IsCalled("pw-play|" + sound_.string() + "\n")) << Note("calls");
  EXPECT_TRUE(attention_->PlaySoundFile(sound_));
  EXPECT_TRUE(WaitUntil(HasNoChildren));
  std::signal(SIGCHLD, old);
  EXPECT_EQ(Note("calls").find("aplay"), std::string::npos);
}

}  // namespace
}  // namespace quillet
