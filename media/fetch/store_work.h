// The store's own work: what is started, in which order, and what becomes of what comes. User-interface
// thread.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include <QHash>
#include <QObject>
#include <QSet>
#include <QThread>
#include <QThreadPool>
#include <QTimer>

#include "media/fetch/animation_clock.h"
#include "media/fetch/disk_cache.h"
#include "media/fetch/fetch_engine.h"
#include "media/fetch/picture_decoder.h"
#include "media/fetch/picture_shelf.h"
#include "media/fetch/picture_store.h"

namespace quillet {

class StoreWork : public QObject {
  Q_OBJECT

 public:
  explicit StoreWork(PictureStoreOptions options);
  // Waits a moment for the workers; what holds them longer is left behind.
  ~StoreWork() override;

  void SetBehavior(const FetchBehavior& behavior);
  void SetHosts(const MediaHosts& hosts);
  void SetLoopbackHosts(const std::vector<LoopbackHost>& hosts);
  void SetWishes(PictureUser user, std::vector<PictureWish> wishes);
  PictureNow Look(const QString& link, const PictureBounds& bounds) const;
  void TryAgain(const QString& link);
  PictureFile FileOf(const QString& link) const;
  void EmptyDiskCache();
  qint64 DiskCacheSize() const { return diskCacheSize_; }

 signals:
  void Changed(const QString& link);
  void DiskCacheCounted(qint64 bytes);

 private:
  // How much of what is wanted is served in this turn.
  struct Turn {
    qint64 held = 0;  // that the wishes so far take, in bytes
    std::vector<QString> order;
  };

  template <typename Call>
  void OnEngine(Call call);
  void StartThreads();
  void Schedule();
  void RunTurn();
  void NoteWishes(Turn& turn);
  void CancelUnlisted();
  void Serve(const PictureWish& wish, Turn& turn);
  void ServeFile(const QString& link, ShelvedPicture& picture, bool fits);
  void ServeImage(const PictureWish& wish, ShelvedPicture& picture, bool fits);
  void Seek(const QString& link, ShelvedPicture& picture);
  void Fetch(const QString& link, ShelvedPicture& picture, ChaseGoal goal);
  bool HasDecoderFor(const ShelvedPicture& picture) const;
  void Decode(const QString& link, ShelvedPicture& picture, const PictureBounds& bounds);
  void KeepFiles();
  void PutFilesAway(const Turn& turn);

  void OnCame(quint64 id, const ChaseNews& news);
  void OnFound(quint64 id, const ChaseFind& find);
  void OnTold(quint64 id, const VideoFacts& facts);
  void OnOver(quint64 id);
  void Take(const QString& link, ShelvedPicture& picture, const QByteArray& file);
  void OnDecoded(const QString& link, const std::shared_ptr<std::atomic<bool>>& dropped, QSize wanted,
                 const DecodedFile& decoded);
  void ShowPartial(const QString& link, ShelvedPicture& picture, const QByteArray& bytes);
  void Fail(const QString& link, ShelvedPicture& picture, PictureFault fault);
  void Tell(const QString& link);
  void TellAll();

  PictureStoreOptions options_;
  FetchBehavior behavior_;
  std::array<std::vector<PictureWish>, kPictureUsers> wishes_;
  PictureShelf shelf_;
  std::uint64_t turn_ = 0;
  QTimer turnTimer_, tellTimer_;
  QSet<QString> toTell_;

  QThread network_;
  FetchEngine* engine_ = nullptr;  // lives on network_, from the first wish on
  quint64 lastFetch_ = 0;
  QHash<quint64, QString> fetches_;
  int seeks_ = 0, decodes_ = 0;
  qint64 workBytes_ = 0;  // that the decoders have
  QSet<QString> decoding_;
  bool isShowingPartial_ = false;

  std::unique_ptr<QThreadPool> decoders_;
  std::unique_ptr<QThreadPool> animators_;
  AnimationClock clock_;
  QHash<QString, QSize> playing_;
  DiskCache disk_;
  QSet<QString> toKeep_;  // that have been fetched, and are to go to the disk
  qint64 diskCacheSize_ = 0;
};

}  // namespace quillet
