#include "core/transport/websocket_line.h"

#include <condition_variable>
#include <cpprest/containerstream.h>
#include <cpprest/ws_client.h>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <openssl/crypto.h>
#include <optional>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "core/transport/certificate_watch.h"

namespace quillet {
namespace {

namespace library = web::websockets::client;

constexpr const char* kOrigin = "app://quillet";
constexpr const char* kDefaultPort = "443";
// The library gives up every step of closing by itself, and after a minute the last of them.
constexpr std::chrono::minutes kLongestGoodbye{1};
// Of a client that never came to be connected there may be nothing to close, and then nobody says so.
constexpr std::chrono::seconds kFailedGoodbye{1};

// ---- Threads

// The library's base class has no virtual destructor; nothing is destroyed through it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// Runs a continuation at once, on whichever thread has completed its task: so the next message is asked for
// before the library has looked at the one after it, and none is left in its queue when it closes.
class CallInPlace final : public pplx::scheduler_interface {
 public:
  virtual ~CallInPlace() = default;
  void schedule(pplx::TaskProc_t task, void* argument) override { task(argument); }
};

pplx::task_options InPlace() {
  static const auto* scheduler = new std::shared_ptr<pplx::scheduler_interface>(new CallInPlace);
  return {*scheduler};
}

// Where the library runs its tasks. A task that takes a client down waits for that client's own thread, which
// a peer that stays silent and does not go can hold for as long as it likes: so there is always one thread
// more than are held. Nobody waits for any of them; the library's own pool is forty that the program's end
// waits for.
class TaskThreads final : public pplx::scheduler_interface {
 public:
  virtual ~TaskThreads() = default;
  void schedule(pplx::TaskProc_t task, void* argument) override {
    std::lock_guard lock(mutex_);
    tasks_.push_back({task, argument});
    if (tasks_.size() > idle_) Grow();
    changed_.notify_one();
  }

 private:
  struct Task {
    pplx::TaskProc_t run;
    void* argument;
  };

  void Grow() {
    try {
      std::thread([this] { Work(); }).detach();
    } catch (const std::system_error&) {
      // No thread to be had: one of the others will come to it.
    }
  }

  void Work() {
    std::unique_lock lock(mutex_);
    while (idle_ < kMostIdle) {
      ++idle_;
      changed_.wait(lock, [this] { return !tasks_.empty(); });
      --idle_;
      const Task task = tasks_.front();
      tasks_.pop_front();
      lock.unlock();
      task.run(task.argument);
      lock.lock();
    }
  }

  static constexpr std::size_t kMostIdle = 4;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<Task> tasks_;
  std::size_t idle_ = 0;
};

#pragma GCC diagnostic pop

// A thread of the library's may still be in the middle of TLS when the program ends, so what TLS uses is not
// taken down then. The first word on that is the one that counts: before main.
[[maybe_unused]] const int tlsStays = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);

void GiveLibraryThreads() {
  static std::once_flag once;
  std::call_once(once, [] {
    static const auto* threads = new std::shared_ptr<pplx::scheduler_interface>(new TaskThreads);
    try {
      pplx::set_ambient_scheduler(*threads);
    } catch (const std::exception&) {
      // Somebody else in this program has chosen the threads already.
    }
  });
}

// ---- Words

bool IsTimeout(const std::error_code& code) {
  // The library's own enumerations are in no public header.
  const std::string words = code.message();
  return words == "Timer Expired" || words.find("timed out") != std::string::npos;
}

std::string Detail(const std::error_code& code) {
  // What the library has for everything that the system says of a socket tells nobody anything.
  const std::string words = code ? code.message() : std::string();
  return words == "Underlying Transport Error" ? std::string() : words;
}

TransportEnd EndOfAttempt(const std::error_code& code, const CertificateWatch& certificate) {
  using Finding = CertificateWatch::Finding;
  const bool timeout = IsTimeout(code);
  const std::string detail = Detail(code);
  switch (certificate.Found()) {
    case Finding::kUntrusted:
      return {EndReason::kCertificateUntrusted, certificate.Detail()};
    case Finding::kWrongName:
      return {EndReason::kCertificateWrongName, certificate.Detail()};
    case Finding::kExpired:
      return {EndReason::kCertificateExpired, certificate.Detail()};
    case Finding::kGood:
      return {timeout ? EndReason::kGatewaySilent : EndReason::kGatewayRefused, detail};
    case Finding::kNotAsked:
      break;
  }
  const bool inHandshake = std::string_view(code.category().name()).ends_with(".socket");
  if (!inHandshake) return {EndReason::kGatewayUnreachable, detail};
  return {timeout ? EndReason::kGatewaySilent : EndReason::kNotSecure, detail};
}

TransportEnd EndOfConnection(const std::error_code& code) {
  // With a goodbye, or without one but in good order.
  if (!code || code.message() == "End of File") return {EndReason::kClosedByPeer, {}};
  return {EndReason::kReadFailed, Detail(code)};
}

// The error of the exception that is being handled.
std::error_code CurrentError() {
  try {
    throw;
  } catch (const library::websocket_exception& error) {
    return error.error_code();
  } catch (const std::system_error& error) {
    return error.code();
  } catch (...) {
    return std::make_error_code(std::errc::io_error);
  }
}

std::string Payload(const library::websocket_incoming_message& message) {
  std::string bytes(message.length(), '\0');
  auto buffer = message.body().streambuf();
  // The whole of it is in memory.
  bytes.resize(buffer.scopy(reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size()));
  return bytes;
}

}  // namespace

