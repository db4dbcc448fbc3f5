// The gateway's side of a WebSocket over TLS, on a test's socket, one step at a time: as much as a test needs
// to do everything right, and to stop doing so wherever it likes. Used on the loopback server's thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "demo/wires/certificate_authority.h"
#include "platform/socket.h"

struct ssl_st;
struct ssl_ctx_st;

namespace quillet {

enum class FrameKind { kContinuation = 0, kText = 1, kBinary = 2, kClose = 8, kPing = 9, kPong = 10 };

// As a server sends it. `last` is false for all but the last piece of a fragmented message.
std::string MakeFrame(FrameKind kind, std::string_view payload, bool last = true);

class WebSocketPeer {
 public:
  WebSocketPeer(Socket& socket, const StopSignal& stop, const demo::ServerCertificate& certificate);
  ~WebSocketPeer();
  WebSocketPeer(const WebSocketPeer&) = delete;
  WebSocketPeer& operator=(const WebSocketPeer&) = delete;

  Socket& Plain() { return socket_; }
  // Each is false when the client has gone, or the server is to stop.
  bool Secure();
  bool ReadRequest();
  bool Accept();  // the request that was read
  bool Write(std::string_view bytes);
  // The end of TLS, as it is said in good order.
  void EndTls();
  // All of the three.
  bool Open() { return Secure() && ReadRequest() && Accept(); }

  struct Frame {
    FrameKind kind;
    std::string payload;
  };
  std::optional<Frame> ReadFrame();
  // Answers pings until there is a frame of another kind.
  std::optional<Frame> ReadMessage();

  const std::string& Request() const { return request_; }

 private:
  bool Flush();
  bool Fill();
  bool Step(const std::function<int()>& action);
  bool Read(std::size_t size);  // until there are so many bytes in received_

  Socket& socket_;
  const StopSignal& stop_;
  std::unique_ptr<ssl_ctx_st, void (*)(ssl_ctx_st*)> context_;
  std::unique_ptr<ssl_st, void (*)(ssl_st*)> tls_;
  std::string request_;
  std::string received_;
};

}  // namespace quillet
