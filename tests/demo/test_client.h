// A client for the tests: a real transport, the real screen and classifier behind it. What it "sees" is what
// the classifier was handed, as a view would get it. One per test thread.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "bbs/page_flags.h"
#include "bbs/screen_classifier.h"
#include "core/notify_target.h"
#include "core/term_screen.h"
#include "core/transport/transport.h"

namespace quillet {

// A screen as UTF-8 lines and the cursor's place, for the message of a failed test.
std::string DumpScreen(const ScreenSnapshot& screen);

class TestClient : private NotifyTarget, private TransportEvents {
 public:
  // Connects to the port on loopback, by telnet; the test fails when it cannot.
  explicit TestClient(std::uint16_t port);
  // The same, by any way.
  explicit TestClient(std::unique_ptr<Transport> transport);
  ~TestClient() override;

  void Send(std::string_view bytes);

  // Each feeds what arrives until its condition holds; false when the connection ended or time ran out.
  using Condition = std::function<bool(const ScreenSnapshot&)>;
  bool WaitFor(const Condition& condition);
  bool WaitForText(int row, int col, std::u16string_view text);
  // A screen was handed over with all of these flags.
  bool WaitForFlags(std::uint32_t flags);
  bool WaitUntilClosed();
  // A bell since the last call.
  bool WaitForBell();
  // Whether one read held the whole of these bytes.
  bool GotInOneRead(std::string_view bytes) const;

  // Logs in and gets past everything up to the main menu.
  bool LogIn(const std::string& id, const std::string& password);
  // Enters a board from a menu, as a program would do it.
  bool EnterBoard(const std::string& name);

  const TermScreen& Screen() const { return screen_; }
  // The latest screen that was handed over.
  const ScreenSnapshot& Seen() const { return seen_; }
  // The flags of every screen that was handed over, in order.
  const std::vector<std::uint32_t>& History() const { return history_; }
  const PageTests& Pages() const { return classifier_.Pages(); }
  // What has been fed so far, read by read.
  const std::vector<std::string>& Reads() const { return fed_; }
  bool Has(int row, int col, std::u16string_view text) const;
  std::string Dump() const;  // the rows as UTF-8, for messages of failed tests

 private:
  bool Post(unsigned message, std::uintptr_t first, std::uintptr_t second) override;
  void OnConnected(std::string_view peerAddress) override;
  void OnReceived(std::span<const std::uint8_t> bytes) override;
  bool Pause(int) override { return true; }
  void OnDebugLine(std::string_view) override {}
  void Receive();
  bool FeedNext();

  std::unique_ptr<Transport> transport_;
  ScreenClassifier classifier_;
  TermScreen screen_;
  ScreenSnapshot seen_;
  std::vector<std::uint32_t> history_;
  int bells_ = 0;
  std::vector<std::string> fed_;
  std::mutex mutex_;
  std::condition_variable arrived_;
  std::vector<std::string> reads_;
  bool connected_ = false;
  bool closed_ = false;
  std::thread receiver_;
};

}  // namespace quillet
