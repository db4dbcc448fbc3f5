// The grid on paper: characters of a line in black, drawn with the faces of the window, as outlines, so that
// they are sharp at every printer's resolution; boxes and blocks as the shapes that join. Used by what prints
// articles. User-interface thread.
#pragma once

#include <span>
#include <unordered_map>

#include <QImage>
#include <QPainter>
#include <QStringList>

#include "render/paint/font_chain.h"
#include "render/paint/glyph_rasterizer.h"

namespace quillet {

struct PaperCharacter {
  char16_t unit = u' ';
  GlyphWidth width = GlyphWidth::kHalf;
  int col = 0;  // of its first cell
};

class PaperText {
 public:
  // `families` as FaceFamilies gives them; `halfCell`: the width of a cell in the printer's dots, at least 1.
  PaperText(const QStringList& families, int halfCell);

  int RowHeight() const { return rowHeight_; }
  // The line whose upper left corner is there, in dots, which are the painter's units.
  void Draw(QPainter& painter, QPoint corner, std::span<const PaperCharacter> line);

 private:
  const QImage& ShapeOf(char16_t unit);

  int halfCell_;
  int rowHeight_;
  int baseline_;
  SizedFaces wideFaces_;
  SizedFaces halfFaces_;
  std::unordered_map<char16_t, QImage> shapes_;  // drawn so far; a printer's file holds each once
};

}  // namespace quillet
