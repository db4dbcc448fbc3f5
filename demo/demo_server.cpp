#include "demo/demo_server.h"

#include <algorithm>
#include <list>
#include <thread>

#include "core/endpoints.h"
#include "demo/client.h"
#include "demo/content_loader.h"
#include "demo/world.h"
#include "platform/socket.h"

namespace quillet {
namespace {

// Beyond any use of a program on loopback; keeps a runaway client from eating all threads.
constexpr std::size_t kMostClients = 128;
constexpr int kRetryMilliseconds = 50;

}  // namespace

void DemoOptions::UseNames(const Endpoints& endpoints) {
  if (!endpoints.mainHost.empty()) hostName = endpoints.mainHost;
  const std::string_view web = endpoints.Value("web/host");
  if (!web.empty()) webHost = web;
}

struct DemoServer::Impl {
  DemoOptions options;
  std::string error;
  std::unique_ptr<demo::World> world;
  demo::House house;
  StopSignal stop;
  Listener listener;
  std::list<demo::Client> clients;  // accepting thread only, until it is joined
  std::thread acceptor;

  void Start();
  void Accept();
};

void DemoServer::Impl::Start() {
  demo::Content content = demo::LoadContent(options.contentFolder);
  if (options.log)
    for (const std::string& problem : content.problems)
      options.log(problem);
  if (content.boards.empty() || content.users.empty()) {
    error = "no boards or no users in " + options.contentFolder.string();
    return;
  }
  world = std::make_unique<demo::World>(std::move(content));
  house = {options.hostName, options.webHost, options.contentFolder};
  if (!listener.Open(ResolvedAddress::Family::kIpv4, options.port)) {
    error = "cannot listen on port " + std::to_string(options.port) + ": " + listener.LastError();
    return;
  }
  acceptor = std::thread([this] { Accept(); });
}

void DemoServer::Impl::Accept() {
  std::uint32_t seed = options.seed;
  while (!stop.IsSet()) {
    auto socket = listener.Accept(stop);
    if (!socket) {
      stop.WaitFor(kRetryMilliseconds);  // out of handles, perhaps not for long
      continue;
    }
    clients.remove_if([](const demo::Client& client) { return client.Finished(); });
    if (clients.size() >= kMostClients) continue;  // closed at once
    clients.emplace_back(*world, house, std::move(socket),
                         demo::ClientOptions{options.writes, seed++, options.log});
  }
}

DemoServer::DemoServer(DemoOptions options) : impl_(std::make_unique<Impl>()) {
  impl_->options = std::move(options);
  impl_->Start();
}

DemoServer::~DemoServer() {
  impl_->stop.Set();
  if (impl_->acceptor.joinable()) impl_->acceptor.join();
  for (demo::Client& client : impl_->clients)
    client.Stop();
  impl_->clients.clear();
}

const std::string& DemoServer::Error() const {
  return impl_->error;
}

std::uint16_t DemoServer::Port() const {
  return impl_->listener.Port();
}

std::string DemoServer::Address() const {
  return "telnet://127.0.0.1:" + std::to_string(Port());
}

}  // namespace quillet
