// Coverage tiles of the characters drawn so far, by cell size and character. Bounded: whole sizes that were
// not used lately go first. Used by the frame painter. User-interface thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <vector>

#include "render/paint/glyph_rasterizer.h"

namespace quillet {

// All tiles of one cell size.
class GlyphSheet {
 public:
  // `faces` outlives the sheet. They are opened, and anything is allocated, for the first character.
  GlyphSheet(MeasuredFaces& faces, CellSize cell, bool smooth);

  // The tile is rasterised at the first call. It stays where it is as long as the sheet lives.
  const std::uint8_t* Tile(char16_t unit, GlyphWidth width);
  bool Has(char16_t unit, GlyphWidth width) const;

  std::ptrdiff_t Stride(GlyphWidth width) const;
  CellSize Cell() const { return cell_; }
  // Distance of the baseline from the row's top.
  int Baseline() { return Rasterizer().Baseline(); }
  std::size_t Bytes() const { return bytes_; }

 private:
  GlyphRasterizer& Rasterizer();
  const std::uint8_t*& Slot(char16_t unit, GlyphWidth width);
  const std::uint8_t* Rasterize(char16_t unit, GlyphWidth width);
  std::uint8_t* Allocate(std::size_t size);

  MeasuredFaces& faces_;
  CellSize cell_;
  bool smooth_;
  std::optional<GlyphRasterizer> rasterizer_;
  std::vector<const std::uint8_t*> wide_;  // one slot per code unit; null until drawn. Empty: none was yet
  std::vector<const std::uint8_t*> half_;
  std::vector<std::unique_ptr<std::uint8_t[]>> blocks_;
  std::size_t blockFree_ = 0;  // bytes left in the last block
  std::uint8_t* blockNext_ = nullptr;
  std::size_t bytes_ = 0;
};

// The sheets of the two sizes a frame is drawn with; they may be one and the same.
struct SheetPair {
  GlyphSheet& ordinary;
  GlyphSheet& push;
};

class GlyphCache {
 public:
  // `budget` in bytes; the sizes in use may pass it only between two calls of Select.
  explicit GlyphCache(std::size_t budget) : budget_(budget) {}

  // Forgets everything: other faces, or other edges.
  void SetFaces(const QStringList& families, bool smooth);

  // The sheets of two sizes, made where there is none, and nothing else if the budget is used up. The
  // references are good until the next call.
  SheetPair Select(CellSize ordinary, CellSize push);

  std::size_t Bytes() const;

 private:
  GlyphSheet& BringToFront(CellSize cell);

  std::size_t budget_;
  MeasuredFaces faces_{QStringList()};
  bool smooth_ = true;
  std::list<GlyphSheet> sheets_;  // the last used first
};

}  // namespace quillet
