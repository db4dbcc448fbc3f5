// The pictures behind links: fetched, decoded and kept as long as they are wanted and memory allows. The
// window tells it what it wants, asks it when it draws, and hears what has changed. User-interface thread,
// which it never holds up: the network, the disk and decoding have threads of their own.
//
// Of a link nothing is asked before somebody wishes for it. Nobody but the hosts that the link leads to hears
// of it; they get no cookie, no referrer, and the same user agent from everybody. Hosts of private networks
// and of this computer are never asked, whatever leads there: see guarded_door.h for how that is ensured.
#pragma once

#include <memory>
#include <vector>

#include <QObject>

#include "media/fetch/fetch_options.h"
#include "media/fetch/picture_wish.h"

namespace quillet {

class StoreWork;

class PictureStore : public QObject {
  Q_OBJECT

 public:
  explicit PictureStore(PictureStoreOptions options, QObject* parent = nullptr);
  ~PictureStore() override;

  void SetBehavior(const FetchBehavior& behavior);
  // Of the files that are asked for from now on.
  void SetHosts(const MediaHosts& hosts);
  void SetLoopbackHosts(const std::vector<LoopbackHost>& hosts);

  // All that the user wants now, most urgent first; six files are fetched at once. What nobody lists any more
  // is cancelled; what has been decoded stays within the memory's bound, least recently listed go first. What
  // is listed beyond that bound is fetched, and decoded when it comes further to the front.
  void SetWishes(PictureUser user, std::vector<PictureWish> wishes);

  // What there is for these bounds: where the picture has not been decoded for them yet, the nearest that it
  // has been decoded to.
  PictureNow Look(const QString& link, const PictureBounds& bounds) const;

  // Forgets why it failed. Fetches it where somebody wants it.
  void TryAgain(const QString& link);

  // Reads a file where it is no longer in memory, which is for an act of the user's and not for drawing.
  PictureFile FileOf(const QString& link) const;

  void EmptyDiskCache();
  // Bytes, as last counted: DiskCacheCounted tells when there is another number.
  qint64 DiskCacheSize() const;

 signals:
  // Anything of PictureNow. Never during a call; at most once for a link and turn of the event loop.
  void Changed(const QString& link);
  void DiskCacheCounted(qint64 bytes);

 private:
  std::unique_ptr<StoreWork> work_;
};

}  // namespace quillet