WebSocketAddress ReadWebSocketAddress(const std::string& text) {
  WebSocketAddress address;
  try {
    const web::uri uri(utility::conversions::to_string_t(text));
    address.host = utility::conversions::to_utf8string(uri.host());
    if (address.host.size() >= 2 && address.host.front() == '[')
      address.host = address.host.substr(1, address.host.size() - 2);
    address.port = uri.port() > 0 ? std::to_string(uri.port()) : kDefaultPort;
    if (address.host.empty() || !uri.fragment().empty()) address.fault = text;
  } catch (const std::exception& error) {
    address.fault = error.what();
  }
  return address;
}

// ---- The library's client, for as long as it has something to do

struct WebSocketLine::Impl : std::enable_shared_from_this<Impl> {
  explicit Impl(std::shared_ptr<WebSocketExchange> shared) : exchange(std::move(shared)) {}

  void Begin(const std::string& uri, const std::string& authority);
  void Listen();
  void OnMessage(const pplx::task<library::websocket_incoming_message>& task);
  void OnConnected(const pplx::task<void>& task);
  void OnEnd(const std::error_code& code);
  void Send(const library::websocket_outgoing_message& message, const std::function<void(bool taken)>& done);
  void Retire();
  // On a thread of its own: waits until the library needs its client no more.
  void Reap();
  std::shared_ptr<library::websocket_client> Client();

  const std::shared_ptr<WebSocketExchange> exchange;
  const std::shared_ptr<CertificateWatch> certificate = std::make_shared<CertificateWatch>();
  std::mutex mutex;
  std::shared_ptr<library::websocket_client> client;  // guarded by mutex
  bool connectDone = false;                           // guarded by mutex
  bool opened = false;                                // guarded by mutex
  bool retired = false;                               // the owner's thread
  std::optional<std::error_code> early;               // an end that came before connectDone; guarded by mutex
};

void WebSocketLine::Impl::Begin(const std::string& uri, const std::string& authority) {
  library::websocket_client_config config;
  config.headers().add(U("Origin"), utility::conversions::to_string_t(std::string(kOrigin)));
  config.set_ssl_context_callback([watch = certificate, authority](boost::asio::ssl::context& context) {
    if (!authority.empty()) context.add_certificate_authority(boost::asio::buffer(authority));
    watch->Attach(context.native_handle());
  });
  const auto made = std::make_shared<library::websocket_client>(std::move(config));
  {
    std::lock_guard lock(mutex);
    client = made;
  }
  Listen();
  made->connect(web::uri(utility::conversions::to_string_t(uri)))
      .then([self = shared_from_this()](const pplx::task<void>& task) { self->OnConnected(task); },
            InPlace());
}

void WebSocketLine::Impl::Listen() {
  const auto receiver = Client();
  if (!receiver) return;
  receiver->receive().then(
      [self = shared_from_this()](const pplx::task<library::websocket_incoming_message>& task) {
        self->OnMessage(task);
      },
      InPlace());
}

