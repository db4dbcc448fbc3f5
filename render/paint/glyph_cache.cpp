#include "render/paint/glyph_cache.h"

#include <algorithm>

#include "render/coverage_blend.h"

namespace quillet {
namespace {

constexpr std::size_t kWideSlots = 65536;
constexpr std::size_t kHalfSlots = 128;
constexpr std::size_t kBlockSize = 256 * 1024;

// Rows start at multiples of 8 bytes, the step of the blending loop.
constexpr std::size_t PaddedWidth(int width) {
  return (static_cast<std::size_t>(width) + 7) & ~std::size_t{7};
}

}  // namespace

GlyphSheet::GlyphSheet(MeasuredFaces& faces, CellSize cell, bool smooth)
    : faces_(faces), cell_(cell), smooth_(smooth) {}

GlyphRasterizer& GlyphSheet::Rasterizer() {
  if (!rasterizer_) rasterizer_.emplace(faces_.Families(), faces_.Measures(), cell_, smooth_);
  return *rasterizer_;
}

const std::uint8_t* GlyphSheet::Tile(char16_t unit, GlyphWidth width) {
  const std::uint8_t*& slot = Slot(unit, width);
  if (slot == nullptr) slot = Rasterize(unit, width);
  return slot;
}

bool GlyphSheet::Has(char16_t unit, GlyphWidth width) const {
  if (wide_.empty()) return false;
  return width == GlyphWidth::kWide ? wide_[unit] != nullptr : half_[unit % kHalfSlots] != nullptr;
}

std::ptrdiff_t GlyphSheet::Stride(GlyphWidth width) const {
  return static_cast<std::ptrdiff_t>(
      PaddedWidth(width == GlyphWidth::kWide ? cell_.fontSize : cell_.fontSize / 2));
}

const std::uint8_t*& GlyphSheet::Slot(char16_t unit, GlyphWidth width) {
  if (wide_.empty()) {
    wide_.resize(kWideSlots);
    half_.resize(kHalfSlots);
    bytes_ += (kWideSlots + kHalfSlots) * sizeof(wide_[0]);
  }
  return width == GlyphWidth::kWide ? wide_[unit] : half_[unit % kHalfSlots];
}

const std::uint8_t* GlyphSheet::Rasterize(char16_t unit, GlyphWidth width) {
  const auto stride = static_cast<std::size_t>(Stride(width));
  const std::size_t size = stride * static_cast<std::size_t>(cell_.rowHeight);
  std::uint8_t* bytes = Allocate(size + kCoverageSlack);
  const int columns = width == GlyphWidth::kWide ? cell_.fontSize : cell_.fontSize / 2;
  Rasterizer().Draw(unit, width, {{bytes, size}, stride, columns, cell_.rowHeight});
  return bytes;
}

std::uint8_t* GlyphSheet::Allocate(std::size_t size) {
  if (size > blockFree_) {
    const std::size_t block = std::max(size, kBlockSize);
    blocks_.push_back(std::make_unique<std::uint8_t[]>(block));
    blockNext_ = blocks_.back().get();
    blockFree_ = block;
    bytes_ += block;
  }
  std::uint8_t* bytes = blockNext_;
  blockNext_ += size;
  blockFree_ -= size;
  return bytes;
}

void GlyphCache::SetFaces(const QStringList& families, bool smooth) {
  sheets_.clear();
  faces_ = MeasuredFaces(families);
  smooth_ = smooth;
}

GlyphSheet& GlyphCache::BringToFront(CellSize cell) {
  const auto found = std::find_if(sheets_.begin(), sheets_.end(),
                                  [cell](const GlyphSheet& sheet) { return sheet.Cell() == cell; });
  if (found == sheets_.end())
    sheets_.emplace_front(faces_, cell, smooth_);
  else
    sheets_.splice(sheets_.begin(), sheets_, found);
  return sheets_.front();
}

SheetPair GlyphCache::Select(CellSize ordinary, CellSize push) {
  GlyphSheet* second = &BringToFront(push);
  GlyphSheet* first = &BringToFront(ordinary);
  const std::size_t used = first == second ? 1 : 2;
  while (sheets_.size() > used && Bytes() > budget_)
    sheets_.pop_back();
  if (Bytes() <= budget_) return {*first, *second};
  // What is in use alone has grown past the budget: begin anew.
  sheets_.clear();
  second = &BringToFront(push);
  first = &BringToFront(ordinary);
  return {*first, *second};
}

std::size_t GlyphCache::Bytes() const {
  std::size_t bytes = 0;
  for (const GlyphSheet& sheet : sheets_)
    bytes += sheet.Bytes();
  return bytes;
}

}  // namespace quillet
