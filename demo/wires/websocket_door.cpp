#include "demo/wires/websocket_door.h"

#include <array>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/ssl.hpp>
#include <boost/beast/websocket.hpp>
#include <boost/beast/websocket/ssl.hpp>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

#include "demo/wires/certificate_authority.h"

namespace quillet::demo {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using asio::ip::tcp;
using boost::system::error_code;

constexpr const char* kPath = "/bbs";
constexpr std::size_t kMostWaiting = 1 << 16;
constexpr std::chrono::milliseconds kStopPoll{50};
constexpr std::chrono::seconds kGoodbye{1};

// One client. All that happens on the connection happens on one thread of the wire's own, because neither TLS
// nor the WebSocket may be used by two at once; whoever receives or sends waits for it.
class WebSocketWire final : public Wire {
 public:
  WebSocketWire(std::unique_ptr<asio::io_context> context, tcp::socket socket,
                std::shared_ptr<asio::ssl::context> tls)
      : context_(std::move(context)), tls_(std::move(tls)), stream_(std::move(socket), *tls_) {}
  ~WebSocketWire() override { EndThread(); }

  bool Open(const StopSignal& stop) override;
  std::size_t Receive(std::span<std::uint8_t> buffer, const StopSignal& stop) override;
  bool Send(std::span<const std::uint8_t> bytes, const StopSignal& stop) override;
  void Close() override;

 private:
  // On the wire's thread.
  void ReadRequest();
  void Answer();
  void Refuse(http::status status);
  void Accept();
  void Read();
  void OnRead(error_code error, std::size_t count);

  void EndThread();
  void Finish();
  void Note(const std::function<void()>& change);
  // Waits until the condition holds; false when the signal was set before that.
  bool Wait(std::unique_lock<std::mutex>& lock, const StopSignal& stop,
            const std::function<bool()>& condition);

  std::unique_ptr<asio::io_context> context_;
  std::shared_ptr<asio::ssl::context> tls_;
  websocket::stream<beast::ssl_stream<beast::tcp_stream>> stream_;
  beast::flat_buffer requestBuffer_;
  http::request<http::string_body> request_;
  http::response<http::string_body> refusal_;
  std::array<std::uint8_t, 16384> block_{};
  std::thread thread_;

