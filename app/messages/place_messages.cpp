#include "app/messages/place_messages.h"

#include <QStringList>

#include "render/place_row.h"

namespace quillet {

QString DescribePlace(std::u16string_view place) {
  const PlaceText text = ReadPlaceText(place);
  QStringList parts(text.isKnown
                        ? QString::fromUtf16(text.name.data(), static_cast<qsizetype>(text.name.size()))
                        : u"不知道這個位址在哪裡"_qs);
  if (text.isUncertain) parts << u"#：兩份資料說法不同，地點不一定對"_qs;
  if (text.mark == u"*VPN") parts << u"*VPN：位址屬於 VPN 服務"_qs;
  if (text.mark == u"*pxy") parts << u"*pxy：經由代理伺服器或資料中心發文"_qs;
  return parts.join(u"　"_qs);
}

}  // namespace quillet
