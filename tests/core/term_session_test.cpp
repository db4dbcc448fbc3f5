#include "core/term_session.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

#include "core/key_sequence.h"
#include "tests/support/fake_watcher.h"
#include "tests/support/scripted_transport.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

std::span<const std::uint8_t> Bytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// Never comes up, never gives up by itself.
TransportEnd NeverAnswers(TransportEvents&, const StopSignal& stop) {
  while (!stop.WaitFor(1000)) {
  }
  return {};
}

class TermSessionTest : public testing::Test {
 protected:
  static SessionOptions Options(FakeWatcher& watcher) {
    SessionOptions options;
    options.watcher = &watcher;
    options.endpoints.mainHost = "main.invalid";
    options.endpoints.secondaryHost = "second.invalid";
    options.endpoints.serverNetwork = ParseDottedAddress("192.0.2.16");
    return options;
  }
  std::unique_ptr<Transport> Scripted() { return std::make_unique<ScriptedTransport>(script_); }

  FakeWatcher watcher_;
  std::shared_ptr<TransportScript> script_ = std::make_shared<TransportScript>();
  TermSession session_{Options(watcher_)};
};

// ---- Beginning and ending

TEST_F(TermSessionTest, AConnectionIsReportedOnceEachWay) {
  EXPECT_EQ(session_.state, SessionState::kIdle);
  session_.ConnectWith(Scripted());
  EXPECT_EQ(session_.state, SessionState::kConnected);
  EXPECT_EQ(session_.LastEnd().reason, EndReason::kNone);
  EXPECT_GT(session_.connectedAt, 0);
  ASSERT_TRUE(WaitUntil([&] { return watcher_.connected == 1; }));
  EXPECT_EQ(watcher_.lastState, SessionState::kConnected);

  session_.Disconnect();
  session_.Disconnect();
  EXPECT_EQ(session_.state, SessionState::kClosed);
  EXPECT_EQ(session_.LastEnd().reason, EndReason::kClosedByUser);
  EXPECT_EQ(watcher_.connected, 1);
  EXPECT_EQ(watcher_.disconnected, 1);
  EXPECT_EQ(watcher_.lastState, SessionState::kClosed);
  LiveScreen::Copy copy;
  session_.live.Read(copy);
  EXPECT_EQ(copy.screen.sessionState, SessionState::kClosed);
  EXPECT_TRUE(copy.settled);
}

TEST_F(TermSessionTest, AddressesThatLeadNowhereEndInOneEventAndAReason) {
  struct Case {
    std::string address;
    EndReason reason;
  };
  const Case cases[] = {{"gopher://bbs.invalid", EndReason::kUnknownScheme},
                        {std::string(kMaxAddressLength + 1, 'a'), EndReason::kAddressTooLong},
                        {"ssh://", EndReason::kResolveFailed},
                        {"wss:///bbs", EndReason::kBadAddress},
                        {"wss://bbs .invalid/bbs", EndReason::kBadAddress},
                        {"wss://bbs.invalid/bbs#here", EndReason::kBadAddress},
                        {"127.0.0.1:", EndReason::kResolveFailed},
                        {"127.0.0.1:65536", EndReason::kResolveFailed},
                        {"", EndReason::kResolveFailed}};
  int events = 0;
  for (const Case& one : cases) {
    session_.Connect(one.address);
    EXPECT_EQ(session_.state, SessionState::kClosed) << one.address;
    EXPECT_EQ(session_.LastEnd().reason, one.reason) << one.address;
    EXPECT_EQ(watcher_.disconnected, ++events) << one.address;
    EXPECT_FALSE(session_.SendKey(41));
    EXPECT_TRUE(session_.SendKey(kKeyUp)) << "a known key, though it goes nowhere";
  }
  EXPECT_EQ(watcher_.connected, 0);
}

