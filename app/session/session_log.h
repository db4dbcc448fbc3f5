// Writes what comes from the site to a file, on a thread of its own, so that the receive thread never waits
// for a disk. What is typed is no part of it but for what the site shows of it. Made and ended on the
// user-interface thread, which waits for the last write when it ends it.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "app/session/page_transcript.h"
#include "core/receive_observer.h"

namespace quillet {

enum class LogForm {
  kText,  // the pages as they settle, as UTF-8 text
  kBytes  // as received, which a recording is that can be shown again
};

class SessionLog : public ReceiveObserver {
 public:
  // `failed` is called on the log's own thread, once, with the system's reason: nothing more is written.
  SessionLog(LogForm form, std::function<void(std::string reason)> failed);
  // Writes what is left.
  ~SessionLog() override;

  // Begins with an empty file. Returns an empty text, or why the file cannot be written. Once.
  std::string Open(const std::filesystem::path& file);

  void OnReceived(std::span<const std::uint8_t> bytes, const ScreenSnapshot& screen) override;

  // What a disk that does not keep up may leave waiting, in bytes.
  static constexpr std::size_t kMostWaiting = 64U << 20;

 private:
  struct Piece {
    std::int64_t at = 0;  // steady milliseconds
    std::string bytes;
    std::unique_ptr<ScreenRows> rows;  // kText only
  };

  void Run();
  // With `guard` held, which it gives up while it writes. False: it has failed.
  bool WriteWaiting(std::unique_lock<std::mutex>& guard);
  void WaitForMore(std::unique_lock<std::mutex>& guard);
  std::string TextOf(const Piece& piece);
  bool Put(const std::string& bytes);

  const LogForm form_;
  const std::function<void(std::string)> failed_;
  std::ofstream file_;         // the log's thread, once it runs
  PageTranscript transcript_;  // as file_
  std::mutex lock_;
  std::condition_variable more_;
  std::deque<Piece> waiting_;  // guarded by lock_, like the rest
  std::size_t waitingBytes_ = 0;
  bool overrun_ = false;
  bool ends_ = false;
  std::thread writer_;
};

}  // namespace quillet
