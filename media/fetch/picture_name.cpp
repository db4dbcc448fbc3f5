#include "media/fetch/picture_name.h"

#include <algorithm>
#include <string_view>

#include <QUrl>

#include "media/fetch/picture_header.h"

namespace quillet {
namespace {

constexpr qsizetype kLongestName = 64;

bool IsPlain(QChar c) {
  return c.isLetterOrNumber() || c == u'-' || c == u'_';
}

}  // namespace

QString PictureFileName(const QString& link, const QByteArray& file) {
  QString name = QUrl(link).fileName().section(u'.', 0, 0).left(kLongestName);
  std::replace_if(
      name.begin(), name.end(), [](QChar c) { return !IsPlain(c); }, QChar(u'_'));
  // Short ones may be devices of some systems.
  constexpr qsizetype kLongestDevice = 4;
  if (name.size() <= kLongestDevice) name.prepend(name.isEmpty() ? u"picture" : u"picture-");
  const std::string_view ending =
      EndingOf(ReadPictureHeader({file.constData(), static_cast<std::size_t>(file.size())}).format);
  return name + QLatin1String(ending.data(), static_cast<qsizetype>(ending.size()));
}

}  // namespace quillet
