// A BBS of our own, served on loopback: the embedded default of the program and the other end of its tests.
// Many clients at once, each with its own session over one shared world of boards, articles and users that
// lives as long as the server; nothing is written to disk.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

struct Endpoints;

struct DemoOptions {
  std::filesystem::path contentFolder;     // holds boards/, users.txt and the screens
  std::uint16_t port = 0;                  // for telnet; 0: the system chooses
  std::optional<std::uint16_t> sshPort{};  // the same for SSH, which is served when there is one
  // The same for WebSocket.
  std::optional<std::uint16_t> webSocketPort{};
  // The same for the web sites that articles link to, by HTTP.
  std::optional<std::uint16_t> picturePort{};
  // How the bytes are cut into writes. kAsBbs splits as a busy BBS does, inside sequences and characters too.
  enum class Writes { kWhole, kAsBbs, kEveryByte } writes = Writes::kAsBbs;
  std::uint32_t seed = 1;                     // of the splits and of everything else that looks random
  std::string hostName = "bbs.example";       // named by the origin line of every article
  std::string webHost = "www.bbs.example";    // of the links to articles
  std::function<void(std::string_view)> log;  // one line per connection, login and unusable file; any thread

  // Takes the host names that the client knows this BBS by, so that it recognises origin lines and links.
  void UseNames(const Endpoints& endpoints);
};

class DemoServer {
 public:
  // Loads the content and listens on 127.0.0.1. The character tables must have been loaded.
  explicit DemoServer(DemoOptions options);
  ~DemoServer();  // closes every connection and joins
  DemoServer(const DemoServer&) = delete;
  DemoServer& operator=(const DemoServer&) = delete;

  // Empty when the server listens; otherwise says what could not be read or opened, and where.
  const std::string& Error() const;
  std::uint16_t Port() const;
  std::uint16_t SshPort() const;  // 0 when SSH is not served
  std::string SshAddress() const;
  // Serves these from now on too, on ports of the system's choice; nothing where they are served. Error tells
  // when it cannot be done. The thread that made the server.
  void OpenSsh();
  void OpenWebSocket();
  // Nothing either where the content has no pictures.
  void OpenPictures();
  // "telnet://127.0.0.1:PORT"
  std::string Address() const;
  // Of every road that is served, telnet first, then the web sites'.
  std::vector<std::string> Addresses() const;
  // 0 and empty when they are not served.
  std::uint16_t PicturePort() const;
  // The names that these web sites have in articles, in lower case.
  std::vector<std::string> PictureHosts() const;
  // 0 and empty without that door.
  std::uint16_t WebSocketPort() const;
  // "wss://127.0.0.1:PORT/bbs"
  std::string WebSocketAddress() const;
  // PEM: the certificate authority by which a client knows the WebSocket door to be this server's.
  const std::string& CertificateAuthority() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace quillet
