#include "app/window/demo_host.h"

#include <utility>

#include "core/transport/ssh_transport.h"
#include "core/transport/websocket_transport.h"
#include "demo/demo_server.h"

namespace quillet {
namespace {

constexpr const char* kLoopback = "127.0.0.1";

Site DemoSite(const std::string& address, const QString& name) {
  return {.address = QString::fromStdString(address), .name = name, .isBbs = true};
}

}  // namespace

DemoHost::DemoHost(std::filesystem::path contentFolder, Endpoints hosts)
    : contentFolder_(std::move(contentFolder)), hosts_(std::move(hosts)) {}

DemoHost::~DemoHost() = default;

std::variant<Site, QString> DemoHost::SiteBy(TransportKind way) {
  if (!server_) {
    DemoOptions options;
    options.contentFolder = contentFolder_;
    options.sshPort = 0;
    options.webSocketPort = 0;
    options.UseNames(hosts_);
    server_ = std::make_unique<DemoServer>(std::move(options));
  }
  if (!server_->Error().empty()) return QString::fromStdString(std::exchange(server_, nullptr)->Error());
  switch (way) {
    case TransportKind::kTelnet:
      break;
    case TransportKind::kSsh: {
      const std::uint16_t port = server_->SshPort();
      Site site = DemoSite("ssh://127.0.0.1:" + std::to_string(port), u"示範站台（SSH）"_qs);
      site.makeTransport = [port] {
        return std::make_unique<SshTransport>(kLoopback, SshOptions{.port = port});
      };
      return site;
    }
    case TransportKind::kWebSocket: {
      Site site = DemoSite(server_->WebSocketAddress(), u"示範站台（WSS）"_qs);
      // Its certificate is its own, and trusted here alone.
      site.makeTransport = [address = server_->WebSocketAddress(),
                            authority = server_->CertificateAuthority()] {
        return std::make_unique<WebSocketTransport>(address.substr(address.find("//") + 2), authority);
      };
      return site;
    }
  }
  return DemoSite(server_->Address(), u"示範站台"_qs);
}

}  // namespace quillet
