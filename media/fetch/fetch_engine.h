// The chases that are under way, on a thread of their own, so that neither starting the network's library nor
// a fast server holds the window up. Made anywhere and moved to that thread; every call but the construction
// on it, by queued invocation.
#pragma once

#include <map>
#include <memory>

#include <QObject>
#include <QThreadPool>

#include "media/fetch/fetch_options.h"
#include "media/fetch/picture_chase.h"

namespace quillet {

class FetchEngine : public QObject {
  Q_OBJECT

 public:
  explicit FetchEngine(const FetchLimits& limits) : limits_(limits) {}
  ~FetchEngine() override;

  void SetHosts(const MediaHosts& hosts) { hosts_ = hosts; }
  void SetLoopbackHosts(const std::vector<LoopbackHost>& hosts);
  void SetStrategy(FetchStrategy strategy);

  // `id` is the caller's, and no other's that is under way.
  void Start(quint64 id, const ChaseOrder& order);
  // Nothing more is said of it but what is on its way already.
  void Cancel(quint64 id);

 signals:
  void Came(quint64 id, const ChaseNews& news);
  void Found(quint64 id, const ChaseFind& find);
  void Told(quint64 id, const VideoFacts& facts);
  void Over(quint64 id);

 private:
  WebClient& Web();

  FetchLimits limits_;
  MediaHosts hosts_;
  std::vector<LoopbackHost> loopbackHosts_;
  FetchStrategy strategy_ = FetchStrategy::kOneConnection;
  QThreadPool readers_;
  std::unique_ptr<WebClient> web_;  // made for the first chase
  std::map<quint64, std::unique_ptr<PictureChase>> chases_;
};

}  // namespace quillet
