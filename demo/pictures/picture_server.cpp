#include "demo/pictures/picture_server.h"

#include <algorithm>
#include <atomic>
#include <list>
#include <thread>

#include "demo/pictures/picture_client.h"
#include "demo/pictures/picture_table.h"
#include "platform/socket.h"

namespace quillet::demo {
namespace {

// More than a browser opens; whoever comes beyond them is sent away.
constexpr std::size_t kMostVisitors = 64;
constexpr int kRetryMs = 50;

}  // namespace

struct PictureServer::Impl {
  explicit Impl(const std::filesystem::path& folder) : table(folder) {}

  struct Visitor {
    std::unique_ptr<Socket> socket;
    std::atomic<bool> isGone{false};
    std::thread thread;
  };

  const PictureTable table;
  std::string error;
  StopSignal stop;
  Listener listener;
  std::list<Visitor> visitors;  // the acceptor's, until it has ended
  std::thread acceptor;

  void Accept();
  void Serve(std::unique_ptr<Socket> socket);
  void SendOffGone();
};

void PictureServer::Impl::Accept() {
  while (!stop.IsSet()) {
    if (auto socket = listener.Accept(stop))
      Serve(std::move(socket));
    else
      stop.WaitFor(kRetryMs);  // out of handles, perhaps not for long
  }
}

void PictureServer::Impl::Serve(std::unique_ptr<Socket> socket) {
  SendOffGone();
  if (visitors.size() >= kMostVisitors) return;
  Visitor& visitor = visitors.emplace_back();
  visitor.socket = std::move(socket);
  visitor.thread = std::thread([this, &visitor] {
    PictureClient(*visitor.socket, table, stop).Serve();
    visitor.socket->Close();
    visitor.isGone = true;
  });
}

void PictureServer::Impl::SendOffGone() {
  visitors.remove_if([](Visitor& visitor) {
    if (!visitor.isGone) return false;
    visitor.thread.join();
    return true;
  });
}

PictureServer::PictureServer(const std::filesystem::path& folder, std::uint16_t port)
    : impl_(std::make_unique<Impl>(folder)) {
  if (!impl_->listener.Open(ResolvedAddress::Family::kIpv4, port)) {
    impl_->error = "cannot listen on port " + std::to_string(port) + ": " + impl_->listener.LastError();
    return;
  }
  impl_->acceptor = std::thread([impl = impl_.get()] { impl->Accept(); });
}

PictureServer::~PictureServer() {
  impl_->stop.Set();
  if (impl_->acceptor.joinable()) impl_->acceptor.join();
  for (Impl::Visitor& visitor : impl_->visitors)
    visitor.thread.join();
}

const std::string& PictureServer::Error() const {
  return impl_->error;
}

std::uint16_t PictureServer::Port() const {
  return impl_->error.empty() ? impl_->listener.Port() : std::uint16_t{0};
}

std::vector<std::string> PictureServer::Hosts() const {
  return impl_->table.Hosts();
}

const std::vector<std::string>& PictureServer::Problems() const {
  return impl_->table.Problems();
}

}  // namespace quillet::demo
