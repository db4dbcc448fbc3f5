#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "core/term_session.h"
#include "core/transport/replay_transport.h"
#include "tests/support/fake_watcher.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

// Takes a replay down as it comes; can stop it after so many bytes.
class Recorder : public TransportEvents {
 public:
  void OnConnected(std::string_view) override { ++connected; }
  void OnReceived(std::span<const std::uint8_t> bytes) override {
    received.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    ++pieces;
  }
  bool Pause(int) override { return received.size() < stopAfter; }
  void OnDebugLine(std::string_view) override {}

  int connected = 0;
  int pieces = 0;
  std::string received;
  std::size_t stopAfter = static_cast<std::size_t>(-1);
};

class ReplayTest : public testing::Test {
 protected:
  ReplayTest() {
    std::mt19937 random(7);
    for (int i = 0; i < 50000; ++i)
      recording_ += static_cast<char>(random());
    std::ofstream(file_, std::ios::binary) << recording_;
  }
  ScratchFolder folder_;
  std::filesystem::path file_ = folder_.Path() / "recording";
  std::string recording_;
};

TEST_F(ReplayTest, EveryByteIsShownAtAnySpeed) {
  for (const std::uint32_t speed : {0u, 200000u, 4000000000u}) {
    Recorder recorder;
    const TransportEnd end = ReplayTransport(file_, speed).Run(recorder);
    EXPECT_EQ(end.reason, EndReason::kEndOfRecording) << speed;
    EXPECT_EQ(recorder.connected, 1);
    EXPECT_GE(recorder.pieces, 3) << "a piece is no longer than a read";
    EXPECT_TRUE(recorder.received == recording_) << speed;
  }
}

TEST_F(ReplayTest, TheSessionsStopEndsASlowReplay) {
  Recorder recorder;
  recorder.stopAfter = 1;
  EXPECT_EQ(ReplayTransport(file_, 1000).Run(recorder).reason, EndReason::kClosedByUser);
  EXPECT_LT(recorder.received.size(), recording_.size());

  TermSession session({});
  session.ConnectWith(std::make_unique<ReplayTransport>(file_, 1));
  EXPECT_EQ(session.state, SessionState::kConnected);
  session.SendBytes("goes nowhere");
  session.Disconnect();
  EXPECT_EQ(session.LastEnd().reason, EndReason::kClosedByUser);
}

TEST_F(ReplayTest, WhatCannotBeReadIsNamed) {
  std::vector<std::filesystem::path> paths = {folder_.Path() / "missing", folder_.Path()};
  if (std::filesystem::is_character_file("/dev/zero")) paths.emplace_back("/dev/zero");
  for (const auto& path : paths) {
    FakeWatcher watcher;
    SessionOptions options;
    options.watcher = &watcher;
    TermSession session(options);
    session.ConnectWith(std::make_unique<ReplayTransport>(path, 0));
    EXPECT_EQ(session.state, SessionState::kClosed);
    EXPECT_EQ(session.LastEnd().reason, EndReason::kConnectFailed);
    EXPECT_NE(session.LastEnd().detail.find(path.filename().string()), std::string::npos);
    EXPECT_EQ(watcher.connected, 0);
    EXPECT_EQ(watcher.disconnected, 1);
  }
}

}  // namespace
}  // namespace quillet
