#include "app/window/window_signaller.h"

#include <filesystem>

namespace quillet {
namespace {

// Does what it is told to be able to, and counts.
struct FakeAttention : Attention {
  struct Log {
    bool able = true;
    std::uintptr_t flashed = 0;
    int flashes = 0, beeps = 0;
    std::vector<std::filesystem::path> sounds;
  };
  explicit FakeAttention(Log& kept) : log(kept) {}
  bool Flash(std::uintptr_t window) override {
    log.flashed = window;
    ++log.flashes;
    return log.able;
  }
  bool Beep() override {
    ++log.beeps;
    return log.able;
  }
  bool PlaySoundFile(const std::filesystem::path& file) override {
    log.sounds.push_back(file);
    return log.able;
  }
  Log& log;
};

class WindowSignallerTest : public testing::Test {
 protected:
  FakeAttention::Log log;
  WindowSignaller signaller{std::make_unique<FakeAttention>(log)};
};

TEST_F(WindowSignallerTest, TheWindowIsFlashedAsLongAsThereIsOne) {
  signaller.Flash();
  EXPECT_EQ(log.flashes, 0);
  auto window = std::make_unique<QWidget>();
  window->show();
  signaller.SetWindow(window.get());
  signaller.Flash();
  EXPECT_EQ(log.flashes, 1);
  EXPECT_EQ(log.flashed, window->winId());
  log.able = false;
  signaller.Flash();
  window.reset();
  signaller.Flash();
  EXPECT_EQ(log.flashes, 2);
}

TEST_F(WindowSignallerTest, TheSoundIsTheProgramsOwnAndABeepWhereItCannotBePlayed) {
  signaller.PlayUpdatedSound();
  ASSERT_EQ(log.sounds.size(), 1u);
  EXPECT_TRUE(std::filesystem::is_regular_file(log.sounds[0])) << log.sounds[0];
  EXPECT_EQ(log.sounds[0].filename(), "PushUpdated.wav");
  EXPECT_EQ(log.beeps, 0);
  log.able = false;
  signaller.PlayUpdatedSound();
  EXPECT_EQ(log.beeps, 1);
}

}  // namespace
}  // namespace quillet
