// What the three ways to a BBS cost, beside their libraries' own bare reading, on loopback.
//
//   transport_bench                all figures
//   transport_bench --rest S       processor time of each idle connection, S seconds long (60 unless said)
//   transport_bench --connects N   N connections one after the other over the three ways in turn, with
//   memory,
//                                  descriptors and threads on the way; for the sanitizers' builds
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "core/term_screen.h"
#include "core/term_session.h"
#include "core/transport/ssh_transport.h"
#include "core/transport/telnet_transport.h"
#include "core/transport/transport.h"
#include "core/transport/websocket_transport.h"

#include "bench/statistics.h"
#include "bench/streams.h"
#include "bench/transport/bare_readers.h"
#include "bench/transport/far_end.h"

namespace quillet {
namespace {

using Way = FarEnd::Way;

constexpr const char* kNames[FarEnd::kWays] = {"telnet", "SSH", "WebSocket"};
constexpr Way kAll[] = {FarEnd::kTelnet, FarEnd::kSsh, FarEnd::kWebSocket};

std::unique_ptr<Transport> MakeTransport(const FarEnd& farEnd, Way way) {
  const std::uint16_t port = farEnd.Port(way);
  if (way == FarEnd::kTelnet) return std::make_unique<TelnetTransport>("127.0.0.1", std::to_string(port));
  if (way == FarEnd::kSsh) return std::make_unique<SshTransport>("127.0.0.1", SshOptions{.port = port});
  return std::make_unique<WebSocketTransport>("127.0.0.1:" + std::to_string(port) + "/bbs",
                                              farEnd.Authority());
}

[[noreturn]] void GiveUp(const char* what) {
  std::fprintf(stderr, "transport_bench: %s\n", what);
  std::exit(1);
}

// ---- Bytes

// Takes the flood, into a screen or into nothing, and keeps the time from its first byte to its last.
class Sink {
 public:
  Sink(std::size_t size, bool feeds) : left_(size), feeds_(feeds) {}

  bool Take(std::span<const std::uint8_t> bytes) {
    if (begin_ == 0) begin_ = NowNs();
    if (feeds_) screen_.Feed(bytes);
    left_ -= std::min(left_, bytes.size());
    if (left_ == 0) end_ = NowNs();
    return left_ > 0;
  }
  double Seconds() const {
    if (end_ == 0) GiveUp("the flood ended too early");
    return static_cast<double>(end_ - begin_) / 1e9;
  }

 private:
  std::size_t left_;
  const bool feeds_;
  TermScreen screen_;
  std::int64_t begin_ = 0, end_ = 0;
};

class ReadingEvents : public TransportEvents {
 public:
  ReadingEvents(Transport& transport, Sink& sink) : transport_(transport), sink_(sink) {}
  void OnConnected(std::string_view /*peerAddress*/) override {
    const std::uint8_t wish = FarEnd::kFlood;
    transport_.Write({&wish, 1});
  }
  void OnReceived(std::span<const std::uint8_t> bytes) override {
    if (!sink_.Take(bytes)) transport_.Stop();
  }
  bool Pause(int /*milliseconds*/) override { return true; }
  void OnDebugLine(std::string_view /*line*/) override {}

