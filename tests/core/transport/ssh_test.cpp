#include <chrono>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

#include "core/term_session.h"
#include "core/transport/ssh_transport.h"
#include "tests/core/transport/faulty_ssh_server.h"
#include "tests/support/fake_watcher.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/wait_until.h"

#ifdef __linux__
#include <dlfcn.h>
#include <pwd.h>

// The library asks the system's list of users where the home is, and it is given this answer instead.
static std::string homeOfTest;
static std::atomic<int> homesTold{0};

extern "C" int getpwuid_r(uid_t user, passwd* entry, char* buffer, std::size_t size, passwd** found) {
  using Function = int (*)(uid_t, passwd*, char*, std::size_t, passwd**);
  static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "getpwuid_r"));
  const int fault = real(user, entry, buffer, size, found);
  if (fault != 0 || *found == nullptr || homeOfTest.empty()) return fault;
  entry->pw_dir = homeOfTest.data();
  ++homesTold;
  return 0;
}
#endif

namespace quillet {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kAtOnce = std::chrono::seconds(2);  // what a person who gives up may be kept waiting
constexpr const char* kNobody = "192.0.2.1";       // kept for documents: nobody answers, or nobody is reached

// A session over SSH and what its watcher was handed.
class SshTest : public testing::Test {
 protected:
  SshTest() {
    SessionOptions options;
    options.watcher = &watcher;
    session.emplace(options);
  }
  void Connect(const FaultySshServer& server, SshOptions options = {}) {
    options.port = server.Port();
    session->ConnectWith(std::make_unique<SshTransport>("127.0.0.1", std::move(options)));
  }
  bool HasClosed() {
    return WaitUntil([&] { return session->state == SessionState::kClosed && watcher.disconnected > 0; });
  }
  bool Shows(std::string_view greeting) {
    return WaitUntil([&] {
      LiveScreen::Copy copy;
      session->live.Read(copy);
      return copy.screen.RowText(1).starts_with(greeting);
    });
  }

