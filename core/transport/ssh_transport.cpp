#include "core/transport/ssh_transport.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <libssh/libssh.h>
#include <mutex>
#include <string_view>
#include <utility>

#include "platform/stream_tuning.h"

namespace quillet {
namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* kUser = "bbs";
constexpr const char* kPassword = "";
constexpr int kTerminalColumns = 80;
constexpr int kTerminalRows = 24;

// The library is asked at least so often, because it may hold bytes that a write has brought in.
constexpr int kReadInterval = 1;  // milliseconds
// A wait for an answer of the host costs a person nothing that he would feel.
constexpr int kAnswerInterval = 2;  // milliseconds
// A piece of what is written is one packet, or none of it is counted.
constexpr std::size_t kWriteSize = 16384;
constexpr int kWriteInterval = 1;  // milliseconds

// Both name this machine whatever the host is: who greps for them finds them in every version.
constexpr const char* kConnectComplaint = "Error connecting to localhost: %s\n";
constexpr const char* kLoginComplaint = "Error authenticating with password: %s\n";

void Complain(const char* format, const std::string& text) {
  std::fprintf(stderr, format, text.c_str());
}

// Where neither the user's files nor the system's may say anything, on every system.
constexpr const char* kNoFile = "/dev/null";

struct FreeText {
  void operator()(char* text) const { ssh_string_free_char(text); }
};
using LibraryText = std::unique_ptr<char, FreeText>;

struct FreeKey {
  void operator()(ssh_key key) const { ssh_key_free(key); }
};
using LibraryKey = std::unique_ptr<ssh_key_struct, FreeKey>;

std::string FingerprintOf(ssh_key key) {
  unsigned char* hash = nullptr;
  std::size_t size = 0;
  if (ssh_get_publickey_hash(key, SSH_PUBLICKEY_HASH_SHA256, &hash, &size) != SSH_OK) return {};
  const LibraryText text(ssh_get_fingerprint_hash(SSH_PUBLICKEY_HASH_SHA256, hash, size));
  ssh_clean_pubkey_hash(&hash);
  return text ? text.get() : std::string();
}

}  // namespace

SshLibrary::SshLibrary() {
  ssh_init();
}

SshLibrary::~SshLibrary() {
  ssh_finalize();
}

// ---- Line

// The library's session and channel. Every use of them, down to the last, goes through one lock, because the
// library takes one thread at a time; and no use waits for the network.
class SshTransport::Line {
 public:
  ~Line() { End(); }

  // A session of its own for the address, in place of the one before. False when the library refuses it.
  bool Begin(const std::string& address, std::uint16_t port);
  int Connect();
  std::optional<HostKey> Key();
  int LogIn();
  int OpenChannel();
  int AskForTerminal();
  int ResizeTerminal();
  int AskForShell();
  // What bytes come in by.
  NativeSocket Stream();
  // Bytes, 0 or SSH_AGAIN for none yet, or another negative number at the end.
  int Read(std::span<std::uint8_t> buffer);
  // How many the library has taken; negative when the connection is gone.
  int Write(std::span<const std::uint8_t> bytes);
  // SSH_AGAIN while the library holds bytes that the system has not taken.
  int Flush();
  // Whether the peer has said that nothing more will come.
  bool HasEnded();
  std::string Fault();
  // Says goodbye as far as the two have come, and gives everything back.
  void End();

 private:
  std::mutex sshLock_;
  ssh_session session_ = nullptr;  // guarded by sshLock_
  ssh_channel channel_ = nullptr;  // guarded by sshLock_
  bool isTuned_ = false;
  bool isConnected_ = false;    // guarded by sshLock_
  bool isChannelOpen_ = false;  // guarded by sshLock_
};

bool SshTransport::Line::Begin(const std::string& address, std::uint16_t port) {
  End();
  const std::lock_guard lock(sshLock_);
  session_ = ssh_new();
  if (session_ == nullptr) return false;
  ssh_set_blocking(session_, 0);
  isTuned_ = false;
  // Files of the user's and of the system's would lead elsewhere, and would choose which of its keys the host
  // shows. The library's own port is left alone where no other is wanted.
  const bool usesFiles = false;
  const unsigned int number = port;
  return ssh_options_set(session_, SSH_OPTIONS_PROCESS_CONFIG, &usesFiles) == SSH_OK &&
         ssh_options_set(session_, SSH_OPTIONS_KNOWNHOSTS, kNoFile) == SSH_OK &&
         ssh_options_set(session_, SSH_OPTIONS_GLOBAL_KNOWNHOSTS, kNoFile) == SSH_OK &&
         (port == kSshPort || ssh_options_set(session_, SSH_OPTIONS_PORT, &number) == SSH_OK) &&
         ssh_options_set(session_, SSH_OPTIONS_HOST, address.c_str()) == SSH_OK;
}

int SshTransport::Line::Connect() {
  const std::lock_guard lock(sshLock_);
  const int result = ssh_connect(session_);
  const socket_t stream = ssh_get_fd(session_);
  if (!isTuned_ && stream != SSH_INVALID_SOCKET) {
    TuneStream(stream);
    isTuned_ = true;
  }
  isConnected_ = result == SSH_OK;
  return result;
}

