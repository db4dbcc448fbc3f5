#include "media/fetch/png_notes.h"

#include <QByteArrayView>
#include <QtEndian>

namespace quillet {
namespace {

// Of a part: its content's length, its name, the content, a sum.
constexpr qsizetype kLengthSize = 4, kNameSize = 4, kSumSize = 4;
constexpr qsizetype kAround = kLengthSize + kNameSize + kSumSize;
constexpr qsizetype kSignature = 8;

// A capital letter first: without such a part the picture cannot be read. All others may be left out, and
// only transparency would be missed.
bool IsSeen(QByteArrayView name) {
  return (name.front() >= 'A' && name.front() <= 'Z') || name == "tRNS";
}

}  // namespace

QByteArray WithoutNotes(const QByteArray& png) {
  QByteArray plain;
  const QByteArrayView all(png);
  qsizetype at = kSignature, keptTo = 0;
  while (png.startsWith("\x89PNG") && all.size() - at >= kAround) {
    const qsizetype length = qFromBigEndian<quint32>(all.data() + at);
    if (length > all.size() - at - kAround) break;
    const qsizetype end = at + kAround + length;
    if (!IsSeen(all.sliced(at + kLengthSize, kNameSize))) {
      plain += all.sliced(keptTo, at - keptTo);
      keptTo = end;
    }
    at = end;
  }
  return keptTo == 0 ? png : plain.append(all.sliced(keptTo));
}

}  // namespace quillet