TEST_F(TermSessionTest, TheScreenStartsAnewButKeepsItsParserState) {
  script_->run = [](TransportEvents& events, const StopSignal&) {
    events.OnConnected({});
    events.OnReceived(Bytes("\x1b[5;7H\x1b[31mold text\x1b["));
    return TransportEnd{EndReason::kClosedByPeer, {}};
  };
  session_.ConnectWith(Scripted());
  ASSERT_TRUE(WaitUntil([&] { return session_.state == SessionState::kClosed; }));
  script_ = std::make_shared<TransportScript>();
  session_.frozen = true;
  session_.ConnectWith(Scripted());
  session_.Disconnect();
  EXPECT_FALSE(session_.frozen);
  EXPECT_EQ(session_.screen.cursorRow, 0);
  EXPECT_EQ(session_.screen.cursorCol, 0);
  EXPECT_EQ(session_.screen.curAttr, kAttrBlank);
  EXPECT_EQ(session_.screen.RowText(4), std::string(kCols, ' '));
  EXPECT_EQ(session_.screen.escState, 91);
}

TEST_F(TermSessionTest, TheIdleHookCanGiveUpAndCannotReenter) {
  script_->run = NeverAnswers;
  int calls = 0;
  session_.ConnectWith(Scripted(), [&] {
    EXPECT_EQ(session_.state, SessionState::kConnecting);
    session_.Connect("gopher://inner");
    session_.ConnectWith(std::make_unique<ScriptedTransport>(std::make_shared<TransportScript>()));
    return ++calls < 3;
  });
  EXPECT_EQ(calls, 3);
  EXPECT_EQ(session_.state, SessionState::kClosed);
  EXPECT_EQ(session_.LastEnd().reason, EndReason::kCancelled);
  EXPECT_EQ(watcher_.disconnected, 1);
}

TEST_F(TermSessionTest, DisconnectEndsAnAttemptFromTheHookAndFromAnotherThread) {
  script_->run = NeverAnswers;
  session_.ConnectWith(Scripted(), [&] {
    session_.Disconnect();
    return true;
  });
  EXPECT_EQ(session_.LastEnd().reason, EndReason::kCancelled);

  script_ = std::make_shared<TransportScript>();
  script_->run = NeverAnswers;
  std::thread other;
  session_.ConnectWith(Scripted(), [&] {
    if (!other.joinable()) other = std::thread([&] { session_.Disconnect(); });
    return true;
  });
  other.join();
  EXPECT_EQ(session_.LastEnd().reason, EndReason::kCancelled);
  EXPECT_EQ(watcher_.disconnected, 2);
}

TEST_F(TermSessionTest, CallsFromTheReceiveThreadNeverWaitForIt) {
  watcher_.onScreen = [&](ScreenReason reason) {
    session_.Connect("gopher://inner");
    if (reason == ScreenReason::kConnected) session_.Disconnect();
  };
  session_.ConnectWith(Scripted());
  ASSERT_TRUE(
      WaitUntil([&] { return session_.state == SessionState::kClosed && watcher_.disconnected == 1; }));
  EXPECT_EQ(session_.LastEnd().reason, EndReason::kClosedByUser);
}

TEST(TermSessionEndTest, DestructionIsSafeInEveryState) {
  for (int round = 0; round < 60; ++round) {
    FakeWatcher watcher;
    auto script = std::make_shared<TransportScript>();
    SessionOptions options;
    options.watcher = &watcher;
    {
      TermSession session(options);
      switch (round % 6) {
        case 0:
          continue;  // never connected
        case 1:
          script->run = NeverAnswers;
          break;
        case 2:
          script->run = [](TransportEvents&, const StopSignal&) {
            return TransportEnd{EndReason::kConnectFailed, {}};
          };
          break;
        case 3:
          script->run = [](TransportEvents& events, const StopSignal&) {
            events.OnConnected({});
            return TransportEnd{EndReason::kClosedByPeer, {}};
          };
          break;
        case 4:
          script->write = [](std::span<const std::uint8_t>, const StopSignal& stop) -> std::size_t {
            while (!stop.WaitFor(1000)) {
            }
            return 0;
          };
          break;
        default:
          break;
      }
      session.ConnectWith(std::make_unique<ScriptedTransport>(script), [] { return false; });
      session.SendBytes("typed");
      session.SendBytes("more");
    }
    EXPECT_EQ(watcher.disconnected, 1) << round;
  }
}

