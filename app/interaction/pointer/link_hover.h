// The link under the pointer: underlined in the picture, its target told at the window's lower edge; and all
// links that are in sight, for the keyboard. User-interface thread.
#pragma once

#include <optional>
#include <vector>

#include <QString>

#include "app/overlay/overlay.h"
#include "app/page/picture_lines.h"
#include "core/cell_position.h"
#include "input/text/text_link.h"
#include "render/page_row.h"

namespace quillet {

class LinkHover : public Overlay {
 public:
  // `text` outlives the object.
  LinkHover(const PictureLines& text, WebHosts hosts);

  // `cell`: its row is the picture's; nothing: the pointer is elsewhere. Returns whether the picture is
  // different.
  bool SetPointer(std::optional<CellPosition> cell);
  // The pointer stays, but other text may lie under it.
  bool Refresh() { return SetPointer(cell_); }
  std::optional<TextLink> LinkAt(int row, int col) const;
  // Of a line, whether it is in sight or not; by the column that it begins in.
  std::optional<TextLink> LinkInLine(int line, int firstCol) const;
  const std::optional<TextLink>& Current() const { return current_; }
  // Every link in the rows of the picture, top to bottom, each target once.
  std::vector<TextLink> LinksInSight() const;

  // Underlines the current link.
  void Decorate(Page& page) const;
  // Where it leads is told over the lower edge of the picture, away from the link. Nothing while there is
  // none.
  QRectF Bounds(const OverlayPlace& place) const override;
  void Paint(QPainter& painter, const OverlayPlace& place) override;
  // For people: the article, or the very address that will be opened.
  static QString TargetOf(const TextLink& link);
  // The same behind what it shows, where that is known.
  static QString DescriptionOf(const TextLink& link);

 private:
  std::vector<TextLink> LinksInRow(int row) const { return LinksInLine(text_.LineAtRow(row)); }
  std::vector<TextLink> LinksInLine(int line) const;

  const PictureLines& text_;
  WebHosts hosts_;
  std::optional<CellPosition> cell_;
  int row_ = -1;
  std::optional<TextLink> current_;
};

}  // namespace quillet
