// Typing over a real connection, read at the other end by a server that takes its time.
#include <thread>

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>

#include "core/key_sequence.h"
#include "platform/socket.h"
#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

// Accepts one client, and begins to read when told.
class SlowReader {
 public:
  SlowReader() {
    EXPECT_TRUE(listener_.Open(ResolvedAddress::Family::kIpv4, 0));
    thread_ = std::thread([this] { Serve(); });
  }
  ~SlowReader() {
    stop_.Set();
    begin_.Set();
    thread_.join();
  }

  QString Address() const { return u"telnet://127.0.0.1:%1"_qs.arg(listener_.Port()); }
  void Begin() { begin_.Set(); }
  std::string Read() const {
    const std::lock_guard guard(lock_);
    return read_;
  }

 private:
  void Serve() {
    const std::unique_ptr<Socket> client = listener_.Accept(stop_);
    while (client && !begin_.WaitFor(1000))
      if (stop_.IsSet()) return;
    std::array<std::uint8_t, 700> buffer;
    std::size_t count = 0;
    while (client && client->Receive(buffer, count, stop_) == Socket::Result::kOk) {
      const std::lock_guard guard(lock_);
      read_.append(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
    }
  }

  Listener listener_;
  StopSignal stop_;
  StopSignal begin_;
  mutable std::mutex lock_;
  std::string read_;
  std::thread thread_;
};

class LoopbackTypingTest : public WindowTest {
 protected:
  // Everything up to `end`, without the Delete keys with which the session opens; they may come between.
  std::string Typed(const std::string& end) {
    const auto typed = [&] {
      std::string bytes = server.Read();
      const std::string deleteKey(KeySequence(kKeyDelete));
      for (std::size_t at = bytes.find(deleteKey); at != std::string::npos; at = bytes.find(deleteKey, at))
        bytes.erase(at, deleteKey.size());
      return bytes;
    };
    Until([&] { return typed().ends_with(end); });
    return typed();
  }

  SlowReader server;
};

TEST_F(LoopbackTypingTest, AStalledServerNeitherFreezesThePasteNorLosesOrder) {
  doc->Open({.address = server.Address(), .name = {}, .makeTransport = {}});
  ASSERT_TRUE(doc->IsConnected());
  // Larger than what the system buffers for a peer that does not read.
  std::u16string text;
  for (int line = 0; text.size() < 4000000; ++line)
    text += QStringLiteral("第%1行，奧拉拉文藝坊\r").arg(line).toStdU16String();
  QGuiApplication::clipboard()->setText(QString::fromStdU16String(text));
  QElapsedTimer pasting;
  pasting.start();
  View().Paste();
  std::string after;
  for (int i = 0; i < 2000; ++i) {
    const char letter = static_cast<char>('a' + i % 26);
    Press(0, QString(QChar(letter)));
    after += letter;
  }
  after += "THE END";
  TypeText("THE END");
  EXPECT_LT(pasting.elapsed(), kPatienceMs) << "the window is frozen by a server that does not read";
  server.Begin();
  EXPECT_TRUE(Typed("THE END") == ToBig5(text) + after);
}

}  // namespace
}  // namespace quillet