 private:
  Transport& transport_;
  Sink& sink_;
};

double TransportSeconds(const FarEnd& farEnd, Way way, bool feeds) {
  Sink sink(farEnd.FloodSize(), feeds);
  const std::unique_ptr<Transport> transport = MakeTransport(farEnd, way);
  ReadingEvents events(*transport, sink);
  transport->Run(events);
  return sink.Seconds();
}

double BareSeconds(const FarEnd& farEnd, Way way, bool feeds) {
  Sink sink(farEnd.FloodSize(), feeds);
  const TakeBytes take = [&sink](std::span<const std::uint8_t> bytes) { return sink.Take(bytes); };
  const std::uint16_t port = farEnd.Port(way);
  if (way == FarEnd::kTelnet) ReadBareTelnet(port, FarEnd::kFlood, take);
  if (way == FarEnd::kSsh) ReadBareSsh(port, FarEnd::kFlood, take);
  if (way == FarEnd::kWebSocket) ReadBareWebSocket(port, farEnd.Authority(), FarEnd::kFlood, take);
  return sink.Seconds();
}

void PrintRates(const FarEnd& farEnd, Way way) {
  constexpr int kRounds = 7;
  std::printf("%-10s", kNames[way]);
  for (const bool feeds : {false, true}) {
    // By turns, so that what else the machine does falls on both.
    std::vector<double> ours, bare, shares;
    for (int round = 0; round < kRounds; ++round) {
      ours.push_back(TransportSeconds(farEnd, way, feeds));
      bare.push_back(BareSeconds(farEnd, way, feeds));
      shares.push_back(bare.back() / ours.back());
    }
    const double megabytes = static_cast<double>(farEnd.FloodSize()) / 1e6;
    std::printf("%s %6.0f MB/s, %.2f of its library's %6.0f", feeds ? "; into Feed" : " bytes alone",
                megabytes / PercentilesOf(ours).median, PercentilesOf(shares).median,
                megabytes / PercentilesOf(bare).median);
  }
  std::printf("\n");
}

// ---- Sessions

// Ends the program when there is no connection.
class BenchSession {
 public:
  BenchSession(const FarEnd& farEnd, Way way, char wish) {
    session_.ConnectWith(MakeTransport(farEnd, way));
    if (session_.state != SessionState::kConnected) GiveUp("no connection");
    session_.SendBytes(std::string(1, wish));
  }
  // Until the far end has answered the wish, which is the first that it sends.
  void WaitForAnswer() {
    for (int wait = 0; wait < 5000 && session_.receivedCount == 0; ++wait)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  TermSession& operator*() { return session_; }

 private:
  TermSession session_{SessionOptions{}};
};

void PrintKeys(FarEnd& farEnd, Way way) {
  constexpr std::size_t kKeys = 2000;
  farEnd.ForgetKeys();
  BenchSession session(farEnd, way, FarEnd::kKeys);
  session.WaitForAnswer();
  std::vector<std::int64_t> pressed;
  for (std::size_t key = 0; key < kKeys; ++key) {
    // Faster than a held-down key repeats, so that one may still be on its way when the next leaves.
    std::this_thread::sleep_for(std::chrono::milliseconds(3 + key % 5));
    pressed.push_back(NowNs());
    (*session).SendBytes(std::string(1, FarEnd::kKey));
  }
  for (int wait = 0; wait < 5000 && farEnd.Keys() < kKeys; ++wait)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  if (farEnd.Keys() < kKeys) GiveUp("a key was lost");
  std::vector<double> times;
  for (std::size_t key = 0; key < kKeys; ++key)
    times.push_back(static_cast<double>(farEnd.KeyTime(key) - pressed[key]) / 1e6);
  const Percentiles percentiles = PercentilesOf(times);
  std::printf("%-10s %.3f ms, 99th percentile %.3f, at most %.3f\n", kNames[way], percentiles.median,
              percentiles.most, percentiles.highest);
}

double ProcessorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void PrintRest(const FarEnd& farEnd, Way way, int seconds) {
  BenchSession session(farEnd, way, FarEnd::kRest);
  std::this_thread::sleep_for(std::chrono::seconds(1));
  const double before = ProcessorSeconds();
  std::this_thread::sleep_for(std::chrono::seconds(seconds));
  const double used = ProcessorSeconds() - before;
  std::printf("%-10s %.1f ms of processor time a minute, %.3f %% of a core\n", kNames[way],
              used * 60'000 / seconds, used * 100 / seconds);
}

// ---- Growth

std::size_t CountIn(const char* folder) {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder))
    ++count;
  return count;
}

std::string ResidentMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("VmRSS:")) return line.substr(line.find_first_not_of(" \t", 6));
  return "?";
}

void ConnectOften(const FarEnd& farEnd, int times) {
  for (int time = 1; time <= times; ++time) {
    for (const Way way : kAll) {
      if (time % FarEnd::kWays != way % FarEnd::kWays) continue;
      BenchSession session(farEnd, way, time % 2 == 0 ? FarEnd::kRest : FarEnd::kFlood);
    }
    if (time % (times / 5 > 0 ? times / 5 : 1) != 0) continue;
    // The library's clients are taken down in the background.
    std::this_thread::sleep_for(std::chrono::seconds(2));
    std::printf("after %4d connections: %s resident, %zu descriptors, %zu threads\n", time,
                ResidentMemory().c_str(), CountIn("/proc/self/fd"), CountIn("/proc/self/task"));
  }
}

void PrintAll(FarEnd& farEnd, int restSeconds) {
  std::printf("Reading on loopback:\n");
  for (const Way way : kAll)
    PrintRates(farEnd, way);
  std::printf("From a key to the server:\n");
  for (const Way way : kAll)
    PrintKeys(farEnd, way);
  std::printf("A connection at rest:\n");
  for (const Way way : kAll)
    PrintRest(farEnd, way, restSeconds);
}

int Run(int count, char** arguments) {
  constexpr std::size_t kFlood = 48 << 20;
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  LoadTablesOrExit();
  const std::string_view option = count > 1 ? arguments[1] : "";
  const int number = count > 2 ? std::atoi(arguments[2]) : 0;
  FarEnd farEnd(ScreenStream(1 << 20).bytes, option == "--connects" ? 100'000 : kFlood);
  const SshLibrary library;
  if (option == "--connects")
    ConnectOften(farEnd, number > 0 ? number : 500);
  else if (option == "--rest")
    for (const Way way : kAll)
      PrintRest(farEnd, way, number > 0 ? number : 60);
  else
    PrintAll(farEnd, 20);
  return 0;
}

}  // namespace
}  // namespace quillet

int main(int count, char** arguments) {
  return quillet::Run(count, arguments);
}
