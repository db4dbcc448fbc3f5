// The demo BBS inside the program, started when it is first wanted, and the ways to it. Its port is another
// one in each run, and SSH and WebSocket addresses cannot name it, so that these sites make their own
// transport. User-interface thread.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <variant>

#include <QString>

#include "app/session/site.h"
#include "core/endpoints.h"
#include "core/site_address.h"

namespace quillet {

class DemoServer;

// The web sites that the articles of that content link to, as the server has them; none where it serves none.
std::optional<OwnWebSites> WebSitesOf(const DemoServer& demo, const std::filesystem::path& content);

class DemoHost {
 public:
  // Serves the content of that folder, under the names that `hosts` has for the BBS.
  DemoHost(std::filesystem::path contentFolder, Endpoints hosts);
  ~DemoHost();

  // The demo by that way, or why it cannot be had; it is tried anew the next time.
  std::variant<Site, QString> SiteBy(TransportKind way);

 private:
  std::variant<Site, QString> ServedBy(TransportKind way);

  const std::filesystem::path contentFolder_;
  const Endpoints hosts_;
  std::unique_ptr<DemoServer> server_;
};

}  // namespace quillet
