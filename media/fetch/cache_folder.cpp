#include "media/fetch/cache_folder.h"

#include <algorithm>
#include <utility>

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace quillet {
namespace {

// In front of the content: this, and the content's hash.
constexpr char kMark[] = "QPF1";
constexpr qsizetype kMarkSize = 4;
constexpr qsizetype kSumSize = 20;
constexpr qint64 kMostFileBytes = qint64{64} << 20;

QByteArray SumOf(QByteArrayView content) {
  QCryptographicHash hash(QCryptographicHash::Sha1);
  hash.addData(content);
  return hash.result();
}

// Ours, and what a killed run left of one.
bool IsOurs(const QString& name) {
  constexpr qsizetype kHashSize = 64;
  const auto isHex = [](QChar c) { return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f'); };
  const auto isPlain = [](QChar c) { return c.unicode() < 128 && c.isLetterOrNumber(); };
  if (name.size() < kHashSize) return false;
  const QStringView hash = QStringView(name).first(kHashSize), rest = QStringView(name).sliced(kHashSize);
  return std::all_of(hash.begin(), hash.end(), isHex) &&
         (rest.isEmpty() ||
          (rest.size() > 1 && rest.front() == u'.' && std::all_of(rest.begin() + 1, rest.end(), isPlain)));
}

}  // namespace

QString CacheFolder::FileOf(const QString& link) const {
  const QByteArray hash = QCryptographicHash::hash(link.toUtf8(), QCryptographicHash::Sha256);
  return path_ + u'/' + QString::fromLatin1(hash.toHex());
}

QByteArray CacheFolder::Read(const QString& link) const {
  const QString name = FileOf(link);
  if (!QFileInfo(name).isFile()) return {};
  QFile file(name);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray all = file.size() <= kMostFileBytes ? file.readAll() : QByteArray();
  const QByteArrayView content = QByteArrayView(all).sliced(qMin(all.size(), kMarkSize + kSumSize));
  if (!all.startsWith(kMark) || content.isEmpty() || all.mid(kMarkSize, kSumSize) != SumOf(content)) {
    file.close();
    QFile::remove(name);
    return {};
  }
  // Reopened for its time: what is only read may not be touched everywhere.
  file.close();
  if (file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
    file.setFileTime(QDateTime::currentDateTimeUtc(), QFileDevice::FileModificationTime);
  return content.toByteArray();
}

bool CacheFolder::Write(const QString& link, const QByteArray& bytes) const {
  if (!QFileInfo(path_).isDir()) {
    if (!QDir().mkpath(path_)) return false;
    QFile::setPermissions(path_, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
  }
  QSaveFile file(FileOf(link));
  if (!file.open(QIODevice::WriteOnly)) return false;
  file.write(kMark, kMarkSize);
  file.write(SumOf(bytes));
  file.write(bytes);
  return file.commit();
}

qint64 CacheFolder::Shrink(qint64 mostBytes) const {
  // Newest first.
  const QFileInfoList files = QDir(path_).entryInfoList(QDir::Files | QDir::NoSymLinks, QDir::Time);
  qint64 left = 0;
  for (const QFileInfo& file : files) {
    if (!IsOurs(file.fileName())) continue;
    if (left + file.size() > mostBytes && QFile::remove(file.filePath())) continue;
    left += file.size();
  }
  return left;
}

}  // namespace quillet