// ---- Which site it is

TEST_F(TermSessionTest, HostNamesTellTheService) {
  struct Case {
    const char* address;
    bool isSite, isMain;
  };
  for (const Case& one : {Case{"telnet://Main.Invalid", true, true}, Case{"x.main.invalid.y:1", true, true},
                          Case{"second.invalid", true, false}, Case{"other.invalid", false, false}}) {
    session_.Connect(one.address, [] { return false; });
    EXPECT_EQ(session_.isBbsSite, one.isSite) << one.address;
    EXPECT_EQ(session_.isMainBbs, one.isMain) << one.address;
    EXPECT_EQ(watcher_.lastIsBbsSite, one.isSite ? 1 : 0) << one.address;
  }
  TermSession unconfigured({});
  unconfigured.Connect("bbs.invalid", [] { return false; });
  EXPECT_FALSE(unconfigured.isBbsSite) << "an empty name is part of every name";
}

TEST_F(TermSessionTest, ThePeersPlaceInTheServerNetworkTellsTheService) {
  struct Case {
    const char* peer;
    bool isSite, isMain;
  };
  for (const Case& one :
       {Case{"192.0.2.15", false, false}, Case{"192.0.2.16", true, true}, Case{"192.0.2.27", true, true},
        Case{"192.0.2.28", true, false}, Case{"192.0.2.29", false, false}, Case{"255.0.0.0", false, false},
        Case{"::1", false, false}, Case{"", false, false}}) {
    script_ = std::make_shared<TransportScript>();
    script_->run = [peer = one.peer](TransportEvents& events, const StopSignal&) {
      events.OnConnected(peer);
      return TransportEnd{EndReason::kClosedByPeer, {}};
    };
    session_.ConnectWith(Scripted());
    session_.Disconnect();
    EXPECT_EQ(session_.isBbsSite, one.isSite) << one.peer;
    EXPECT_EQ(session_.isMainBbs, one.isMain) << one.peer;
    EXPECT_EQ(session_.screen.isBbsSite, one.isSite ? 1 : 0) << one.peer;
  }
}

// ---- Sending

TEST_F(TermSessionTest, KeysAreLoggedInOrderAndUnknownOnesAreNot) {
  session_.ConnectWith(Scripted());
  session_.idleMark = 7;
  EXPECT_TRUE(session_.SendKey(kKeyPageUp));
  EXPECT_FALSE(session_.SendKey(41));
  EXPECT_FALSE(session_.SendKey(-1));
  EXPECT_TRUE(session_.SendKey(kKeyDelete));
  ASSERT_TRUE(WaitUntil([&] { return script_->Written() == "\x1b[5~\x1b[3~"; })) << script_->Written();
  EXPECT_EQ(session_.idleMark, 0);
  EXPECT_GT(session_.lastSendTick, 0);
  {
    std::lock_guard lock(session_.keyLogLock);
    EXPECT_THAT(session_.keyLog, testing::ElementsAre("\x1b[5~", "\x1b[3~"));
  }
  session_.Disconnect();
  for (std::size_t i = 0; i < 2 * TermSession::kKeyLogLimit; ++i)
    session_.SendKey(i % 2 == 0 ? kKeyUp : kKeyDown);
  std::lock_guard lock(session_.keyLogLock);
  EXPECT_EQ(session_.keyLog.size(), TermSession::kKeyLogLimit);
  EXPECT_EQ(session_.keyLog.back(), "\x1b[B");
}