  std::mutex mutex_;
  std::condition_variable changed_;
  // Guarded by mutex_.
  std::string arrived_;
  bool opened_ = false;
  bool ended_ = false;   // nothing comes or goes any more
  bool paused_ = false;  // reading waits until what has arrived is taken
  bool written_ = false;
  bool closed_ = false;
};

bool WebSocketWire::Open(const StopSignal& stop) {
  thread_ = std::thread([this] {
    beast::get_lowest_layer(stream_).socket().set_option(tcp::no_delay(true));
    stream_.next_layer().async_handshake(asio::ssl::stream_base::server, [this](error_code error) {
      if (error) return Finish();
      ReadRequest();
    });
    context_->run();
    Finish();
  });
  std::unique_lock lock(mutex_);
  return Wait(lock, stop, [this] { return opened_ || ended_; }) && opened_;
}

void WebSocketWire::ReadRequest() {
  http::async_read(stream_.next_layer(), requestBuffer_, request_, [this](error_code error, std::size_t) {
    if (error) return Finish();
    Answer();
  });
}

void WebSocketWire::Answer() {
  if (request_.target() != kPath) return Refuse(http::status::not_found);
  if (!websocket::is_upgrade(request_)) return Refuse(http::status::upgrade_required);
  if (request_[http::field::origin].empty()) return Refuse(http::status::forbidden);
  Accept();
}

void WebSocketWire::Refuse(http::status status) {
  refusal_ = {status, request_.version()};
  refusal_.set(http::field::content_type, "text/plain");
  refusal_.body() = std::string(http::obsolete_reason(status)) + "\n";
  refusal_.keep_alive(false);
  refusal_.prepare_payload();
  http::async_write(stream_.next_layer(), refusal_, [this](error_code, std::size_t) { Finish(); });
}

void WebSocketWire::Accept() {
  stream_.set_option(websocket::stream_base::timeout::suggested(beast::role_type::server));
  stream_.binary(true);
  stream_.async_accept(request_, [this](error_code error) {
    if (error) return Finish();
    Note([this] { opened_ = true; });
    Read();
  });
}

void WebSocketWire::Read() {
  stream_.async_read_some(asio::buffer(block_),
                          [this](error_code error, std::size_t count) { OnRead(error, count); });
}

void WebSocketWire::OnRead(error_code error, std::size_t count) {
  if (error) return Finish();
  bool full = false;
  Note([&] {
    arrived_.append(reinterpret_cast<const char*>(block_.data()), count);
    full = paused_ = arrived_.size() > kMostWaiting;
  });
  if (!full) Read();
}

std::size_t WebSocketWire::Receive(std::span<std::uint8_t> buffer, const StopSignal& stop) {
  std::unique_lock lock(mutex_);
  if (!Wait(lock, stop, [this] { return !arrived_.empty() || ended_; })) return 0;
  const std::size_t count = arrived_.copy(reinterpret_cast<char*>(buffer.data()), buffer.size());
  arrived_.erase(0, count);
  if (paused_ && arrived_.empty()) {
    paused_ = false;
    asio::post(*context_, [this] { Read(); });
  }
  return count;
}

bool WebSocketWire::Send(std::span<const std::uint8_t> bytes, const StopSignal& stop) {
  if (bytes.empty()) return true;
  // A send that is given up must not take the caller's bytes with it.
  const auto copy = std::make_shared<std::string>(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  std::unique_lock lock(mutex_);
  if (ended_) return false;
  written_ = false;
  asio::post(*context_, [this, copy] {
    stream_.async_write(asio::buffer(*copy), [this, copy](error_code error, std::size_t) {
      if (error) return Finish();
      Note([this] { written_ = true; });
    });
  });
  return Wait(lock, stop, [this] { return written_ || ended_; }) && written_;
}

void WebSocketWire::Close() {
  std::unique_lock lock(mutex_);
  if (opened_ && !ended_) {
    asio::post(*context_, [this] {
      stream_.async_close(websocket::close_code::normal,
                          [this](error_code) { Note([this] { closed_ = true; }); });
    });
    changed_.wait_for(lock, kGoodbye, [this] { return closed_; });
  }
  lock.unlock();
  EndThread();
  error_code ignored;
  beast::get_lowest_layer(stream_).socket().close(ignored);
}

void WebSocketWire::EndThread() {
  context_->stop();
  if (thread_.joinable()) thread_.join();
}

void WebSocketWire::Finish() {
  Note([this] { ended_ = true; });
}

void WebSocketWire::Note(const std::function<void()>& change) {
  std::lock_guard lock(mutex_);
  change();
  changed_.notify_all();
}

bool WebSocketWire::Wait(std::unique_lock<std::mutex>& lock, const StopSignal& stop,
                         const std::function<bool()>& condition) {
  while (!condition()) {
    if (stop.IsSet()) return false;
    changed_.wait_for(lock, kStopPoll);
  }
  return true;
}

class WebSocketDoor final : public Door {
 public:
  explicit WebSocketDoor(const ServerCertificate& certificate)
      : tls_(std::make_shared<asio::ssl::context>(asio::ssl::context::tls_server)) {
    tls_->use_certificate_chain(asio::buffer(certificate.certificate));
    tls_->use_private_key(asio::buffer(certificate.key), asio::ssl::context::pem);
  }

  void Listen(std::uint16_t port) {
    const tcp::endpoint endpoint(asio::ip::address_v4::loopback(), port);
    acceptor_.open(endpoint.protocol());
    acceptor_.set_option(tcp::acceptor::reuse_address(true));
    acceptor_.bind(endpoint);
    acceptor_.listen();
    port_ = acceptor_.local_endpoint().port();
  }

  std::unique_ptr<Wire> Accept(const StopSignal& stop) override;
  std::uint16_t Port() const override { return port_; }
  std::string Address() const override { return "wss://127.0.0.1:" + std::to_string(port_) + kPath; }

 private:
  asio::io_context context_;
  std::shared_ptr<asio::ssl::context> tls_;
  tcp::acceptor acceptor_{context_};
  std::uint16_t port_ = 0;
};

std::unique_ptr<Wire> WebSocketDoor::Accept(const StopSignal& stop) {
  auto context = std::make_unique<asio::io_context>(1);
  tcp::socket socket(*context);
  bool done = false;
  error_code result;
  acceptor_.async_accept(socket, [&](error_code error) {
    result = error;
    done = true;
  });
  context_.restart();
  while (!done) {
    if (stop.IsSet()) {
      error_code ignored;
      acceptor_.cancel(ignored);
    }
    context_.run_one_for(kStopPoll);
  }
  if (result) return nullptr;
  return std::make_unique<WebSocketWire>(std::move(context), std::move(socket), tls_);
}

}  // namespace

OpenedWebSocketDoor OpenWebSocketDoor(std::uint16_t port) {
  const CertificateAuthority authority;
  const std::string what = "cannot listen on port " + std::to_string(port) + ": ";
  try {
    auto door = std::make_unique<WebSocketDoor>(authority.Issue());
    door->Listen(port);
    return {{std::move(door), {}}, authority.Certificate()};
  } catch (const boost::system::system_error& error) {
    return {{nullptr, what + error.what()}, {}};
  }
}

}  // namespace quillet::demo
