#include "tests/demo/test_client.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>

#include "core/charset.h"
#include "core/transport/telnet_transport.h"
#include "platform/utf8.h"

namespace quillet {
namespace {

constexpr auto kPatience = std::chrono::seconds(20);

}  // namespace

TestClient::TestClient(std::uint16_t port)
    : TestClient(std::make_unique<TelnetTransport>("127.0.0.1", std::to_string(port))) {}

TestClient::TestClient(std::unique_ptr<Transport> transport) : transport_(std::move(transport)) {
  screen_.SetWatcher(&classifier_);
  screen_.notifyWindow = this;
  screen_.curAttr = kAttrBlank;
  screen_.sessionState = SessionState::kConnected;
  screen_.isBbsSite = 1;
  seen_ = screen_;
  receiver_ = std::thread([this] { Receive(); });
  std::unique_lock lock(mutex_);
  arrived_.wait(lock, [this] { return connected_ || closed_; });
}

TestClient::~TestClient() {
  transport_->Stop();
  receiver_.join();
}

void TestClient::Send(std::string_view bytes) {
  transport_->Write({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

void TestClient::Receive() {
  const TransportEnd end = transport_->Run(*this);
  const std::lock_guard lock(mutex_);
  if (!connected_) ADD_FAILURE() << "cannot connect: " << static_cast<int>(end.reason) << " " << end.detail;
  closed_ = true;
  arrived_.notify_all();
}

void TestClient::OnConnected(std::string_view) {
  const std::lock_guard lock(mutex_);
  connected_ = true;
  arrived_.notify_all();
}

void TestClient::OnReceived(std::span<const std::uint8_t> bytes) {
  const std::lock_guard lock(mutex_);
  reads_.emplace_back(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  arrived_.notify_all();
}

// Each read is a batch of its own, as for a session. False when nothing more will come or comes in time.
bool TestClient::FeedNext() {
  std::unique_lock lock(mutex_);
  if (!arrived_.wait_for(lock, kPatience, [this] { return closed_ || !reads_.empty(); }) || reads_.empty())
    return false;
  fed_.push_back(std::move(reads_.front()));
  const std::string& read = fed_.back();
  reads_.erase(reads_.begin());
  lock.unlock();
  screen_.Feed({reinterpret_cast<const std::uint8_t*>(read.data()), read.size()});
  return true;
}

bool TestClient::WaitFor(const Condition& condition) {
  while (!condition(screen_))
    if (!FeedNext()) return false;
  return true;
}

bool TestClient::WaitForText(int row, int col, std::u16string_view text) {
  return WaitFor([&](const ScreenSnapshot& screen) { return RowStartsWith(screen, row, col, text); });
}

bool TestClient::WaitForFlags(std::uint32_t flags) {
  return WaitFor([&](const ScreenSnapshot&) { return (seen_.pageFlags & flags) == flags; });
}

bool TestClient::WaitForBell() {
  const bool rung = WaitFor([this](const ScreenSnapshot&) { return bells_ > 0; });
  bells_ = 0;
  return rung;
}

bool TestClient::WaitUntilClosed() {
  while (FeedNext()) {
  }
  const std::lock_guard lock(mutex_);
  return closed_;
}

bool TestClient::LogIn(const std::string& id, const std::string& password) {
  if (!WaitForText(20, 0, u"請輸入代號")) return false;
  Send(id + "\r");
  if (!password.empty()) {
    if (!WaitForText(21, 0, u"請輸入您的密碼")) return false;
    Send(password + "\r");
  }
  // The server may not have noticed yet that the user's client before this one is gone.
  const auto isAsked = [this] { return Has(22, 0, u"您想刪除其他重複登入"); };
  const auto isGreeted = [this] { return (seen_.pageFlags & PF_ANYKEY_BANNER) != 0; };
  if (!WaitFor([&](const ScreenSnapshot&) { return isAsked() || isGreeted(); })) return false;
  if (!isGreeted()) Send("n\r");
  if (!WaitForFlags(PF_ANYKEY_BANNER)) return false;
  Send("\n");
  return WaitForText(0, 2, u"主") && WaitForFlags(PF_LIST_CURSOR);
}

bool TestClient::EnterBoard(const std::string& name) {
  Send("s" + name);
  if (!WaitFor([this](const ScreenSnapshot& screen) { return Pages().IsInputField(screen); })) return false;
  Send("\r");
  return WaitForFlags(PF_ARTICLE_LIST_CURSOR) && WaitFor([&](const ScreenSnapshot& screen) {
           return screen.RowText(0).find(name) != std::string_view::npos;
         });
}

bool TestClient::Has(int row, int col, std::u16string_view text) const {
  return RowStartsWith(screen_, row, col, text);
}

bool TestClient::GotInOneRead(std::string_view bytes) const {
  return std::any_of(fed_.begin(), fed_.end(),
                     [&](const std::string& read) { return read.find(bytes) != std::string::npos; });
}

std::string DumpScreen(const ScreenSnapshot& screen) {
  std::string all;
  for (int row = 0; row < kRows; ++row)
    all += Utf8FromUtf16(FromBig5(screen.RowText(row))) + '\n';
  return all + "cursor " + std::to_string(screen.cursorRow) + "," + std::to_string(screen.cursorCol) + "\n";
}

std::string TestClient::Dump() const {
  return DumpScreen(screen_);
}

bool TestClient::Post(unsigned message, std::uintptr_t, std::uintptr_t second) {
  bells_ += message == kMessageBell;
  if (message != kMessageScreen) return true;
  const std::unique_ptr<ScreenSnapshot> taken(reinterpret_cast<ScreenSnapshot*>(second));
  seen_ = *taken;
  history_.push_back(seen_.pageFlags);
  return true;
}

}  // namespace quillet
