#include "tests/core/transport/faulty_ssh_server.h"

#include <algorithm>
#include <chrono>
#include <libssh/callbacks.h>
#include <libssh/libssh.h>
#include <libssh/server.h>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/socket.h"

namespace quillet {
namespace {

constexpr int kInterval = 1;  // milliseconds

}  // namespace

// The library's session lives on the serving thread alone.
struct FaultySshServer::Impl {
  SshFault fault = SshFault::kNone;
  StopSignal stop;
  Listener listener;
  ssh_bind bind = ssh_bind_new();
  std::string fingerprint;
  std::atomic<bool> reached{false};
  std::mutex lock;
  std::string typed, login, terminalSize;  // guarded by lock
  std::thread thread;

  ssh_session session = nullptr;
  ssh_channel channel = nullptr;
  bool isSilent = false, hasShell = false, isOver = false;
  ssh_server_callbacks_struct serverCalls{};
  ssh_channel_callbacks_struct channelCalls{};

  void MakeKey();
  void SetCallbacks();
  void Serve();
  void ServeClient(Socket& client);
  void Handle();
  void Talk();
  void Echo();
  bool Send(std::string_view bytes);
  void HoldUntilStopped();
  bool At(SshFault one) {
    if (fault != one) return false;
    return reached = true;
  }
  // Whether this is where it falls silent, or refuses.
  int Silent(SshFault one) {
    isSilent = isSilent || At(one);
    return 0;
  }
  static Impl& Of(void* self) { return *static_cast<Impl*>(self); }
};

void FaultySshServer::Impl::MakeKey() {
  ssh_key key = nullptr;
  ssh_pki_generate(SSH_KEYTYPE_ED25519, 0, &key);
  unsigned char* hash = nullptr;
  std::size_t size = 0;
  ssh_get_publickey_hash(key, SSH_PUBLICKEY_HASH_SHA256, &hash, &size);
  char* const text = ssh_get_fingerprint_hash(SSH_PUBLICKEY_HASH_SHA256, hash, size);
  fingerprint = text;
  ssh_string_free_char(text);
  ssh_clean_pubkey_hash(&hash);
  const bool usesFiles = false;
  ssh_bind_options_set(bind, SSH_BIND_OPTIONS_PROCESS_CONFIG, &usesFiles);
  ssh_bind_options_set(bind, SSH_BIND_OPTIONS_IMPORT_KEY, key);
}

void FaultySshServer::Impl::SetCallbacks() {
  ssh_callbacks_init(&serverCalls);
  serverCalls.userdata = this;
  serverCalls.service_request_function = [](ssh_session, const char*, void* self) {
    return Of(self).Silent(SshFault::kSilentAtPassword);
  };
  serverCalls.auth_password_function = [](ssh_session, const char* user, const char* password, void* self) {
    const std::lock_guard guard(Of(self).lock);
    Of(self).login = std::string(user) + " " + password;
    Of(self).Silent(SshFault::kSilentAtChannel);
    return int{Of(self).At(SshFault::kRefusesPassword) ? SSH_AUTH_DENIED : SSH_AUTH_SUCCESS};
  };
  serverCalls.channel_open_request_session_function = [](ssh_session own, void* self) -> ssh_channel {
    if (Of(self).At(SshFault::kRefusesChannel)) return nullptr;
    Of(self).channel = ssh_channel_new(own);
    ssh_set_channel_callbacks(Of(self).channel, &Of(self).channelCalls);
    Of(self).Silent(SshFault::kSilentAtTerminal);
    return Of(self).channel;
  };
  ssh_callbacks_init(&channelCalls);
  channelCalls.userdata = this;
  channelCalls.channel_pty_request_function = [](ssh_session, ssh_channel, const char*, int, int, int, int,
                                                 void* self) {
    Of(self).Silent(SshFault::kSilentAtShell);
    return Of(self).At(SshFault::kRefusesTerminal) ? -1 : 0;
  };
  channelCalls.channel_pty_window_change_function = [](ssh_session, ssh_channel, int width, int height, int,
                                                       int, void* self) {
    const std::lock_guard guard(Of(self).lock);
    Of(self).terminalSize = std::to_string(width) + "x" + std::to_string(height);
    return 0;
  };
  channelCalls.channel_shell_request_function = [](ssh_session, ssh_channel, void* self) {
    Of(self).hasShell = true;
    return Of(self).At(SshFault::kRefusesShell) ? -1 : 0;
  };
}

void FaultySshServer::Impl::Serve() {
  while (const auto client = listener.Accept(stop))
    ServeClient(*client);
}

void FaultySshServer::Impl::ServeClient(Socket& client) {
  if (At(SshFault::kSilentFromTheStart)) return HoldUntilStopped();
  if (fault == SshFault::kSilentAfterTheBanner) {
    constexpr std::string_view kBanner = "SSH-2.0-silent\r\n";
    std::size_t count = 0;
    client.Send({reinterpret_cast<const std::uint8_t*>(kBanner.data()), kBanner.size()}, count, stop);
    reached = true;
    return HoldUntilStopped();
  }
  session = ssh_new();
  channel = nullptr;
  isSilent = hasShell = isOver = false;
  ssh_bind_accept_fd(bind, session, client.Release());
  ssh_set_blocking(session, 0);
  ssh_set_server_callbacks(session, &serverCalls);
  ssh_set_auth_methods(session, SSH_AUTH_METHOD_PASSWORD);
  int result = ssh_handle_key_exchange(session);
  while (result == SSH_AGAIN && !stop.WaitFor(kInterval))
    result = ssh_handle_key_exchange(session);
  if (At(SshFault::kSilentAtLogin)) HoldUntilStopped();
  while (!hasShell && !isSilent && ssh_is_connected(session) && !stop.WaitFor(kInterval))
    Handle();
  if (isSilent) {
    // The answer before the silence.
    ssh_blocking_flush(session, 1000);
    HoldUntilStopped();
  }
  if (hasShell && !isSilent) Talk();
  ssh_blocking_flush(session, 1000);
  // A client that is cut off while it answers would lose what it was sent last.
  while (fault != SshFault::kDropsTheConnection && ssh_is_connected(session) && !stop.WaitFor(kInterval))
    Handle();
  ssh_free(session);
}

void FaultySshServer::Impl::Handle() {
  if (const ssh_message message = ssh_message_get(session)) {
    ssh_message_reply_default(message);
    ssh_message_free(message);
  }
}

void FaultySshServer::Impl::HoldUntilStopped() {
  while (!stop.WaitFor(1000)) {
  }
}

void FaultySshServer::Impl::Talk() {
  const std::string_view greeting = kGreeting;
  const std::size_t piece = At(SshFault::kOneByteAPacket) ? 1 : greeting.size();
  if (fault != SshFault::kRefusesShell)
    for (std::size_t at = 0; at < greeting.size(); at += piece)
      Send(greeting.substr(at, piece));
  switch (fault) {
    case SshFault::kStalls:
      ssh_blocking_flush(session, 1000);
      reached = true;
      return HoldUntilStopped();
    case SshFault::kFloods: {
      const std::string much = "\x1b[2;1H" + std::string(65530, 'f');
      for (std::size_t sent = 0; sent < kFloodSize && Send(much); sent += much.size()) {
      }
      break;
    }
    case SshFault::kNoWindow:
      for (reached = true; ssh_is_connected(session) && !stop.WaitFor(kInterval);)
        Handle();
      return;
    case SshFault::kNone:
    case SshFault::kOneByteAPacket:
    case SshFault::kRefusesTerminal:
      return Echo();
    default:
      break;
  }
  reached = true;
  if (fault != SshFault::kDropsTheConnection) ssh_channel_close(channel);
}

void FaultySshServer::Impl::Echo() {
  std::vector<char> buffer(65536);
  while (!stop.WaitFor(kInterval)) {
    const int count =
        ssh_channel_read_nonblocking(channel, buffer.data(), static_cast<std::uint32_t>(buffer.size()), 0);
    if (count < 0 && count != SSH_AGAIN) return;
    if (count <= 0) continue;
    const std::string text(buffer.data(), static_cast<std::size_t>(count));
    {
      const std::lock_guard guard(lock);
      typed += text;
    }
    Send(text);
  }
}

bool FaultySshServer::Impl::Send(std::string_view bytes) {
  while (!bytes.empty() && ssh_is_connected(session)) {
    const int taken = ssh_channel_write(channel, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    if (taken < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(taken));
    if (!bytes.empty() && stop.WaitFor(kInterval)) return false;
  }
  return bytes.empty();
}

FaultySshServer::FaultySshServer(SshFault fault) : impl_(std::make_unique<Impl>()) {
  impl_->fault = fault;
  impl_->MakeKey();
  impl_->SetCallbacks();
  impl_->listener.Open(ResolvedAddress::Family::kIpv4, 0);
  impl_->thread = std::thread([this] { impl_->Serve(); });
}

FaultySshServer::~FaultySshServer() {
  impl_->stop.Set();
  impl_->thread.join();
  ssh_bind_free(impl_->bind);
}

std::uint16_t FaultySshServer::Port() const {
  return impl_->listener.Port();
}

std::string FaultySshServer::Fingerprint() const {
  return impl_->fingerprint;
}

bool FaultySshServer::Reached() const {
  return impl_->reached;
}

std::string FaultySshServer::Typed() const {
  const std::lock_guard guard(impl_->lock);
  return impl_->typed;
}

std::string FaultySshServer::Login() const {
  const std::lock_guard guard(impl_->lock);
  return impl_->login;
}

std::string FaultySshServer::TerminalSize() const {
  const std::lock_guard guard(impl_->lock);
  return impl_->terminalSize;
}

}  // namespace quillet
