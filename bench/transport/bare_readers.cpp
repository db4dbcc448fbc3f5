#include "bench/transport/bare_readers.h"

#include <arpa/inet.h>
#include <cpprest/containerstream.h>
#include <cpprest/ws_client.h>
#include <cstdio>
#include <cstdlib>
#include <libssh/libssh.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

#include "core/transport/transport.h"

namespace quillet {
namespace {

namespace library = web::websockets::client;

void Require(bool good, const char* what) {
  if (good) return;
  std::fprintf(stderr, "transport_bench: %s\n", what);
  std::exit(1);
}

}  // namespace

void ReadBareTelnet(std::uint16_t port, char first, const TakeBytes& take) {
  const int stream = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  Require(connect(stream, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0, "no connection");
  Require(send(stream, &first, 1, 0) == 1, "nothing sent");
  std::vector<std::uint8_t> buffer(kReadSize);
  ssize_t count = 0;
  do
    count = recv(stream, buffer.data(), buffer.size(), 0);
  while (count > 0 && take({buffer.data(), static_cast<std::size_t>(count)}));
  close(stream);
}

void ReadBareSsh(std::uint16_t port, char first, const TakeBytes& take) {
  const ssh_session session = ssh_new();
  const unsigned number = port;
  ssh_options_set(session, SSH_OPTIONS_HOST, "127.0.0.1");
  ssh_options_set(session, SSH_OPTIONS_PORT, &number);
  Require(ssh_connect(session) == SSH_OK, "no SSH");
  Require(ssh_userauth_password(session, "bbs", "") == SSH_AUTH_SUCCESS, "no login");
  const ssh_channel channel = ssh_channel_new(session);
  Require(ssh_channel_open_session(channel) == SSH_OK && ssh_channel_request_pty(channel) == SSH_OK &&
              ssh_channel_request_shell(channel) == SSH_OK,
          "no shell");
  ssh_channel_write(channel, &first, 1);
  std::vector<std::uint8_t> buffer(kReadSize);
  int count = 0;
  do
    count = ssh_channel_read(channel, buffer.data(), static_cast<std::uint32_t>(buffer.size()), 0);
  while (count > 0 && take({buffer.data(), static_cast<std::size_t>(count)}));
  ssh_channel_free(channel);
  ssh_disconnect(session);
  ssh_free(session);
}

void ReadBareWebSocket(std::uint16_t port, const std::string& authority, char first, const TakeBytes& take) {
  library::websocket_client_config config;
  config.headers().add(U("Origin"), U("app://quillet"));
  config.set_ssl_context_callback([&authority](boost::asio::ssl::context& context) {
    context.add_certificate_authority(boost::asio::buffer(authority));
  });
  library::websocket_client client(config);
  client.connect(web::uri("wss://127.0.0.1:" + std::to_string(port) + "/bbs")).wait();
  library::websocket_outgoing_message message;
  concurrency::streams::container_buffer<std::vector<std::uint8_t>> sent(
      std::vector<std::uint8_t>{static_cast<std::uint8_t>(first)}, std::ios_base::in);
  message.set_binary_message(sent.create_istream(), 1);
  client.send(message).wait();
  std::vector<std::uint8_t> buffer;
  do {
    const library::websocket_incoming_message received = client.receive().get();
    buffer.resize(received.length());
    auto body = received.body().streambuf();
    buffer.resize(body.scopy(buffer.data(), buffer.size()));
  } while (take(buffer));
  client.close().wait();
}

}  // namespace quillet
