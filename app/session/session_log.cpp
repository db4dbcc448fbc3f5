#include "app/session/session_log.h"

#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>

#include <QDateTime>

#include "platform/clock.h"
#include "platform/utf8.h"

namespace quillet {
namespace {

std::u16string Stamp() {
  return QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_qs).toStdU16String();
}

std::string LastError() {
  return errno != 0 ? std::generic_category().message(errno) : std::string();
}

}  // namespace

SessionLog::SessionLog(LogForm form, std::function<void(std::string reason)> failed)
    : form_(form), failed_(std::move(failed)), transcript_(Stamp) {}

SessionLog::~SessionLog() {
  {
    const std::lock_guard guard(lock_);
    ends_ = true;
  }
  more_.notify_one();
  if (writer_.joinable()) writer_.join();
}

std::string SessionLog::Open(const std::filesystem::path& file) {
  errno = 0;
  file_.open(file, std::ios::binary | std::ios::trunc);
  if (!file_) return LastError();
  try {
    writer_ = std::thread([this] { Run(); });
  } catch (const std::system_error& error) {
    return error.what();
  }
  return {};
}

void SessionLog::OnReceived(std::span<const std::uint8_t> bytes, const ScreenSnapshot& screen) {
  Piece piece{.at = SteadyMilliseconds(), .bytes = {}, .rows = nullptr};
  if (form_ == LogForm::kText)
    piece.rows = std::make_unique<ScreenRows>(screen.text);
  else
    piece.bytes.assign(bytes.begin(), bytes.end());
  {
    const std::lock_guard guard(lock_);
    waitingBytes_ += piece.rows ? sizeof(ScreenRows) : piece.bytes.size();
    overrun_ = overrun_ || waitingBytes_ > kMostWaiting;
    if (overrun_) return;
    waiting_.push_back(std::move(piece));
  }
  more_.notify_one();
}

void SessionLog::Run() {
  std::unique_lock guard(lock_);
  while (true) {
    if (overrun_ || !WriteWaiting(guard)) {
      overrun_ = true;  // nothing more is taken
      waiting_.clear();
      const std::string reason = file_ ? std::string() : LastError();
      guard.unlock();
      failed_(reason);
      return;
    }
    if (ends_ && waiting_.empty()) return;
    WaitForMore(guard);
  }
}

bool SessionLog::WriteWaiting(std::unique_lock<std::mutex>& guard) {
  const std::deque<Piece> pieces = std::exchange(waiting_, {});
  waitingBytes_ = 0;
  const bool isLast = ends_;
  guard.unlock();
  std::string bytes;
  for (const Piece& piece : pieces)
    bytes += TextOf(piece);
  if (form_ == LogForm::kText)
    bytes += Utf8FromUtf16(isLast ? transcript_.Finish() : transcript_.Settle(SteadyMilliseconds()));
  const bool written = Put(bytes);
  guard.lock();
  return written;
}

void SessionLog::WaitForMore(std::unique_lock<std::mutex>& guard) {
  const auto isDue = [this] { return ends_ || overrun_ || !waiting_.empty(); };
  if (const auto at = transcript_.SettlesAt())
    more_.wait_for(guard, std::chrono::milliseconds(std::max<std::int64_t>(*at - SteadyMilliseconds(), 0)),
                   isDue);
  else
    more_.wait(guard, isDue);
}

std::string SessionLog::TextOf(const Piece& piece) {
  return piece.rows ? Utf8FromUtf16(transcript_.Take(*piece.rows, piece.at)) : piece.bytes;
}

bool SessionLog::Put(const std::string& bytes) {
  if (bytes.empty()) return true;
  errno = 0;
  file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
  return file_.good();
}

}  // namespace quillet
