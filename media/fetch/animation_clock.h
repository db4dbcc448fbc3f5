// What moves, moved by one clock: each animation shows its frame for as long as the file says, and no frame
// is left out when the machine is slow. Frames are decoded ahead on workers, a few at a time; those of a
// small animation are kept after its first pass. User-interface thread. Nothing ticks while nothing plays.
#pragma once

#include <map>
#include <memory>

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>

#include "media/fetch/picture_bounds.h"

namespace quillet {

class AnimationClock : public QObject {
  Q_OBJECT

 public:
  // `workers` outlives the object.
  explicit AnimationClock(QThreadPool& workers, QObject* parent = nullptr);
  ~AnimationClock() override;

  // Goes on where it is when it plays already for these bounds.
  void Play(const QString& link, const QByteArray& file, const PictureBounds& bounds);
  void Stop(const QString& link);
  // The frame of now; null: none has been decoded yet, or nothing plays.
  QImage FrameOf(const QString& link) const;
  // Frames and files held, in bytes.
  qint64 Bytes() const;

 signals:
  void Moved(const QString& link);

 private:
  struct Player;

  void Tick();
  void Advance(const QString& link, Player& player);
  void DecodeAhead(const QString& link, Player& player);
  void SetTimer();

  QThreadPool& workers_;
  QTimer timer_;
  QElapsedTimer time_;
  std::map<QString, std::shared_ptr<Player>> players_;
};

}  // namespace quillet
