// Draws what a side list holds: its cards and folders, or that there are none. The side list view calls it;
// it keeps nothing. User-interface thread.
#pragma once

#include <vector>

#include <QPainter>

#include "app/side_list/side_list_frame.h"
#include "input/side_list.h"
#include "render/paint/card_painter.h"
#include "render/paint/embedded_images.h"

namespace quillet {

struct SideListPicture {
  ArticleListKind kind = ArticleListKind::kHot;
  const ArticleFolder& root;
  const std::vector<SideListEntry>& entries;  // of `root`
  const SideListState& state;
  int top = 0;  // the entry that is drawn first
  const SideListFrame& frame;
  CardLook look;
};

// Within the frame's place for the list.
void PaintSideList(QPainter& painter, const SideListPicture& picture, EmbeddedImages& images);

}  // namespace quillet
