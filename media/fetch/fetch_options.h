// How pictures are fetched and how much of them is kept. Plain values; any thread.
#pragma once

#include <cstdint>
#include <vector>

#include <QString>

#include "media/media_hosts.h"

namespace quillet {

enum class FetchStrategy : std::uint8_t {
  kManyConnections,  // HTTP/1.1, several connections for each host
  kOneConnection     // HTTP/2 where the host speaks it: many files at once over one connection
};

enum class PartialPictures : std::uint8_t {
  kHidden,  // a picture is shown once its file has come
  kShown    // what has come of it is shown meanwhile, where the format can
};

// What the user may change at any moment.
struct FetchBehavior {
  FetchStrategy strategy = FetchStrategy::kOneConnection;
  PartialPictures partial = PartialPictures::kHidden;

  bool operator==(const FetchBehavior&) const = default;
};

// A host of the demo's: http and https addresses of this name without a port are asked for at 127.0.0.1 and
// this port, by plain HTTP with the name as Host. Nothing else on this computer is ever asked.
struct LoopbackHost {
  QString host;  // in lower case
  quint16 port = 0;
};

struct FetchLimits {
  int silenceMs = 20'000;  // without a byte
  int totalMs = 180'000;   // for a server that sends a byte now and then
  qint64 bytes = qint64{30} << 20;
  int redirects = 5;  // for one file
};

struct PictureStoreOptions {
  MediaHosts hosts;
  std::vector<LoopbackHost> loopbackHosts;
  QString cacheFolder;                     // made when needed; empty: nothing is kept in files
  qint64 memoryBytes = qint64{256} << 20;  // decoded pictures, and files that are kept in memory
  qint64 diskBytes = qint64{200} << 20;
  FetchLimits limits;
};

}  // namespace quillet
