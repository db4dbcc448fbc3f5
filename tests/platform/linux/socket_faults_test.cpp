// What the system's sockets do when things go wrong, as far as it tells.
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/socket.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

using Result = Socket::Result;

struct SocketFaultTest : testing::Test {
  SocketFaultTest() {
    EXPECT_TRUE(listener.Open(ResolvedAddress::Family::kIpv4, 0));
    EXPECT_EQ(client.Connect(ResolveHost("127.0.0.1", std::to_string(listener.Port())).addresses.at(0), stop),
              Result::kOk);
  }
  StopSignal stop;
  Listener listener;
  Socket client;
};

TEST_F(SocketFaultTest, SendingToAPeerThatHasLeftIsNoError) {
  listener.Accept(stop)->Shutdown();
  const std::vector<std::uint8_t> key(4, 'k');
  std::size_t count = 0;
  Result result = Result::kOk;
  ASSERT_TRUE(WaitUntil([&] { return (result = client.Send(key, count, stop)) != Result::kOk; }));
  EXPECT_EQ(result, Result::kClosed);
  std::vector<std::uint8_t> buffer(10);
  EXPECT_EQ(client.Receive(buffer, count, stop), Result::kClosed);
}

// Takes every handle that the process may still open, until it dies.
class AllHandles {
 public:
  AllHandles() {
    getrlimit(RLIMIT_NOFILE, &before_);
    const int free = dup(STDERR_FILENO);
    close(free);
    rlimit none = before_;
    none.rlim_cur = static_cast<rlim_t>(free);
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~AllHandles() { setrlimit(RLIMIT_NOFILE, &before_); }

 private:
  rlimit before_{};
};

TEST_F(SocketFaultTest, AListenerWithoutHandlesWaitsForOne) {
  std::unique_ptr<Socket> accepted;
  std::atomic<bool> begun{false};
  std::atomic<bool> returned{false};
  // Started while there are handles: the sanitizers' own checks need some too.
  std::thread acceptor([&] {
    begun.wait(false);
    accepted = listener.Accept(stop);
    returned = true;
  });
  auto shortage = std::make_unique<AllHandles>();
  EXPECT_EQ(dup(STDERR_FILENO), -1) << "there is a handle left";
  begun = true;
  begun.notify_one();
  EXPECT_FALSE(WaitUntil([&] { return returned.load(); }, std::chrono::milliseconds(100)));
  shortage.reset();
  acceptor.join();
  EXPECT_TRUE(accepted);
}

}  // namespace
}  // namespace quillet