  const SshLibrary library;
  FakeWatcher watcher;
  std::optional<TermSession> session;
};

struct FaultCase {
  const char* name;
  SshFault fault;
  EndReason reason;
  int connected;  // how often the watcher hears of a connection
};

void PrintTo(const FaultCase& one, std::ostream* out) {
  *out << one.name;
}

template <typename Param>
std::string NameOf(const testing::TestParamInfo<Param>& info) {
  return info.param.name;
}

// ---- Faults that end a connection or an attempt by themselves

class SshFaultTest : public SshTest, public testing::WithParamInterface<FaultCase> {};

constexpr FaultCase kFatal[] = {
    {"SilentFromTheStart", SshFault::kSilentFromTheStart, EndReason::kConnectFailed, 0},
    {"SilentAfterTheBanner", SshFault::kSilentAfterTheBanner, EndReason::kConnectFailed, 0},
    {"SilentAtLogin", SshFault::kSilentAtLogin, EndReason::kConnectFailed, 0},
    {"SilentAtPassword", SshFault::kSilentAtPassword, EndReason::kConnectFailed, 0},
    {"SilentAtChannel", SshFault::kSilentAtChannel, EndReason::kConnectFailed, 0},
    {"SilentAtTerminal", SshFault::kSilentAtTerminal, EndReason::kConnectFailed, 0},
    {"SilentAtShell", SshFault::kSilentAtShell, EndReason::kConnectFailed, 0},
    {"RefusesPassword", SshFault::kRefusesPassword, EndReason::kLoginRefused, 0},
    {"RefusesChannel", SshFault::kRefusesChannel, EndReason::kTerminalRefused, 0},
    {"RefusesShell", SshFault::kRefusesShell, EndReason::kClosedByPeer, 1},
    {"ClosesTheChannel", SshFault::kClosesTheChannel, EndReason::kClosedByPeer, 1},
    {"DropsTheConnection", SshFault::kDropsTheConnection, EndReason::kReadFailed, 1},
    {"Floods", SshFault::kFloods, EndReason::kClosedByPeer, 1},
};
INSTANTIATE_TEST_SUITE_P(Faults, SshFaultTest, testing::ValuesIn(kFatal), NameOf<FaultCase>);

TEST_P(SshFaultTest, EndsOnceWithItsReasonAndAllThatWasSaid) {
  constexpr std::chrono::milliseconds kShort{700};
  FaultySshServer server(GetParam().fault);
  testing::internal::CaptureStderr();
  Connect(server, {.patience = {kShort, kShort, kShort}});
  ASSERT_TRUE(HasClosed());
  session->Disconnect();
  const std::string diagnostics = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(server.Reached());
  EXPECT_EQ(session->LastEnd().reason, GetParam().reason) << session->LastEnd().detail;
  EXPECT_EQ(watcher.connected, GetParam().connected);
  EXPECT_EQ(watcher.disconnected, 1);
  const bool greets = GetParam().connected == 1 && GetParam().fault != SshFault::kRefusesShell;
  const bool floods = GetParam().fault == SshFault::kFloods;
  EXPECT_EQ(session->screen.RowText(1).substr(0, 16), floods   ? "ffffffffffffffff"
                                                      : greets ? "hello over there"
                                                               : std::string(16, ' '));
  const bool isLogin = GetParam().fault == SshFault::kRefusesPassword ||
                       GetParam().fault == SshFault::kSilentAtLogin ||
                       GetParam().fault == SshFault::kSilentAtPassword;
  const bool isConnect = GetParam().fault == SshFault::kSilentFromTheStart ||
                         GetParam().fault == SshFault::kSilentAfterTheBanner;
  const std::string said = isLogin     ? "Error authenticating with password: "
                           : isConnect ? "Error connecting to localhost: "
                                       : "";
  EXPECT_THAT(diagnostics, testing::StartsWith(said));
  EXPECT_EQ(diagnostics.empty(), said.empty()) << diagnostics;
}

// ---- Faults that last until the user has had enough

class SshStopTest : public SshTest, public testing::WithParamInterface<FaultCase> {};

constexpr FaultCase kLasting[] = {
    {"SilentFromTheStart", SshFault::kSilentFromTheStart, EndReason::kCancelled, 0},
    {"SilentAfterTheBanner", SshFault::kSilentAfterTheBanner, EndReason::kCancelled, 0},
    {"SilentAtLogin", SshFault::kSilentAtLogin, EndReason::kCancelled, 0},
    {"SilentAtPassword", SshFault::kSilentAtPassword, EndReason::kCancelled, 0},
    {"SilentAtChannel", SshFault::kSilentAtChannel, EndReason::kCancelled, 0},
    {"SilentAtTerminal", SshFault::kSilentAtTerminal, EndReason::kCancelled, 0},
    {"SilentAtShell", SshFault::kSilentAtShell, EndReason::kCancelled, 0},
    {"Stalls", SshFault::kStalls, EndReason::kClosedByUser, 1},
    {"NoWindow", SshFault::kNoWindow, EndReason::kClosedByUser, 1},
};
INSTANTIATE_TEST_SUITE_P(Faults, SshStopTest, testing::ValuesIn(kLasting), NameOf<FaultCase>);

TEST_P(SshStopTest, NeitherTypingNorGivingUpIsHeld) {
  FaultySshServer server(GetParam().fault);
  session->StartConnectWith(std::make_unique<SshTransport>("127.0.0.1", SshOptions{.port = server.Port()}));
  ASSERT_TRUE(WaitUntil([&] { return server.Reached(); }));
  ASSERT_TRUE(WaitUntil([&] { return watcher.connected == GetParam().connected; }));
  auto started = Clock::now();
  constexpr std::size_t kTyped = 4U << 20;  // more than any window and all that the system holds
  session->SendBytes(std::string(kTyped, 't'));
  for (int i = 0; i < 3; ++i)
    session->SendBytes("key");
  EXPECT_LT(Clock::now() - started, kAtOnce);
  // The greeting still comes while a write waits.
  EXPECT_TRUE(GetParam().connected == 0 || Shows("hello over there"));
  started = Clock::now();
  session->Disconnect();
  EXPECT_LT(Clock::now() - started, kAtOnce);
  EXPECT_EQ(session->LastEnd().reason, GetParam().reason);
  EXPECT_EQ(watcher.disconnected, 1);
  EXPECT_GT(session->UnsentBytes(), 0u);
}

// ---- The good road

class SshRoadTest : public SshTest, public testing::WithParamInterface<FaultCase> {};

constexpr FaultCase kHarmless[] = {
    {"Good", SshFault::kNone, EndReason::kClosedByUser, 1},
    {"OneByteAPacket", SshFault::kOneByteAPacket, EndReason::kClosedByUser, 1},
    {"RefusesTerminal", SshFault::kRefusesTerminal, EndReason::kClosedByUser, 1},
};
INSTANTIATE_TEST_SUITE_P(Faults, SshRoadTest, testing::ValuesIn(kHarmless), NameOf<FaultCase>);

TEST_P(SshRoadTest, TheGuestTypesAndReads) {
  FaultySshServer server(GetParam().fault);
  HostKey shown;
  Connect(server, {.hostKey = [&shown](const HostKey& key) {
            shown = key;
            return HostKeyAnswer::kGoOn;
          }});
  ASSERT_EQ(session->state, SessionState::kConnected) << session->LastEnd().detail;
  EXPECT_TRUE(Shows("hello over there"));
  std::string typed;
  for (int i = 0; i < 50; ++i)
    typed += "<" + std::to_string(i) + ">" + std::string(20000, '.');
  typed += "\x1b[2;1Hlast";
  for (std::size_t at = 0; at < typed.size(); at += 30000)
    session->SendBytes(typed.substr(at, 30000));
  EXPECT_TRUE(Shows("last"));
  session->Disconnect();
  EXPECT_EQ(server.Typed(), typed);
  EXPECT_EQ(server.Login(), "bbs ");
  EXPECT_EQ(server.TerminalSize(), "80x24");
  EXPECT_EQ(shown.type, "ssh-ed25519");
  EXPECT_EQ(shown.fingerprint, server.Fingerprint());
  EXPECT_EQ(session->UnsentBytes(), 0u);
  EXPECT_EQ(session->LastEnd().reason, EndReason::kClosedByUser);
  EXPECT_EQ(watcher.disconnected, 1);
}

TEST_F(SshTest, AChangedKeyEndsTheAttemptBeforeAnythingIsSaid) {
  FaultySshServer server(SshFault::kNone);
  Connect(server, {.hostKey = [](const HostKey&) { return HostKeyAnswer::kChanged; }});
  EXPECT_EQ(session->LastEnd().reason, EndReason::kHostKeyChanged);
  EXPECT_EQ(session->LastEnd().detail, server.Fingerprint());
  EXPECT_EQ(server.Login(), "") << "nobody has logged in";
  EXPECT_EQ(watcher.connected, 0);
}

TEST_F(SshTest, TheNextAddressIsTriedWhereOneIsDead) {
  FaultySshServer server(SshFault::kNone);
  const auto resolver = [](const std::string&, const std::string& port) {
    Resolution all = ResolveHost("127.0.0.1", port);
    const Resolution dead = ResolveHost("::1", port);  // refuses: the server is on the other family
    const Resolution nobody = ResolveHost(kNobody, port);
    all.addresses.insert(all.addresses.begin(), nobody.addresses.begin(), nobody.addresses.end());
    all.addresses.insert(all.addresses.begin(), dead.addresses.begin(), dead.addresses.end());
    return all;
  };
  Connect(server, {.resolver = resolver, .patience = {.connect = std::chrono::milliseconds(1500)}});
  EXPECT_EQ(session->state, SessionState::kConnected) << session->LastEnd().detail;
  EXPECT_TRUE(Shows("hello over there"));
}

TEST_F(SshTest, HostsThatAreNoneAreTold) {
  testing::internal::CaptureStderr();
  for (const char* none : {"", "a@127.0.0.1", "-oProxyCommand=x"}) {
    session->ConnectWith(std::make_unique<SshTransport>(none));
    EXPECT_EQ(session->LastEnd().reason, EndReason::kResolveFailed) << none;
  }
  EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::StartsWith("Error connecting to localhost: "));
}

#ifdef __linux__
TEST_F(SshTest, TheUsersConfigurationLeadsNowhereElse) {
  ScratchFolder home;
  std::filesystem::create_directories(home.Path() / ".ssh");
  PutFile(home.Path() / ".ssh" / "config", "Host *\n  HostName 192.0.2.7\n  Port 9\n  ProxyCommand false\n");
  FaultySshServer server(SshFault::kNone);
  homeOfTest = home.Path().string();
  Connect(server);
  EXPECT_EQ(session->state, SessionState::kConnected) << session->LastEnd().detail;
  session->Disconnect();
  homeOfTest.clear();
  EXPECT_GT(homesTold, 0) << "the library asks elsewhere, and this test tells nothing";
  EXPECT_EQ(server.Login(), "bbs ");
}
#endif

}  // namespace
}  // namespace quillet