TEST_F(TermSessionTest, WhatIsTypedWhileConnectingIsSentAndAfterTheEndIsNot) {
  std::atomic<bool> answer{false};
  script_->run = [&](TransportEvents& events, const StopSignal& stop) {
    while (!answer && !stop.WaitFor(1)) {
    }
    events.OnConnected({});
    while (!stop.WaitFor(1000)) {
    }
    return TransportEnd{};
  };
  session_.ConnectWith(Scripted(), [&] {
    if (!answer) session_.SendBytes("early");
    answer = true;
    return true;
  });
  ASSERT_TRUE(WaitUntil([&] { return script_->Written() == "early"; }));
  session_.Disconnect();
  session_.SendBytes("late");

  script_ = std::make_shared<TransportScript>();
  session_.ConnectWith(Scripted());
  session_.SendBytes("next");
  ASSERT_TRUE(WaitUntil([&] { return !script_->Written().empty(); }));
  session_.Disconnect();
  EXPECT_EQ(script_->Written(), "next");
  EXPECT_EQ(session_.UnsentBytes(), 0u);
}

// One wait of a tenth of a second for all of them: twenty seconds if each key had its own.
TEST_F(TermSessionTest, KeysTypedAtAStalledPeerDoNotEachWait) {
  script_->write = [](std::span<const std::uint8_t>, const StopSignal& stop) -> std::size_t {
    while (!stop.WaitFor(1000)) {
    }
    return 0;
  };
  session_.ConnectWith(Scripted());
  const auto started = std::chrono::steady_clock::now();
  for (const bool direct : {false, true}) {
    session_.sendDirect = direct;
    for (int i = 0; i < 100; ++i)
      session_.SendBytes("k");
  }
  EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(10));
  session_.Disconnect();
  EXPECT_EQ(session_.UnsentBytes(), 200u);
}

TEST_F(TermSessionTest, WhatAPeerLeavesUnreadIsCountedBeforeTheEndIsReported) {
  std::atomic<bool> leave{false};
  script_->run = [&](TransportEvents& events, const StopSignal& stop) {
    events.OnConnected({});
    while (!leave && !stop.WaitFor(1)) {
    }
    return TransportEnd{EndReason::kClosedByPeer, {}};
  };
  script_->write = [](std::span<const std::uint8_t>, const StopSignal& stop) -> std::size_t {
    while (!stop.WaitFor(1000)) {
    }
    return 3;
  };
  std::atomic<std::size_t> unsentAtTheEnd{0};
  std::atomic<EndReason> reasonAtTheEnd{EndReason::kNone};
  watcher_.onScreen = [&](ScreenReason reason) {
    if (reason != ScreenReason::kDisconnected) return;
    unsentAtTheEnd = session_.UnsentBytes();
    reasonAtTheEnd = session_.LastEnd().reason;
  };
  session_.ConnectWith(Scripted());
  session_.SendBytes("in hand");
  session_.SendBytes("queued");
  leave = true;
  ASSERT_TRUE(WaitUntil([&] { return watcher_.disconnected == 1; }));
  session_.Disconnect();
  EXPECT_EQ(unsentAtTheEnd + script_->Written().size(), 13u);
  EXPECT_GE(unsentAtTheEnd, 10u);
  EXPECT_EQ(reasonAtTheEnd, EndReason::kClosedByPeer);
  EXPECT_EQ(session_.LastEnd().reason, EndReason::kClosedByPeer)
      << "the user's call comes too late to be the reason";
}

