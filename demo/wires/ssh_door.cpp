#include "demo/wires/ssh_door.h"

#include <algorithm>
#include <chrono>
#include <libssh/callbacks.h>
#include <libssh/libssh.h>
#include <libssh/server.h>
#include <mutex>
#include <string_view>
#include <utility>

namespace quillet::demo {
namespace {

constexpr std::string_view kUser = "bbs";

// The library is asked at least so often: it may hold bytes that another call has brought in.
constexpr int kInterval = 1;  // milliseconds
// How long the last bytes and the goodbye may take to reach the client, and the client to go.
constexpr std::chrono::milliseconds kFarewell{500};

class Library {
 public:
  Library() { ssh_init(); }
  ~Library() { ssh_finalize(); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
};

// Every use of the library's session goes through one lock: it takes one thread at a time.
class SshWire final : public Wire {
 public:
  explicit SshWire(ssh_session session);
  ~SshWire() override { ssh_free(session_); }

  bool Open(const StopSignal& stop) override;
  std::size_t Receive(std::span<std::uint8_t> buffer, const StopSignal& stop) override;
  bool Send(std::span<const std::uint8_t> bytes, const StopSignal& stop) override;
  void Close() override;

 private:
  template <typename Call>
  auto Locked(Call call) {
    const std::lock_guard lock(lock_);
    return call();
  }
  // Lets the library answer what the client asks for.
  void Answer();
  bool IsConnected() const { return ssh_is_connected(session_) != 0; }

  static int OnPassword(ssh_session session, const char* user, const char* password, void* self);
  static ssh_channel OnChannel(ssh_session session, void* self);
  static int OnTerminal(ssh_session, ssh_channel, const char*, int, int, int, int, void*) { return 0; }
  static int OnResize(ssh_session, ssh_channel, int, int, int, int, void*) { return 0; }
  static int OnShell(ssh_session session, ssh_channel channel, void* self);

