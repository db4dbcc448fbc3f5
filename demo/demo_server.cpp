#include "demo/demo_server.h"

#include <algorithm>
#include <list>
#include <mutex>
#include <thread>
#include <vector>

#include "core/endpoints.h"
#include "demo/client.h"
#include "demo/content_loader.h"
#include "demo/pictures/picture_server.h"
#include "demo/wires/ssh_door.h"
#include "demo/wires/telnet_door.h"
#include "demo/wires/websocket_door.h"
#include "demo/world.h"

namespace quillet {
namespace {

// Beyond any use of a program on loopback; keeps a runaway client from eating all threads.
constexpr std::size_t kMostClients = 128;
constexpr int kRetryMilliseconds = 50;
constexpr const char* kPicturesFolder = "pictures";  // of the content

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
  std::unique_ptr<demo::Door> telnet;
  std::unique_ptr<demo::Door> ssh;
  std::unique_ptr<demo::Door> webSocket;
  std::string authority;
  std::unique_ptr<demo::PictureServer> pictures;
  std::mutex clientsLock;
  std::list<demo::Client> clients;  // guarded by clientsLock
  std::uint32_t nextSeed = 0;       // guarded by clientsLock
  std::vector<std::thread> acceptors;

  void Start();
  void OpenSsh(std::uint16_t port);
  void OpenWebSocket(std::uint16_t port);
  void OpenPictures(std::uint16_t port);
  void Listen(demo::OpenedDoor opened, std::unique_ptr<demo::Door>& door);
  void Accept(demo::Door& door);
  void Serve(std::unique_ptr<demo::Wire> wire);
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
  nextSeed = options.seed;
  Listen(demo::OpenTelnetDoor(options.port), telnet);
  if (options.sshPort) OpenSsh(*options.sshPort);
  if (options.webSocketPort) OpenWebSocket(*options.webSocketPort);
  if (options.picturePort) OpenPictures(*options.picturePort);
}

void DemoServer::Impl::OpenSsh(std::uint16_t port) {
  if (!ssh && error.empty()) Listen(demo::OpenSshDoor(port), ssh);
}

void DemoServer::Impl::OpenWebSocket(std::uint16_t port) {
  if (webSocket || !error.empty()) return;
  demo::OpenedWebSocketDoor door = demo::OpenWebSocketDoor(port);
  authority = std::move(door.authority);
  Listen(std::move(door.opened), webSocket);
}

void DemoServer::Impl::OpenPictures(std::uint16_t port) {
  const std::filesystem::path folder = options.contentFolder / kPicturesFolder;
  if (pictures || !error.empty() || !is_directory(folder)) return;
  pictures = std::make_unique<demo::PictureServer>(folder, port);
  if (options.log)
    for (const std::string& problem : pictures->Problems())
      options.log(problem);
  error = pictures->Error();
}

void DemoServer::Impl::Listen(demo::OpenedDoor opened, std::unique_ptr<demo::Door>& door) {
  if (!opened.door) {
    if (error.empty()) error = std::move(opened.error);
    return;
  }
  door = std::move(opened.door);
  acceptors.emplace_back([this, &door] { Accept(*door); });
}

void DemoServer::Impl::Accept(demo::Door& door) {
  while (!stop.IsSet()) {
    if (auto wire = door.Accept(stop))
      Serve(std::move(wire));
    else
      stop.WaitFor(kRetryMilliseconds);  // out of handles, perhaps not for long
  }
}

void DemoServer::Impl::Serve(std::unique_ptr<demo::Wire> wire) {
  std::lock_guard lock(clientsLock);
  clients.remove_if([](const demo::Client& client) { return client.Finished(); });
  if (clients.size() >= kMostClients) return;  // closed at once
  clients.emplace_back(*world, house, std::move(wire),
                       demo::ClientOptions{options.writes, nextSeed++, options.log});
}

DemoServer::DemoServer(DemoOptions options) : impl_(std::make_unique<Impl>()) {
  impl_->options = std::move(options);
  impl_->Start();
}

DemoServer::~DemoServer() {
  impl_->stop.Set();
  for (std::thread& acceptor : impl_->acceptors)
    acceptor.join();
  for (demo::Client& client : impl_->clients)
    client.Stop();
  impl_->clients.clear();
}

const std::string& DemoServer::Error() const {
  return impl_->error;
}

std::uint16_t DemoServer::Port() const {
  return impl_->telnet ? impl_->telnet->Port() : 0;
}

std::uint16_t DemoServer::SshPort() const {
  return impl_->ssh ? impl_->ssh->Port() : 0;
}

std::string DemoServer::SshAddress() const {
  return impl_->ssh ? impl_->ssh->Address() : std::string();
}

void DemoServer::OpenSsh() {
  impl_->OpenSsh(0);
}

void DemoServer::OpenWebSocket() {
  impl_->OpenWebSocket(0);
}

void DemoServer::OpenPictures() {
  impl_->OpenPictures(0);
}

std::vector<std::string> DemoServer::Addresses() const {
  std::vector<std::string> all;
  for (const demo::Door* door : {impl_->telnet.get(), impl_->ssh.get(), impl_->webSocket.get()})
    if (door != nullptr) all.push_back(door->Address());
  if (const std::uint16_t port = PicturePort(); port != 0)
    all.push_back("http://127.0.0.1:" + std::to_string(port));
  return all;
}

std::uint16_t DemoServer::PicturePort() const {
  return impl_->pictures ? impl_->pictures->Port() : std::uint16_t{0};
}

std::vector<std::string> DemoServer::PictureHosts() const {
  return impl_->pictures ? impl_->pictures->Hosts() : std::vector<std::string>();
}

std::string DemoServer::Address() const {
  return impl_->telnet ? impl_->telnet->Address() : std::string();
}

std::uint16_t DemoServer::WebSocketPort() const {
  return impl_->webSocket ? impl_->webSocket->Port() : 0;
}

std::string DemoServer::WebSocketAddress() const {
  return impl_->webSocket ? impl_->webSocket->Address() : std::string();
}

const std::string& DemoServer::CertificateAuthority() const {
  return impl_->authority;
}

}  // namespace quillet
