// The files of pictures that have been fetched, kept in a folder of the user's between runs: each under a
// hash of its link, the least recently used going first beyond a bound. Several programs may share the
// folder. Called on the thread that owns it, which it never holds up: workers of its own read and write, each
// one thing after the other. Nothing that is to be read waits until what has been written is safe.
#pragma once

#include <functional>
#include <memory>

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QThreadPool>

namespace quillet {

class DiskCache : public QObject {
  Q_OBJECT

 public:
  // The folder is made for the first file, readable for its user only; where it cannot be made, nothing is
  // kept. An empty folder: none.
  DiskCache(QString folder, qint64 mostBytes, QObject* parent = nullptr);
  // Waits a moment for the workers; what a dead disk holds is left behind.
  ~DiskCache() override;

  bool HasFolder() const { return !folder_.isEmpty(); }
  // False also once a file could not be kept.
  bool IsKeeping() const { return HasFolder() && !hasFailed_; }
  // Empty where there is none, or a damaged one, which is taken away.
  void Read(const QString& link, std::function<void(QByteArray)> deliver);
  // False to `deliver` where it could not be kept.
  void Keep(const QString& link, const QByteArray& bytes, std::function<void(bool)> deliver);
  void Empty();
  // Counts anew, for Counted.
  void Count();
  // The same as Read, at once, by the disk's leave.
  QByteArray ReadNow(const QString& link) const;

 signals:
  void Counted(qint64 bytes);

 private:
  void Change(std::function<qint64()> work);

  QString folder_;
  qint64 mostBytes_;
  bool hasFailed_ = false;
  std::unique_ptr<QThreadPool> reader_;
  std::unique_ptr<QThreadPool> writer_;
};

}  // namespace quillet