void WebSocketLine::Impl::OnMessage(const pplx::task<library::websocket_incoming_message>& task) {
  try {
    const library::websocket_incoming_message message = task.get();
    const library::websocket_message_type type = message.message_type();
    if (type == library::websocket_message_type::binary_message ||
        type == library::websocket_message_type::text_message)
      exchange->PutBytes(Payload(message));
    else
      exchange->PutSignOfLife();
    Listen();
  } catch (...) {
    OnEnd(CurrentError());
  }
}

void WebSocketLine::Impl::OnConnected(const pplx::task<void>& task) {
  std::optional<TransportEnd> end;
  try {
    task.get();
    exchange->PutOpened();
    std::lock_guard lock(mutex);
    connectDone = opened = true;
    if (early) end = EndOfConnection(*early);
  } catch (...) {
    end = EndOfAttempt(CurrentError(), *certificate);
    std::lock_guard lock(mutex);
    connectDone = true;
  }
  if (end) exchange->PutEnd(*end);
  exchange->PutConnectDone();
}

void WebSocketLine::Impl::OnEnd(const std::error_code& code) {
  {
    std::lock_guard lock(mutex);
    if (!connectDone) {
      early = code;  // the task of connecting knows better what it means
      return;
    }
    if (!opened) return;
  }
  exchange->PutEnd(EndOfConnection(code));
}

void WebSocketLine::Impl::Send(const library::websocket_outgoing_message& message,
                               const std::function<void(bool taken)>& done) {
  const auto sender = Client();
  if (!sender) return done(false);
  try {
    sender->send(message).then(
        [done](const pplx::task<void>& task) {
          bool taken = true;
          try {
            task.get();
          } catch (...) {
            taken = false;
          }
          done(taken);
        },
        InPlace());
  } catch (const std::exception&) {
    done(false);
  }
}

void WebSocketLine::Impl::Retire() {
  if (std::exchange(retired, true)) return;
  exchange->Stop();
  try {
    std::thread([self = shared_from_this()] { self->Reap(); }).detach();
  } catch (const std::system_error&) {
    // No thread to be had: the client stays, for its destructor would wait on this one.
    new std::shared_ptr<Impl>(shared_from_this());
  }
}

void WebSocketLine::Impl::Reap() {
  exchange->WaitConnectDone();
  std::shared_ptr<library::websocket_client> last;
  bool hasOpened = false;
  {
    std::lock_guard lock(mutex);
    last = client;
    hasOpened = opened;
  }
  if (!last) return;
  try {
    last->close().then(
        [to = exchange](const pplx::task<void>& task) {
          try {
            task.get();
          } catch (...) {
            // Closed all the same.
          }
          to->PutClosed();
        },
        InPlace());
    exchange->WaitClosed(hasOpened ? WebSocketExchange::Patience(kLongestGoodbye) : kFailedGoodbye);
  } catch (const std::exception&) {
    // Then its destructor closes it.
  }
  std::lock_guard lock(mutex);
  client.reset();
}

std::shared_ptr<library::websocket_client> WebSocketLine::Impl::Client() {
  std::lock_guard lock(mutex);
  return client;
}

// ---- The line

WebSocketLine::WebSocketLine(const std::string& uri, const std::string& authority,
                             std::shared_ptr<WebSocketExchange> exchange)
    : impl_(std::make_shared<Impl>(std::move(exchange))) {
  GiveLibraryThreads();
  try {
    impl_->Begin(uri, authority);
  } catch (const std::exception& error) {
    impl_->exchange->PutEnd({EndReason::kGatewayUnreachable, error.what()});
    impl_->exchange->PutConnectDone();
  }
}

WebSocketLine::~WebSocketLine() {
  impl_->Retire();
}

bool WebSocketLine::Send(std::span<const std::uint8_t> bytes) {
  concurrency::streams::container_buffer<std::vector<std::uint8_t>> buffer(
      std::vector<std::uint8_t>(bytes.begin(), bytes.end()), std::ios_base::in);
  library::websocket_outgoing_message message;
  message.set_binary_message(buffer.create_istream(), bytes.size());
  impl_->Send(message, [exchange = impl_->exchange](bool taken) { exchange->PutSent(taken); });
  return impl_->exchange->WaitSent();
}

void WebSocketLine::Ping() {
  library::websocket_outgoing_message message;
  message.set_ping_message();
  impl_->Send(message, [](bool) {});
}

void WebSocketLine::Close(std::chrono::milliseconds patience) {
  impl_->Retire();
  impl_->exchange->WaitClosed(patience);
}

}  // namespace quillet