  std::mutex lock_;
  ssh_session session_;
  ssh_channel channel_ = nullptr;  // the session's
  bool hasShell_ = false;
  ssh_server_callbacks_struct serverCalls_{};
  ssh_channel_callbacks_struct channelCalls_{};
};

SshWire::SshWire(ssh_session session) : session_(session) {
  ssh_callbacks_init(&serverCalls_);
  serverCalls_.userdata = this;
  serverCalls_.auth_password_function = OnPassword;
  serverCalls_.channel_open_request_session_function = OnChannel;
  ssh_callbacks_init(&channelCalls_);
  channelCalls_.userdata = this;
  channelCalls_.channel_pty_request_function = OnTerminal;
  channelCalls_.channel_pty_window_change_function = OnResize;
  channelCalls_.channel_shell_request_function = OnShell;
  ssh_set_blocking(session_, 0);
  ssh_set_server_callbacks(session_, &serverCalls_);
  ssh_set_auth_methods(session_, SSH_AUTH_METHOD_PASSWORD);
}

int SshWire::OnPassword(ssh_session, const char* user, const char* password, void*) {
  return user == kUser && std::string_view(password).empty() ? SSH_AUTH_SUCCESS : SSH_AUTH_DENIED;
}

ssh_channel SshWire::OnChannel(ssh_session session, void* self) {
  auto& wire = *static_cast<SshWire*>(self);
  if (wire.channel_ != nullptr) return nullptr;
  wire.channel_ = ssh_channel_new(session);
  if (wire.channel_ != nullptr) ssh_set_channel_callbacks(wire.channel_, &wire.channelCalls_);
  return wire.channel_;
}

int SshWire::OnShell(ssh_session, ssh_channel, void* self) {
  static_cast<SshWire*>(self)->hasShell_ = true;
  return 0;
}

void SshWire::Answer() {
  // What no callback is for comes out as a message, and is refused.
  if (ssh_message message = ssh_message_get(session_)) {
    ssh_message_reply_default(message);
    ssh_message_free(message);
  }
}

bool SshWire::Open(const StopSignal& stop) {
  int result = ssh_handle_key_exchange(session_);
  while (result == SSH_AGAIN && !stop.WaitFor(kInterval))
    result = ssh_handle_key_exchange(session_);
  if (result != SSH_OK) return false;
  while (!hasShell_ && IsConnected() && !stop.WaitFor(kInterval))
    Answer();
  return hasShell_;
}

std::size_t SshWire::Receive(std::span<std::uint8_t> buffer, const StopSignal& stop) {
  const NativeSocket stream = Locked([&] { return ssh_get_fd(session_); });
  while (!stop.WaitForInput(stream, kInterval)) {
    const int count = Locked([&] {
      return ssh_channel_read_nonblocking(channel_, buffer.data(), static_cast<std::uint32_t>(buffer.size()),
                                          0);
    });
    if (count > 0) return static_cast<std::size_t>(count);
    if (count < 0 && count != SSH_AGAIN) return 0;
  }
  return 0;
}

bool SshWire::Send(std::span<const std::uint8_t> bytes, const StopSignal& stop) {
  while (!bytes.empty()) {
    const int taken = Locked([&] {
      const int count = ssh_channel_write(channel_, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
      return count == 0 && !IsConnected() ? SSH_ERROR : count;
    });
    if (taken < 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(taken));
    if (!bytes.empty() && stop.WaitFor(kInterval)) return false;
  }
  return true;
}

void SshWire::Close() {
  const std::lock_guard lock(lock_);
  if (channel_ != nullptr) {
    ssh_channel_send_eof(channel_);
    ssh_channel_close(channel_);
  }
  ssh_blocking_flush(session_, static_cast<int>(kFarewell.count()));
  // A client that is cut off while it types would lose what it was sent last.
  const StopSignal never;
  const auto end = std::chrono::steady_clock::now() + kFarewell;
  while (hasShell_ && IsConnected() && std::chrono::steady_clock::now() < end) {
    Answer();
    never.WaitFor(kInterval);
  }
  ssh_disconnect(session_);
}

class SshDoor final : public Door {
 public:
  ~SshDoor() override {
    if (bind_ != nullptr) ssh_bind_free(bind_);
  }

  bool MakeKey();
  bool Listen(std::uint16_t port) { return listener_.Open(ResolvedAddress::Family::kIpv4, port); }
  const std::string& LastError() const { return listener_.LastError(); }

  std::unique_ptr<Wire> Accept(const StopSignal& stop) override;
  std::uint16_t Port() const override { return listener_.Port(); }
  std::string Address() const override { return "ssh://127.0.0.1:" + std::to_string(Port()); }

 private:
  const Library library_;
  ssh_bind bind_ = nullptr;
  Listener listener_;
};

bool SshDoor::MakeKey() {
  bind_ = ssh_bind_new();
  ssh_key key = nullptr;
  if (bind_ == nullptr || ssh_pki_generate(SSH_KEYTYPE_ED25519, 0, &key) != SSH_OK) return false;
  const bool usesFiles = false;
  // The key is the door's from here on.
  return ssh_bind_options_set(bind_, SSH_BIND_OPTIONS_PROCESS_CONFIG, &usesFiles) == SSH_OK &&
         ssh_bind_options_set(bind_, SSH_BIND_OPTIONS_IMPORT_KEY, key) == SSH_OK;
}

std::unique_ptr<Wire> SshDoor::Accept(const StopSignal& stop) {
  auto socket = listener_.Accept(stop);
  ssh_session session = socket ? ssh_new() : nullptr;
  if (session == nullptr) return nullptr;
  // The stream is the session's in any case.
  if (ssh_bind_accept_fd(bind_, session, socket->Release()) == SSH_OK)
    return std::make_unique<SshWire>(session);
  ssh_free(session);
  return nullptr;
}

}  // namespace

OpenedDoor OpenSshDoor(std::uint16_t port) {
  auto door = std::make_unique<SshDoor>();
  if (!door->MakeKey()) return {nullptr, "cannot make a host key for SSH"};
  if (!door->Listen(port))
    return {nullptr, "cannot listen on port " + std::to_string(port) + ": " + door->LastError()};
  return {std::move(door), {}};
}

}  // namespace quillet::demo
