// Typing over a real connection, read at the other end by a server that takes its time.
#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>

#include "bbs/page_flags.h"
#include "core/charset.h"
#include "core/key_sequence.h"
#include "tests/app/window_fixture.h"
#include "tests/support/loopback_server.h"

namespace quillet {
namespace {

// Accepts one client, shows it the editor, and begins to read when told: a little at a time.
class SlowReader {
 public:
  QString Address() const { return QString::fromStdString(server_.SiteAddress()); }
  void Begin() { begin_.Set(); }
  std::string Read() const {
    const std::lock_guard guard(lock_);
    return read_;
  }

 private:
  void Serve(Socket& client, const StopSignal& stop) {
    SendText(client, "\x1B[24;1H" + ToBig5(u" 編輯文章") + "\x1B[1;1H", stop);
    while (!begin_.WaitFor(100))
      if (stop.IsSet()) return;
    std::array<std::uint8_t, 700> buffer;
    std::size_t count = 0;
    while (client.Receive(buffer, count, stop) == Socket::Result::kOk) {
      const std::lock_guard guard(lock_);
      read_.append(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(count));
    }
  }

  StopSignal begin_;
  mutable std::mutex lock_;
  std::string read_;
  LoopbackServer server_{[this](Socket& client, const StopSignal& stop) { Serve(client, stop); }};
};

class LoopbackTypingTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    doc->GetConnection().Open({.address = server.Address(), .name = {}, .makeTransport = {}});
    ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_EDITOR) != 0; }));
  }

  void Commit(const std::u16string& text) {
    QInputMethodEvent event(u"ㄅ"_qs, {});
    event.setCommitString(QString::fromStdU16String(text));
    QCoreApplication::sendEvent(&View(), &event);
  }

  // Everything up to `end`, without the Delete keys with which the session opens; they may come between.
  std::string Typed(const std::string& end) {
    const auto typed = [&] {
      std::string bytes = server.Read();
      const std::string deleteKey(KeySequence(kKeyDelete));
      std::string rest;
      std::size_t from = 0;
      for (std::size_t at = 0; (at = bytes.find(deleteKey, from)) != std::string::npos;
           from = at + deleteKey.size())
        rest.append(bytes, from, at - from);
      return rest.append(bytes, from);
    };
    Until([&] { return server.Read().ends_with(end); });
    return typed();
  }

  SlowReader server;
};

// So many different Chinese characters, all of which the BBS has.
std::u16string Characters(std::size_t count) {
  std::u16string text;
  for (char16_t unit = u'一'; text.size() < count;
       unit = unit == u'龥' ? u'一' : static_cast<char16_t>(unit + 1))
    if (Charset().unicodeToBig5[unit] != 0) text += unit;
  return text;
}

TEST_F(LoopbackTypingTest, AStalledServerNeitherFreezesThePasteNorLosesOrder) {
  // Together larger than what the system buffers for a peer that does not read.
  constexpr int kPastes = 5;
  std::u16string text;
  for (int line = 0; text.size() < 800'000; ++line)
    text += QStringLiteral("第%1行，奧拉拉文藝坊\r").arg(line).toStdU16String();
  QGuiApplication::clipboard()->setText(QString::fromStdU16String(text));
  QElapsedTimer pasting;
  pasting.start();
  std::string expected;
  for (int i = 0; i < kPastes; ++i) {
    Press(Qt::Key_V, "\x16", Qt::ControlModifier);
    expected += ToBig5(text);
  }
  for (int i = 0; i < 2000; ++i) {
    const char letter = static_cast<char>('a' + i % 26);
    Press(0, QString(QChar(letter)));
    expected += letter;
  }
  TypeText("THE END");
  EXPECT_LT(pasting.elapsed(), kPatienceMs) << "the window is frozen by a server that does not read";
  server.Begin();
  EXPECT_TRUE(Typed("THE END") == expected + "THE END");
}

// The reader begins in the middle: the queue is met full, draining and empty.
TEST_F(LoopbackTypingTest, CommitsAndKeysArriveInTheOrderOfTheHands) {
  constexpr std::array kKeys = {std::pair{Qt::Key_Left, kKeyLeft}, std::pair{Qt::Key_Up, kKeyUp},
                                std::pair{Qt::Key_Right, kKeyRight}, std::pair{Qt::Key_Home, kKeyHome}};
  const std::u16string characters = Characters(5'000);
  std::string expected;
  for (std::size_t i = 0; i < 3'000; ++i) {
    // Now and then a whole paragraph at once.
    const std::u16string text = characters.substr(i, i % 100 == 7 ? 2'000 : 1 + i % 4);
    Commit(text);
    const auto& [key, sequence] = kKeys[i % kKeys.size()];
    Press(key);
    const QString letter(QChar(static_cast<char16_t>(u'a' + i % 26)));
    Press(0, letter);
    expected += ToBig5(text);
    expected += KeySequence(sequence);
    expected += letter.toStdString();
    if (i == 1'500) server.Begin();
  }
  TypeText("THE END");
  EXPECT_TRUE(Typed("THE END") == expected + "THE END");
}

}  // namespace
}  // namespace quillet
