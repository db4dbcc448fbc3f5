#include "tests/core/transport/websocket_peer.h"

#include <array>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/sha.h>
#include <openssl/ssl.h>

namespace quillet {
namespace {

constexpr std::string_view kKeyHeader = "Sec-WebSocket-Key: ";
constexpr std::string_view kKeySalt = "258EAFA5-E914-47DA-95CA-C5AB0DC85B11";

BIO* Memory(const std::string& text) {
  return BIO_new_mem_buf(text.data(), static_cast<int>(text.size()));
}

std::string AcceptKey(const std::string& request) {
  const std::size_t at = request.find(kKeyHeader) + kKeyHeader.size();
  const std::string key = request.substr(at, request.find("\r\n", at) - at) + std::string(kKeySalt);
  std::array<unsigned char, SHA_DIGEST_LENGTH> digest{};
  SHA1(reinterpret_cast<const unsigned char*>(key.data()), key.size(), digest.data());
  std::array<unsigned char, 64> text{};
  const int size = EVP_EncodeBlock(text.data(), digest.data(), SHA_DIGEST_LENGTH);
  return {reinterpret_cast<const char*>(text.data()), static_cast<std::size_t>(size)};
}

void AppendBigEndian(std::string& out, std::size_t value, int bytes) {
  while (bytes-- > 0)
    out += static_cast<char>(value >> (8 * bytes) & 0xFF);
}

}  // namespace

std::string MakeFrame(FrameKind kind, std::string_view payload, bool last) {
  std::string frame(1, static_cast<char>((last ? 0x80 : 0) | static_cast<int>(kind)));
  if (payload.size() < 126) {
    frame += static_cast<char>(payload.size());
  } else if (payload.size() < 65536) {
    frame += '\x7e';
    AppendBigEndian(frame, payload.size(), 2);
  } else {
    frame += '\x7f';
    AppendBigEndian(frame, payload.size(), 8);
  }
  return frame.append(payload);
}

WebSocketPeer::WebSocketPeer(Socket& socket, const StopSignal& stop,
                             const demo::ServerCertificate& certificate)
    : socket_(socket),
      stop_(stop),
      context_(SSL_CTX_new(TLS_server_method()), SSL_CTX_free),
      tls_(nullptr, SSL_free) {
  BIO* const card = Memory(certificate.certificate);
  X509* const x509 = PEM_read_bio_X509(card, nullptr, nullptr, nullptr);
  SSL_CTX_use_certificate(context_.get(), x509);
  X509_free(x509);
  BIO_free(card);
  BIO* const secret = Memory(certificate.key);
  EVP_PKEY* const key = PEM_read_bio_PrivateKey(secret, nullptr, nullptr, nullptr);
  SSL_CTX_use_PrivateKey(context_.get(), key);
  EVP_PKEY_free(key);
  BIO_free(secret);
  tls_.reset(SSL_new(context_.get()));
  SSL_set_bio(tls_.get(), BIO_new(BIO_s_mem()), BIO_new(BIO_s_mem()));
  SSL_set_accept_state(tls_.get());
}

WebSocketPeer::~WebSocketPeer() = default;

bool WebSocketPeer::Flush() {
  std::array<std::uint8_t, 16384> block;
  int size = 0;
  while ((size = BIO_read(SSL_get_wbio(tls_.get()), block.data(), static_cast<int>(block.size()))) > 0) {
    std::size_t count = 0;
    if (socket_.Send(std::span(block).first(static_cast<std::size_t>(size)), count, stop_) !=
        Socket::Result::kOk)
      return false;
  }
  return true;
}

bool WebSocketPeer::Fill() {
  std::array<std::uint8_t, 16384> block;
  std::size_t count = 0;
  if (socket_.Receive(block, count, stop_) != Socket::Result::kOk) return false;
  return BIO_write(SSL_get_rbio(tls_.get()), block.data(), static_cast<int>(count)) > 0;
}

bool WebSocketPeer::Step(const std::function<int()>& action) {
  while (true) {
    const int result = action();
    const int error = SSL_get_error(tls_.get(), result);
    if (!Flush()) return false;
    if (result > 0) return true;
    if (error != SSL_ERROR_WANT_READ || !Fill()) return false;
  }
}

bool WebSocketPeer::Secure() {
  return Step([this] { return SSL_do_handshake(tls_.get()); });
}

bool WebSocketPeer::Write(std::string_view bytes) {
  return Step([&] { return SSL_write(tls_.get(), bytes.data(), static_cast<int>(bytes.size())); });
}

void WebSocketPeer::EndTls() {
  SSL_shutdown(tls_.get());
  Flush();
}

bool WebSocketPeer::Read(std::size_t size) {
  std::array<char, 16384> block;
  while (received_.size() < size) {
    int count = 0;
    if (!Step([&] { return count = SSL_read(tls_.get(), block.data(), static_cast<int>(block.size())); }))
      return false;
    received_.append(block.data(), static_cast<std::size_t>(count));
  }
  return true;
}

bool WebSocketPeer::ReadRequest() {
  std::size_t end = std::string::npos;
  while ((end = received_.find("\r\n\r\n")) == std::string::npos)
    if (!Read(received_.size() + 1)) return false;
  request_ = received_.substr(0, end + 4);
  received_.erase(0, end + 4);
  return true;
}

bool WebSocketPeer::Accept() {
  return Write(
      "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
      "Sec-WebSocket-Accept: " +
      AcceptKey(request_) + "\r\n\r\n");
}

// Clients mask what they send, and ours sends nothing longer than 64 KB.
std::optional<WebSocketPeer::Frame> WebSocketPeer::ReadFrame() {
  if (!Read(2)) return std::nullopt;
  const auto byte = [this](std::size_t at) { return static_cast<unsigned char>(received_[at]); };
  std::size_t header = 2;
  std::size_t size = byte(1) & 0x7FU;
  if (size == 126) {
    header = 4;
    if (!Read(header)) return std::nullopt;
    size = byte(2) * 256U + byte(3);
  }
  if (!Read(header + 4 + size)) return std::nullopt;
  Frame frame{static_cast<FrameKind>(byte(0) & 0x0FU), received_.substr(header + 4, size)};
  for (std::size_t i = 0; i < size; ++i)
    frame.payload[i] = static_cast<char>(frame.payload[i] ^ received_[header + i % 4]);
  received_.erase(0, header + 4 + size);
  return frame;
}

std::optional<WebSocketPeer::Frame> WebSocketPeer::ReadMessage() {
  while (auto frame = ReadFrame()) {
    if (frame->kind != FrameKind::kPing) return frame;
    if (!Write(MakeFrame(FrameKind::kPong, frame->payload))) break;
  }
  return std::nullopt;
}

}  // namespace quillet
