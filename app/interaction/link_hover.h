// The link under the pointer: underlined in the picture, its target told at the window's lower edge; and all
// links that are in sight, for the keyboard. User-interface thread.
#pragma once

#include <optional>
#include <vector>

#include <QPainter>
#include <QRectF>
#include <QString>

#include "app/overlay/panel_look.h"
#include "app/page/picture_lines.h"
#include "core/term_session.h"
#include "input/link_finder.h"
#include "render/page_row.h"

namespace quillet {

class LinkHover {
 public:
  // `text` outlives the object.
  LinkHover(const PictureLines& text, WebHosts hosts);

  // `cell`: its row is the picture's; nothing: the pointer is elsewhere. Returns whether the picture is
  // different.
  bool SetPointer(std::optional<CellPosition> cell);
  // The pointer stays, but other text may lie under it.
  bool Refresh() { return SetPointer(cell_); }
  std::optional<TextLink> LinkAt(int row, int col) const;
  const std::optional<TextLink>& Current() const { return current_; }
  // Every link in the rows of the picture, top to bottom, each target once.
  std::vector<TextLink> LinksInSight() const;

  // Underlines the current link.
  void Decorate(Page& page) const;
  // Where it leads, over the lower edge of `area`, which the picture fills; away from the link. Nothing while
  // there is none. `unit` is the height of a text row, in the painter's units.
  void Paint(QPainter& painter, const QRectF& area, qreal unit, const panel_look::Colours& colours) const;
  // For people: the article, or the very address that will be opened.
  static QString TargetOf(const TextLink& link);

 private:
  std::vector<TextLink> LinksIn(int row) const;

  const PictureLines& text_;
  WebHosts hosts_;
  std::optional<CellPosition> cell_;
  int row_ = -1;
  std::optional<TextLink> current_;
};

}  // namespace quillet