TEST_F(TermSessionTest, OtherThreadsWaitForTheQueueToDrain) {
  std::atomic<bool> release{false};
  script_->write = [&](std::span<const std::uint8_t> bytes, const StopSignal& stop) -> std::size_t {
    while (!release && !stop.WaitFor(1)) {
    }
    return bytes.size();
  };
  session_.ConnectWith(Scripted());
  std::atomic<int> step{0};
  std::thread worker([&] {
    session_.SendBytes("a");
    step = 1;
    session_.SendBytes("b");  // goes into the queue as soon as "a" has left it
    step = 2;
    session_.SendBytes("c");  // "b" cannot leave while "a" is being written
    step = 3;
  });
  ASSERT_TRUE(WaitUntil([&] { return step == 2; }));
  EXPECT_FALSE(WaitUntil([&] { return step == 3; }, std::chrono::milliseconds(100)));
  release = true;
  worker.join();
  ASSERT_TRUE(WaitUntil([&] { return script_->Written() == "abc"; }));

  release = false;
  std::thread second([&] {
    session_.SendBytes("d");
    session_.SendBytes("e");
    session_.SendBytes("f");
  });
  session_.Disconnect();  // ends the wait too
  second.join();
}

TEST_F(TermSessionTest, DirectSendsAreWrittenBeforeTheCallReturns) {
  session_.sendDirect = true;
  session_.SendBytes("before there is a connection");
  session_.ConnectWith(Scripted());
  session_.SendBytes("window");
  EXPECT_EQ(script_->Written(), "window");
  std::thread([&] { session_.SendBytes("+worker"); }).join();
  EXPECT_EQ(script_->Written(), "window+worker");
  session_.Disconnect();
  EXPECT_EQ(session_.UnsentBytes(), 0u);
}

TEST_F(TermSessionTest, TheReactionWaitEndsWhenTheMenuCursorHasMoved) {
  enum Step { kNothing, kMoved };
  std::atomic<int> step{kNothing};
  script_->run = [&](TransportEvents& events, const StopSignal& stop) {
    events.OnConnected({});
    events.OnReceived(Bytes("\x1b[3;1H     12\x1b[3;1H"));
    while (step != kMoved && !stop.WaitFor(1)) {
    }
    events.OnReceived(Bytes("\x1b[4;1H     34\x1b[4;1H"));
    while (!stop.WaitFor(1000)) {
    }
    return TransportEnd{};
  };
  session_.ConnectWith(Scripted());
  ASSERT_TRUE(WaitUntil([&] { return watcher_.updated >= 1; }));
  session_.sendDirect = true;
  const auto stillWaiting = [&](const std::atomic<bool>& returned) {
    const int asked = watcher_.listCursorQuestions;
    return WaitUntil([&] { return watcher_.listCursorQuestions > asked + 3; }) && !returned;
  };

  std::atomic<bool> returned{false};
  watcher_.listCursor = true;
  std::thread worker([&] {
    session_.SendKey(kKeyDown, ReactionWait::kUntilCursorMoves);
    returned = true;
  });
  EXPECT_TRUE(stillWaiting(returned)) << "nothing has moved";
  watcher_.listCursor = false;
  session_.noSendWait = true;
  step = kMoved;
  EXPECT_TRUE(WaitUntil([&] { return watcher_.updated >= 2; }));
  EXPECT_TRUE(stillWaiting(returned)) << "moved, but no menu cursor";
  watcher_.listCursor = true;
  EXPECT_TRUE(stillWaiting(returned)) << "the test is suspended";
  session_.noSendWait = false;
  worker.join();
  EXPECT_TRUE(returned);

  std::thread second([&] { session_.SendKey(kKeyDown, ReactionWait::kUntilCursorMoves); });
  session_.SendKey(kKeyDown, ReactionWait::kUntilCursorMoves);  // the window's own wait is bounded
  session_.Disconnect();
  second.join();
}

TEST(CursorKeysTest, RowsGoByHomeAndColumnsAlone) {
  EXPECT_EQ(CursorKeys({4, 9}, {4, 9}), "");
  EXPECT_EQ(CursorKeys({4, 9}, {4, 7}), "\x1b[D\x1b[D");
  EXPECT_EQ(CursorKeys({4, 9}, {5, 0}), "\x1b[1~\x1b[B");
  EXPECT_EQ(CursorKeys({5, 1}, {4, 2}), "\x1b[1~\x1b[A\x1b[C\x1b[C");
}

}  // namespace
}  // namespace quillet
