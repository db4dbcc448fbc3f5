// One connected client: its stack of pages, its screen, and the two threads that serve it. Made by the
// server's accepting thread; Stop may be called from any thread, everything else runs on the client's own.
#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "demo/page.h"
#include "demo/terminal_writer.h"
#include "demo/wires/wire.h"
#include "demo/write_splitter.h"

namespace quillet::demo {

struct ClientOptions {
  DemoOptions::Writes writes = DemoOptions::Writes::kAsBbs;
  std::uint32_t seed = 1;
  std::function<void(std::string_view)> log;
};

class Client final : public PageHost {
 public:
  Client(World& world, const House& house, std::unique_ptr<Wire> wire, ClientOptions options);
  ~Client() override;  // stops and joins

  void Stop();
  bool Finished() const { return finished_; }

  World& TheWorld() override { return world_; }
  const House& TheHouse() const override { return house_; }
  const User& CurrentUser() const override { return user_; }
  std::string Address() const override { return "127.0.0.1"; }
  void Open(std::unique_ptr<Page> page) override;
  void CloseTop() override;
  void CloseToMenu() override;
  void LogIn(const User& user) override;
  void HangUp() override { hungUp_ = true; }
  void RingBell() override;
  void Refresh() override { writer_.Forget(); }
  std::set<std::string>& ReadArticles() override { return readArticles_; }

 private:
  void Run();
  void Serve();
  void Receive();
  void Handle(const Mailbox::Contents& contents);
  void OnKey(const Key& key);
  void ShowKickedOut();
  std::optional<Mailbox::Clock::time_point> Deadline() const;
  void OnTime();
  bool Show();
  void DrawPages(Canvas& canvas);
  bool Send(std::string_view bytes);
  void Log(const std::string& line) const;

  World& world_;
  const House& house_;
  std::unique_ptr<Wire> wire_;
  ClientOptions options_;
  StopSignal stop_;
  std::shared_ptr<Mailbox> mailbox_ = std::make_shared<Mailbox>();
  KeyDecoder decoder_;
  TerminalWriter writer_;
  WriteSplitter splitter_;
  std::vector<std::unique_ptr<Page>> pages_;
  std::vector<std::unique_ptr<Page>> closed_;  // until the present key has been handled
  std::deque<InstantMessage> messages_;        // the first one lies over the page
  bool messageIsNew_ = false;
  std::optional<Mailbox::Clock::time_point> systemMessage_;  // when the system will greet this user
  User user_;
  int session_ = 0;
  std::set<std::string> readArticles_;
  bool hungUp_ = false;
  std::atomic<bool> finished_{false};
  std::thread thread_;
};

}  // namespace quillet::demo
