#include "app/page/link_marks.h"

#include <string>

#include "core/screen_snapshot.h"
#include "media/picture_link.h"

namespace quillet {
namespace {

LinkKind KindOf(LinkMedia media) {
  switch (media) {
    case LinkMedia::kNone:
      return LinkKind::kWeb;
    case LinkMedia::kPicture:
      return LinkKind::kPicture;
    case LinkMedia::kPicturePage:
      return LinkKind::kPicturePage;
    case LinkMedia::kShortened:
      return LinkKind::kShortened;
    case LinkMedia::kVideo:
      return LinkKind::kVideo;
  }
  return LinkKind::kWeb;
}

}  // namespace

void LinkMarks::Mark(const ScreenSnapshot& screen, UnderstoodPage& page) const {
  for (int row = 0; row < kRows; ++row)
    for (LinkPlace& place : page.lines[static_cast<std::size_t>(row)].links) {
      if (place.kind == LinkKind::kArticleCode) continue;
      const std::string_view shown =
          screen.RowText(row).substr(place.first, static_cast<std::size_t>(place.last - place.first));
      std::u16string link(shown.begin(), shown.end());
      place.kind = KindOf(ClassifyLink(link, hosts_));
    }
}

}  // namespace quillet
