#include "app/window/demo_host.h"

#include <utility>

#include "app/document/media_services.h"
#include "app/document/resources.h"
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

std::optional<OwnWebSites> WebSitesOf(const DemoServer& demo, const std::filesystem::path& content) {
  if (demo.PicturePort() == 0) return std::nullopt;
  OwnWebSites sites{
      .services = MediaHostsOf(WebSitesOfDemo(content)), .hosts = {}, .port = demo.PicturePort()};
  for (const std::string& host : demo.PictureHosts())
    sites.hosts.push_back(QString::fromStdString(host));
  return sites;
}

DemoHost::DemoHost(std::filesystem::path contentFolder, Endpoints hosts)
    : contentFolder_(std::move(contentFolder)), hosts_(std::move(hosts)) {}

DemoHost::~DemoHost() = default;

std::variant<Site, QString> DemoHost::SiteBy(TransportKind way) {
  std::variant<Site, QString> demo = ServedBy(way);
  if (auto* const site = std::get_if<Site>(&demo)) {
    site->placesFolder = PlacesOfDemo(contentFolder_);
    site->webSites = WebSitesOf(*server_, contentFolder_);
  }
  return demo;
}

std::variant<Site, QString> DemoHost::ServedBy(TransportKind way) {
  if (!server_) {
    DemoOptions options;
    options.contentFolder = contentFolder_;
    options.UseNames(hosts_);
    options.picturePort = 0;
    server_ = std::make_unique<DemoServer>(std::move(options));
  }
  // A door costs time at its making and a thread that looks after it: only those that are wanted.
  if (way == TransportKind::kSsh) server_->OpenSsh();
  if (way == TransportKind::kWebSocket) server_->OpenWebSocket();
  if (!server_->Error().empty()) return QString::fromStdString(std::exchange(server_, nullptr)->Error());
  switch (way) {
    case TransportKind::kTelnet:
      break;
    case TransportKind::kSsh: {
      Site site = DemoSite(server_->SshAddress(), u"示範站台（SSH）"_qs);
      site.makeTransport = [port = server_->SshPort()] {
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
