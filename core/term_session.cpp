#include "core/term_session.h"

#include <chrono>
#include <system_error>
#include <utility>

#include "core/key_sequence.h"
#include "core/session_link.h"
#include "core/transport_factory.h"
#include "platform/clock.h"

namespace quillet {
namespace {

constexpr std::chrono::milliseconds kIdleInterval{10};

// Ten Delete keys, so far apart, open a session: a greeting that waits for any key is passed by them, and
// what a prompt already holds is emptied.
constexpr int kOpeningKeys = 10;
constexpr int kOpeningKeyInterval = 10;  // milliseconds

// Host numbers, above the base of the BBS's server network, up to which a server is the main BBS's, or the
// service's at all.
constexpr std::uint32_t kLastMainServer = 11;
constexpr std::uint32_t kLastServer = 12;

bool Contains(std::string_view text, std::string_view part) {
  return !part.empty() && text.find(part) != std::string_view::npos;
}

// Notes a thread for as long as it is inside.
class Presence {
 public:
  explicit Presence(std::atomic<std::thread::id>& place) : place_(place) {
    place_ = std::this_thread::get_id();
  }
  ~Presence() { place_ = std::thread::id{}; }
  Presence(const Presence&) = delete;
  Presence& operator=(const Presence&) = delete;

 private:
  std::atomic<std::thread::id>& place_;
};

}  // namespace

TermSession::TermSession(SessionOptions options) : options_(std::move(options)) {
  screen.SetWatcher(options_.watcher);
  screen.notifyWindow = options_.notify;
  live.Publish(screen);
}

TermSession::~TermSession() {
  Disconnect();
}

// ---- Beginning

void TermSession::StartConnect(std::string_view address, const ConnectTraits& traits) {
  if (CalledFromInside()) return;
  std::lock_guard lock(lifecycleLock_);
  const ParsedAddress parsed = ParseSiteAddress(address);
  EndLink();
  ResetForAttempt(parsed.address, traits);
  if (parsed.error == AddressError::kUnknownScheme) return Fail(EndReason::kUnknownScheme, {});
  if (parsed.error == AddressError::kTooLong) return Fail(EndReason::kAddressTooLong, {});
  RecogniseHost();
  std::unique_ptr<Transport> transport;
  try {
    transport = MakeTransport(parsed.address, traits.hostKey);
  } catch (const std::system_error& error) {
    return Fail(EndReason::kConnectFailed, error.what());
  }
  Begin(std::move(transport));
}

void TermSession::StartConnectWith(std::unique_ptr<Transport> transport, const ConnectTraits& traits) {
  if (CalledFromInside()) return;
  std::lock_guard lock(lifecycleLock_);
  EndLink();
  ResetForAttempt({}, traits);
  Begin(std::move(transport));
}

void TermSession::Connect(std::string_view address, const IdleHook& idle, const ConnectTraits& traits) {
  if (CalledFromInside()) return;
  StartConnect(address, traits);
  WaitForAttempt(idle);
}

void TermSession::ConnectWith(std::unique_ptr<Transport> transport, const IdleHook& idle,
                              const ConnectTraits& traits) {
  if (CalledFromInside()) return;
  StartConnectWith(std::move(transport), traits);
  WaitForAttempt(idle);
}

void TermSession::ResetForAttempt(const SiteAddress& address, const ConnectTraits& traits) {
  ++connectionNumber;
  userInterfaceThread_ = std::this_thread::get_id();
  autoLogin = traits.autoLogin;
  frozen = false;
  kind = address.kind;
  host = address.host;
  port = address.port;
  isBbsSite = traits.isBbs;
  isMainBbs = traits.isBbs;
  noSendWait = false;
  idleMark = 0;
  {
    std::lock_guard lock(linkLock_);
    link_.reset();
  }
  {
    std::lock_guard lock(endLock_);
    end_ = {};
  }
  screen.Clear();
  screen.curAttr = kAttrBlank;
  screen.cursorRow = 0;
  screen.cursorCol = 0;
}

void TermSession::RecogniseHost() {
  if (Contains(host, options_.endpoints.mainHost)) isMainBbs = true;
  if (isMainBbs || Contains(host, options_.endpoints.secondaryHost)) isBbsSite = true;
}

void TermSession::Begin(std::unique_ptr<Transport> transport) {
  state = SessionState::kConnecting;
  MirrorFields();
  live.Publish(screen);
  std::shared_ptr<SessionLink> link;
  try {
    link = std::make_shared<SessionLink>(std::move(transport), kSendChunk);
    {
      std::lock_guard lock(linkLock_);
      link_ = link;
    }
    link->sender = std::thread([link] { link->RunSender(); });
    link->receiver = std::thread([this, link] { RunReceiver(*link); });
  } catch (const std::system_error& error) {
    if (link) link->Finish();
    Fail(EndReason::kConnectFailed, error.what());
    if (link) link->Settle();
  }
}

void TermSession::Fail(EndReason reason, std::string detail) {
  ReportEnd({reason, std::move(detail)});
}

void TermSession::WaitForAttempt(const IdleHook& idle) {
  const std::shared_ptr<SessionLink> link = Link();
  if (!link) return;
  const Presence presence(waitingThread_);
  while (!link->WaitSettled(kIdleInterval))
    if (idle && !link->StopRequested() && !idle()) link->RequestStop();
}

// ---- Ending

void TermSession::Disconnect() {
  if (CalledFromInside()) {
    if (const auto link = Link()) link->RequestStop();
    return;
  }
  std::lock_guard lock(lifecycleLock_);
  EndLink();
}

void TermSession::RequestDisconnect(unsigned connection) {
  // A new attempt raises the number before it replaces the link: this link is no newer than the number.
  const std::shared_ptr<SessionLink> link = Link();
  if (link && connectionNumber == connection) link->RequestStop();
}

void TermSession::EndLink() {
  const std::shared_ptr<SessionLink> link = Link();
  if (!link) return;
  link->RequestStop();
  if (link->receiver.joinable()) link->receiver.join();
}

void TermSession::ReportEnd(TransportEnd end) {
  {
    std::lock_guard lock(endLock_);
    end_ = std::move(end);
  }
  state = SessionState::kClosed;
  HandOver(ScreenReason::kDisconnected);
}

TransportEnd TermSession::LastEnd() const {
  std::lock_guard lock(endLock_);
  return end_;
}

bool TermSession::WasConnected() const {
  const std::shared_ptr<SessionLink> link = Link();
  return link && link->connected;
}

std::size_t TermSession::UnsentBytes() const {
  const std::shared_ptr<SessionLink> link = Link();
  return link ? link->Unsent() : 0;
}

// ---- Receiving

void TermSession::RunReceiver(SessionLink& link) {
  const Presence presence(receiverThread_);
  TransportEnd end = link.Way().Run(*this);
  if (link.StopRequested()) end = {link.connected ? EndReason::kClosedByUser : EndReason::kCancelled, {}};
  link.Finish();
  ReportEnd(std::move(end));
  if (!link.connected) SettleAttempt(link);
}

void TermSession::SettleAttempt(SessionLink& link) {
  connectedAt = SecondsNow();
  link.Settle();
}

void TermSession::OnConnected(std::string_view peerAddress) {
  const std::shared_ptr<SessionLink> link = Link();
  RecognisePeer(peerAddress);
  link->connected = true;
  state = SessionState::kConnected;
  link->queue.Start();
  SettleAttempt(*link);
  if (link->Way().OpensWithDeleteKeys()) SendDeleteKeys();
  HandOver(ScreenReason::kConnected);
}

void TermSession::RecognisePeer(std::string_view peerAddress) {
  const std::uint32_t network = options_.endpoints.serverNetwork;
  const std::uint32_t peer = ParseDottedAddress(peerAddress);
  if (network == 0 || peer < network) return;
  if (peer - network <= kLastServer) isBbsSite = true;
  if (peer - network <= kLastMainServer) isMainBbs = true;
}

void TermSession::SendDeleteKeys() {
  for (int i = 0; i < kOpeningKeys; ++i) {
    SendKey(kKeyDelete);
    if (!Pause(kOpeningKeyInterval)) return;
  }
}

void TermSession::OnReceived(std::span<const std::uint8_t> bytes) {
  ++receivedCount;
  live.BeginBatch();
  screen.frozen = frozen ? 1 : 0;
  screen.Feed(bytes);
  live.Publish(screen);
  const std::lock_guard guard(observerLock_);
  if (observer_ != nullptr) observer_->OnReceived(bytes, screen);
}

void TermSession::SetObserver(ReceiveObserver* observer) {
  const std::lock_guard guard(observerLock_);
  observer_ = observer;
}

bool TermSession::Pause(int milliseconds) {
  return Link()->Pause(milliseconds);
}

void TermSession::OnDebugLine(std::string_view line) {
  if (options_.debugLine) options_.debugLine(line);
}

void TermSession::HandOver(ScreenReason reason) {
  MirrorFields();
  live.BeginBatch();
  screen.ProcessScreen(reason);
  live.Publish(screen);
}

void TermSession::MirrorFields() {
  screen.isBbsSite = isBbsSite ? 1 : 0;
  screen.sessionState = state;
  screen.connection = connectionNumber;
}

// ---- Who calls

std::shared_ptr<SessionLink> TermSession::Link() const {
  std::lock_guard lock(linkLock_);
  return link_;
}

bool TermSession::CalledFromInside() const {
  const std::thread::id self = std::this_thread::get_id();
  return self == waitingThread_.load() || self == receiverThread_.load();
}

bool TermSession::OnReceiveThread() const {
  return std::this_thread::get_id() == receiverThread_.load();
}

bool TermSession::OnUserInterfaceThread() const {
  return std::this_thread::get_id() == userInterfaceThread_.load();
}

}  // namespace quillet
