// Asks hosts for files: which strategy, by which way, and what a host is told of the one who asks. On the
// thread that made it.
#pragma once

#include <memory>
#include <vector>

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QUrl>

#include "media/fetch/fetch_options.h"
#include "media/fetch/guarded_door.h"

namespace quillet {

enum class Reach : std::uint8_t {
  kAnyHost,     // for an address of the user's own
  kPublicHosts  // for what stands in a text: by the guarded door
};

class WebClient {
 public:
  explicit WebClient(Reach reach);

  void SetStrategy(FetchStrategy strategy) { strategy_ = strategy; }
  void SetLoopbackHosts(std::vector<LoopbackHost> hosts) { loopbackHosts_ = std::move(hosts); }

  // The reply is the caller's. It ends with an error after `silenceMs` without a byte; redirects are not
  // followed. No cookie or password is sent or kept, nothing says where the address stands, and nothing
  // unpacks itself.
  QNetworkReply* Get(const QUrl& address, int silenceMs);
  // Whether a fetch from there has failed because the host is none that may be asked.
  bool IsPrivate(const QUrl& address) const;

 private:
  const LoopbackHost* LoopbackOf(const QUrl& address) const;

  FetchStrategy strategy_ = FetchStrategy::kOneConnection;
  std::vector<LoopbackHost> loopbackHosts_;
  std::unique_ptr<GuardedDoor> door_;
  // After the door: what goes by it ends first.
  QNetworkAccessManager straight_;
  QNetworkAccessManager guarded_;
};

}  // namespace quillet
