// A site to connect to, and which addresses lead to the same one. A value; any thread.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "core/endpoints.h"
#include "core/transport/transport.h"
#include "media/media_hosts.h"

namespace quillet {

// The web sites of a world of its own, which its articles link to: what each of them is, and where all of
// them answer, which is on this computer alone.
struct OwnWebSites {
  MediaHosts services;
  std::vector<QString> hosts;  // in lower case; none is asked for anywhere else
  quint16 port = 0;            // theirs on 127.0.0.1, by plain HTTP
};

struct Site {
  QString address;
  QString name;  // shown instead of the address when not empty
  // Makes the transport when the address does not: a recording, the demo by some ways, a test's script.
  std::function<std::unique_ptr<Transport>()> makeTransport{};
  // Holds tables of places for its visitors' addresses, which are of a world of its own; empty: they are
  // real.
  std::filesystem::path placesFolder{};
  // Take the place of the configured services while the site is open; empty: links lead into the world.
  std::optional<OwnWebSites> webSites{};
  bool isRecording = false;
  bool isBbs = false;  // the demo's: the BBS, whatever its host is called, and gone with this run

  const QString& ShownName() const { return name.isEmpty() ? address : name; }
  // Its address leads there tomorrow as well.
  bool Lasts() const { return !makeTransport && !isBbs; }
};

// What tells whether two addresses lead to the same site, and what was kept for one may be told to the other:
// the host's name, one name for all of the BBS's own. Empty for an address without a host.
std::u16string SiteKey(const QString& address, const Endpoints& endpoints);
// The same for a site that is opened: the demo's is one, whose address is another in each run.
std::u16string SiteKey(const Site& site, const Endpoints& endpoints);

}  // namespace quillet