std::optional<HostKey> SshTransport::Line::Key() {
  const std::lock_guard lock(sshLock_);
  ssh_key given = nullptr;
  if (ssh_get_server_publickey(session_, &given) != SSH_OK) return std::nullopt;
  const LibraryKey key(given);
  const char* const type = ssh_key_type_to_char(ssh_key_type(key.get()));
  return HostKey{type != nullptr ? type : "", FingerprintOf(key.get())};
}

int SshTransport::Line::LogIn() {
  const std::lock_guard lock(sshLock_);
  return ssh_userauth_password(session_, kUser, kPassword);
}

int SshTransport::Line::OpenChannel() {
  const std::lock_guard lock(sshLock_);
  if (channel_ == nullptr) channel_ = ssh_channel_new(session_);
  const int result = channel_ != nullptr ? ssh_channel_open_session(channel_) : SSH_ERROR;
  isChannelOpen_ = result == SSH_OK;
  return result;
}

int SshTransport::Line::AskForTerminal() {
  const std::lock_guard lock(sshLock_);
  return ssh_channel_request_pty(channel_);
}

int SshTransport::Line::ResizeTerminal() {
  const std::lock_guard lock(sshLock_);
  return ssh_channel_change_pty_size(channel_, kTerminalColumns, kTerminalRows);
}

int SshTransport::Line::AskForShell() {
  const std::lock_guard lock(sshLock_);
  return ssh_channel_request_shell(channel_);
}

NativeSocket SshTransport::Line::Stream() {
  const std::lock_guard lock(sshLock_);
  return ssh_get_fd(session_);
}

int SshTransport::Line::Read(std::span<std::uint8_t> buffer) {
  const std::lock_guard lock(sshLock_);
  return ssh_channel_read_nonblocking(channel_, buffer.data(), static_cast<std::uint32_t>(buffer.size()), 0);
}

