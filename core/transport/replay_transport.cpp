#include "core/transport/replay_transport.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <system_error>
#include <utility>

namespace quillet {
namespace {

constexpr std::size_t kPieceSize = 16384;  // as much as a network read gives
constexpr int kPieceInterval = 20;         // milliseconds: pieces come faster than a screen is redrawn

// How much of the recording may have been shown after so long a time.
class Pace {
 public:
  explicit Pace(std::uint32_t bytesPerSecond) : bytesPerSecond_(bytesPerSecond) {}

  std::size_t Due() const {
    if (bytesPerSecond_ == 0) return kPieceSize;
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start_;
    const double allowed = elapsed.count() * bytesPerSecond_ - static_cast<double>(shown_);
    return static_cast<std::size_t>(std::clamp(allowed, 0.0, static_cast<double>(kPieceSize)));
  }
  void Showed(std::size_t bytes) { shown_ += bytes; }

 private:
  const std::uint32_t bytesPerSecond_;
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::uint64_t shown_ = 0;
};

TransportEnd CannotRead(const std::filesystem::path& file, EndReason reason, const std::error_code& error) {
  const std::u8string name = file.u8string();
  return {reason, std::string(name.begin(), name.end()) + ": " + error.message()};
}

}  // namespace

ReplayTransport::ReplayTransport(std::filesystem::path file, std::uint32_t bytesPerSecond)
    : file_(std::move(file)), bytesPerSecond_(bytesPerSecond) {}

TransportEnd ReplayTransport::Run(TransportEvents& events) {
  // A pipe or a device could hold the receive thread, and whoever joins it, for ever.
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(file_, error);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    const auto code = std::filesystem::is_directory(status) ? std::errc::is_a_directory
                                                            : std::errc::operation_not_supported;
    return CannotRead(file_, EndReason::kConnectFailed, std::make_error_code(code));
  }
  errno = 0;
  std::ifstream stream(file_, std::ios::binary);
  if (!stream) {
    const int code = errno ? errno : ENOENT;
    return CannotRead(file_, EndReason::kConnectFailed, std::error_code(code, std::generic_category()));
  }

  events.OnConnected({});
  Pace pace(bytesPerSecond_);
  std::array<char, kPieceSize> piece;
  while (!stopped_) {
    const std::size_t due = pace.Due();
    if (due == 0) {
      if (!events.Pause(kPieceInterval)) break;
      continue;
    }
    stream.read(piece.data(), static_cast<std::streamsize>(due));
    const auto count = static_cast<std::size_t>(stream.gcount());
    if (stream.bad())
      return CannotRead(file_, EndReason::kReadFailed, std::make_error_code(std::errc::io_error));
    if (count == 0) return {EndReason::kEndOfRecording, {}};
    events.OnReceived({reinterpret_cast<const std::uint8_t*>(piece.data()), count});
    pace.Showed(count);
    // A full piece was due: the recording is behind its time, or has none.
    if (due < kPieceSize && !events.Pause(kPieceInterval)) break;
  }
  return {EndReason::kClosedByUser, {}};
}

}  // namespace quillet
