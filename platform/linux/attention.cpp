#include "platform/attention.h"

#include <system_error>

#include "platform/linux/sound_player.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;

// Window managers and bells are reached through the toolkit's connection to the desktop, so only the sound is
// played here.
class LinuxAttention : public Attention {
 public:
  ~LinuxAttention() override { Stop(); }

  bool PlaySoundFile(const fs::path& file) override {
    const bool failedBefore = sound_ && sound_->HasFailed();
    Stop();
    std::error_code error;
    // A whole path is never taken for an option.
    const fs::path whole = fs::absolute(file, error);
    if (error || !fs::is_regular_file(whole, error)) return false;
    sound_ = SoundPlayer::Start(whole);
    return sound_ && !failedBefore;
  }

 private:
  void Stop() {
    if (sound_) sound_->Stop();
    sound_.reset();
  }

  std::shared_ptr<SoundPlayer> sound_;
};

}  // namespace

std::unique_ptr<Attention> OpenAttention() {
  return std::make_unique<LinuxAttention>();
}

}  // namespace quillet