int SshTransport::Line::Write(std::span<const std::uint8_t> bytes) {
  const std::lock_guard lock(sshLock_);
  if (!isChannelOpen_) return SSH_ERROR;
  const int taken = ssh_channel_write(channel_, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
  // A connection that is lost takes nothing, and says nothing of it.
  return taken == 0 && ssh_is_connected(session_) == 0 ? SSH_ERROR : taken;
}

int SshTransport::Line::Flush() {
  const std::lock_guard lock(sshLock_);
  if (!isChannelOpen_ || ssh_is_connected(session_) == 0) return SSH_ERROR;
  return ssh_blocking_flush(session_, 0);
}

bool SshTransport::Line::HasEnded() {
  const std::lock_guard lock(sshLock_);
  return ssh_channel_is_eof(channel_) != 0;
}

std::string SshTransport::Line::Fault() {
  const std::lock_guard lock(sshLock_);
  return session_ != nullptr ? ssh_get_error(session_) : "no memory for a session";
}

void SshTransport::Line::End() {
  const std::lock_guard lock(sshLock_);
  if (std::exchange(isChannelOpen_, false)) ssh_channel_close(channel_);
  if (channel_ != nullptr) ssh_channel_free(std::exchange(channel_, nullptr));
  if (std::exchange(isConnected_, false)) ssh_disconnect(session_);
  if (session_ != nullptr) ssh_free(std::exchange(session_, nullptr));
}

// ---- SshTransport

SshTransport::SshTransport(std::string host, SshOptions options)
    : host_(std::move(host)),
      options_(std::move(options)),
      lookup_(options_.resolver),
      line_(std::make_unique<Line>()) {}

SshTransport::~SshTransport() = default;

// What came of asking the host for something.
struct SshTransport::Answer {
  enum class How { kGiven, kStopped, kSilent } how = How::kGiven;
  int result = SSH_ERROR;

  bool IsGiven() const { return how == How::kGiven; }
  // The end of an attempt whose question was not answered.
  TransportEnd End() const {
    if (how == How::kStopped) return {EndReason::kCancelled, {}};
    return {EndReason::kConnectFailed, std::string(kSilence)};
  }
  static constexpr std::string_view kSilence = "the host does not answer";
};

// Calls until the answer is another one than `again`. The lock is free between the calls.
template <typename Call>
SshTransport::Answer SshTransport::Ask(Call call, int again, std::chrono::milliseconds patience) {
  const auto end = Clock::now() + patience;
  for (int wait = 0; !stop_.WaitFor(wait); wait = kAnswerInterval) {
    const int result = call();
    if (result != again) return {Answer::How::kGiven, result};
    if (Clock::now() >= end) return {Answer::How::kSilent, again};
  }
  return {Answer::How::kStopped, again};
}

TransportEnd SshTransport::Run(TransportEvents& events) {
  const std::optional<Resolution> resolution = lookup_.Run(host_, std::to_string(options_.port));
  if (!resolution) return {EndReason::kCancelled, {}};
  if (resolution->addresses.empty()) {
    Complain(kConnectComplaint, resolution->error);
    return {EndReason::kResolveFailed, resolution->error};
  }
  std::string peer;
  TransportEnd end = ConnectToAny(*resolution, peer);
  if (end.reason == EndReason::kNone) end = ShowHostKey();
  if (end.reason == EndReason::kNone) end = LogIn();
  if (end.reason == EndReason::kNone) end = OpenTerminal();
  if (end.reason == EndReason::kNone) {
    events.OnConnected(peer);
    end = ReceiveUntilEnd(events);
  }
  line_->End();
  return end;
}

TransportEnd SshTransport::ConnectToAny(const Resolution& resolution, std::string& peer) {
  TransportEnd end;
  for (const ResolvedAddress& address : resolution.addresses) {
    peer = address.text;
    end = ConnectTo(address);
    if (end.reason != EndReason::kConnectFailed) return end;
  }
  Complain(kConnectComplaint, end.detail);
  return end;
}

TransportEnd SshTransport::ConnectTo(const ResolvedAddress& address) {
  // By its number: the library would look a name up without an end, and try its first address only.
  if (!line_->Begin(address.text, options_.port)) return {EndReason::kConnectFailed, line_->Fault()};
  const Answer answer = Ask([this] { return line_->Connect(); }, SSH_AGAIN, options_.patience.connect);
  if (!answer.IsGiven()) return answer.End();
  if (answer.result != SSH_OK) return {EndReason::kConnectFailed, line_->Fault()};
  return {};
}

TransportEnd SshTransport::ShowHostKey() {
  if (!options_.hostKey) return {};
  const std::optional<HostKey> key = line_->Key();
  if (!key) return {EndReason::kConnectFailed, line_->Fault()};
  if (options_.hostKey(*key) == HostKeyAnswer::kGoOn) return {};
  return {EndReason::kHostKeyChanged, key->fingerprint};
}

TransportEnd SshTransport::LogIn() {
  const Answer answer = Ask([this] { return line_->LogIn(); }, SSH_AUTH_AGAIN, options_.patience.logIn);
  if (answer.how == Answer::How::kStopped) return answer.End();
  if (answer.IsGiven() && answer.result == SSH_AUTH_SUCCESS) return {};
  const std::string fault = answer.IsGiven() ? line_->Fault() : answer.End().detail;
  Complain(kLoginComplaint, fault);
  const bool isRefused = answer.result == SSH_AUTH_DENIED || answer.result == SSH_AUTH_PARTIAL;
  return {isRefused ? EndReason::kLoginRefused : EndReason::kConnectFailed, fault};
}

TransportEnd SshTransport::OpenTerminal() {
  const auto patience = options_.patience.terminal;
  const Answer channel = Ask([this] { return line_->OpenChannel(); }, SSH_AGAIN, patience);
  if (!channel.IsGiven()) return channel.End();
  if (channel.result != SSH_OK) return {EndReason::kTerminalRefused, line_->Fault()};
  // A host may refuse these and still give a shell: what it makes of them shows in what it sends.
  for (int (Line::*const request)() : {&Line::AskForTerminal, &Line::ResizeTerminal, &Line::AskForShell}) {
    const Answer answer = Ask([&] { return (*line_.*request)(); }, SSH_AGAIN, patience);
    if (!answer.IsGiven()) return answer.End();
  }
  return {};
}

TransportEnd SshTransport::ReceiveUntilEnd(TransportEvents& events) {
  std::array<std::uint8_t, kReadSize> buffer;
  const NativeSocket stream = line_->Stream();
  int count = 0;
  // Where some came, more may wait already.
  while (count > 0 ? !stop_.IsSet() : !stop_.WaitForInput(stream, kReadInterval)) {
    count = line_->Read(buffer);
    if (count > 0)
      events.OnReceived(std::span(buffer).first(static_cast<std::size_t>(count)));
    else if (count == SSH_EOF || (count != 0 && count != SSH_AGAIN && line_->HasEnded()))
      return {EndReason::kClosedByPeer, {}};
    else if (count != 0 && count != SSH_AGAIN)
      return {EndReason::kReadFailed, line_->Fault()};
  }
  return {EndReason::kClosedByUser, {}};
}

std::size_t SshTransport::Write(std::span<const std::uint8_t> bytes) {
  std::size_t written = 0;
  while (written < bytes.size() && !stop_.IsSet()) {
    const int taken =
        line_->Write(bytes.subspan(written).first(std::min(bytes.size() - written, kWriteSize)));
    if (taken < 0) break;
    // The peer's window is shut.
    if (taken == 0 && stop_.WaitFor(kWriteInterval)) break;
    if (!Flush()) break;
    written += static_cast<std::size_t>(taken);
  }
  return written;
}

// Waits until the system has all that the library was given; false when it will not.
bool SshTransport::Flush() {
  int result = line_->Flush();
  while (result == SSH_AGAIN && !stop_.WaitFor(kWriteInterval))
    result = line_->Flush();
  return result == SSH_OK;
}

void SshTransport::Stop() {
  lookup_.Abandon();
  stop_.Set();
}

}  // namespace quillet
