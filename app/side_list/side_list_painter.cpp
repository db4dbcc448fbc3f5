#include "app/side_list/side_list_painter.h"

#include <algorithm>
#include <cmath>

#include "platform/clock.h"

namespace quillet {
namespace {

// In titles' heights.
constexpr double kFolderIndent = 1.2;
constexpr int kDeepestIndent = 6;

QString EmptyText(ArticleListKind kind) {
  switch (kind) {
    case ArticleListKind::kHot:
      return QStringLiteral("目前沒有熱門文章");
    case ArticleListKind::kTracked:
      return QStringLiteral("目前沒有追蹤中的文章");
    case ArticleListKind::kBookmarks:
      break;
  }
  return QStringLiteral("還沒有書籤\n閱讀文章時選「加入書籤 (m)」，就會收在這裡");
}

void PaintEntry(QPainter& painter, const QRectF& place, const SideListPicture& picture, int index,
                EmbeddedImages& images) {
  const SideListEntry& entry = picture.entries[static_cast<std::size_t>(index)];
  CardLook look = picture.look;
  look.selected = index == picture.state.selected;
  look.indent = std::round(std::min(entry.depth, kDeepestIndent) * kFolderIndent * look.font.pixelSize());
  if (entry.item != nullptr) {
    look.keepBoard = entry.item->title.empty();
    const CardColours colours = look.compact ? CardColours::kAlternative : CardColours::kUsual;
    PaintCard(painter, place, DescribeCard(*entry.item, colours, SecondsNow()),
              QString::fromStdU16String(entry.item->board), look, images);
    return;
  }
  const auto* const folder = std::get_if<ArticleFolder>(EntryAt(picture.root, entry.path));
  PaintFolder(painter, place, QString::fromStdU16String(entry.folderName), ArticlesIn(*folder), look, images);
}

// One more than there is room for, so that the list is seen to go on.
void PaintEntries(QPainter& painter, const SideListPicture& picture, EmbeddedImages& images) {
  const QRectF& list = picture.frame.List();
  const double height = picture.frame.RowHeight();
  painter.save();
  painter.setClipRect(list);
  const int end = std::min(picture.state.count, picture.top + picture.state.shown + 1);
  for (int index = picture.top; index < end; ++index) {
    const double y = list.top() + (index - picture.top) * height;
    PaintEntry(painter, QRectF(list.left(), y, list.width(), height), picture, index, images);
  }
  painter.restore();
}

void PaintEmpty(QPainter& painter, const SideListPicture& picture) {
  const QFont& font = picture.frame.Font();
  painter.setFont(font);
  painter.setPen(QColor(ListColoursOf(*picture.look.palette, picture.look.compact).quiet));
  const double margin = font.pixelSize();
  painter.drawText(picture.frame.List().adjusted(margin, margin, -margin, -margin),
                   Qt::AlignCenter | Qt::TextWordWrap | Qt::TextWrapAnywhere, EmptyText(picture.kind));
}

}  // namespace

void PaintSideList(QPainter& painter, const SideListPicture& picture, EmbeddedImages& images) {
  if (picture.entries.empty())
    PaintEmpty(painter, picture);
  else
    PaintEntries(painter, picture, images);
}

}  // namespace quillet
