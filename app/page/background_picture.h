// Loads the background picture the user chose, from a file or an address, without holding the window: read,
// decoded and scaled down on a worker, with limits on time, bytes and pixels. User-interface thread.
#pragma once

#include <functional>
#include <memory>

#include <QImage>
#include <QObject>
#include <QString>
#include <QThreadPool>

#include "app/page/picture_decoding.h"
#include "media/fetch/file_fetch.h"

namespace quillet {

inline constexpr FetchLimits kBackgroundLimits{.bytes = qint64{20} << 20};

class BackgroundPicture : public QObject {
  Q_OBJECT

 public:
  explicit BackgroundPicture(QObject* parent = nullptr, const FetchLimits& limits = kBackgroundLimits);
  // Waits a moment for a worker that is at it; one that a dead disk holds is left behind.
  ~BackgroundPicture() override;

  // A path as the system takes it, or an address beginning with "http://" or "https://"; empty: none. The
  // earlier picture goes at once. The same source again does nothing.
  void SetSource(const QString& source);
  // Null until it has been loaded. Its longer side has at most kLongestPictureSide pixels.
  const QImage& Picture() const { return picture_; }

 signals:
  // One of the two for every source that no later one replaced; never during SetSource.
  void Loaded();
  // It stays without a picture; `reason` is for the user, in his language.
  void Failed(const QString& source, const QString& reason);

 private:
  struct Task;
  using Work = std::function<DecodedPicture(const std::atomic<bool>& dropped)>;

  void Drop();
  void Download(const QString& address);
  void Decode(Work work);
  // Any thread.
  static void Deliver(const std::shared_ptr<Task>& task, const DecodedPicture& result);
  void Accept(const std::shared_ptr<Task>& task, const DecodedPicture& result);

  FetchLimits limits_;
  QString source_;
  QImage picture_;
  std::shared_ptr<Task> task_;  // of source_, while it is being loaded
  std::unique_ptr<QThreadPool> workers_;
  std::unique_ptr<WebClient> web_;  // made for the first address
  std::unique_ptr<FileFetch> download_;
};

}  // namespace quillet
