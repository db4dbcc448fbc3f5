// The folder of kept files itself: what lies in it, and in which form. Each file says what its content adds
// up to, so that one which a crash or a bad disk has damaged is told. One thread at a time; blocks as the
// disk does.
#pragma once

#include <QByteArray>
#include <QString>

namespace quillet {

class CacheFolder {
 public:
  explicit CacheFolder(QString path) : path_(std::move(path)) {}

  // Empty where there is none, or a damaged one, which is removed. Counts as a use.
  QByteArray Read(const QString& link) const;
  // Atomically. False where it could not be.
  bool Write(const QString& link, const QByteArray& bytes) const;
  // Removes what was used least recently until no more than this is left. Returns what is left, in bytes.
  // Nothing is touched that this class has not written.
  qint64 Shrink(qint64 mostBytes) const;

 private:
  QString FileOf(const QString& link) const;

  QString path_;
};

}  // namespace quillet
