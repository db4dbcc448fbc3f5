#include "render/paint/frame_painter.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "render/paint/glyph_cache.h"
#include "render/paint/row_painter.h"
#include "render/paint/warm_up.h"

namespace quillet {
namespace {

constexpr std::size_t kCacheBudget = 96u << 20;
constexpr std::size_t kWarmUpBudget = kCacheBudget / 2;
constexpr int kNoCaret = -1;

// What a row is drawn from.
struct RowInput {
  ScreenRow text;
  ScreenRow attr;
  int caretCol = kNoCaret;
  bool blinkOff = false;

  bool Same(const RowInput& other) const {
    return caretCol == other.caretCol && blinkOff == other.blinkOff &&
           std::memcmp(text.data(), other.text.data(), kCols) == 0 &&
           std::memcmp(attr.data(), other.attr.data(), kCols) == 0;
  }
};

struct DrawnRow {
  RowInput input;
  RowLook look;
};

RowInput InputOf(const FrameState& frame, int row) {
  const auto index = static_cast<std::size_t>(row);
  const ScreenSnapshot& screen = frame.screen;
  const bool caret = frame.showCaret && screen.CursorInside() && screen.cursorRow == row;
  return {screen.text[index], screen.attr[index], caret ? screen.cursorCol : kNoCaret, frame.blinkOff};
}

// The smallest range of cells that holds every difference and cuts no double-width character.
struct CellRange {
  int first = kCols;
  int last = 0;
  bool Empty() const { return first >= last; }
};

CellRange Differences(const RowLook& before, const RowLook& now) {
  CellRange range;
  for (int col = 0; col < kCols; ++col) {
    const auto index = static_cast<std::size_t>(col);
    if (before[index] == now[index]) continue;
    range.first = std::min(range.first, col);
    range.last = col + 1;
  }
  if (range.Empty()) return range;
  if (now[static_cast<std::size_t>(range.first)].part == CellPart::kTrail) --range.first;
  if (now[static_cast<std::size_t>(range.last - 1)].part == CellPart::kLead) ++range.last;
  return range;
}

}  // namespace

struct FramePainter::Impl {
  DisplaySettings settings;
  QStringList families;
  GlyphCache cache{kCacheBudget};
  WarmUpRun warmUp;
  Layout layout;
  QImage image;
  bool everythingStale = true;
  std::array<DrawnRow, kRows> drawn;

  void TakeLayout(int width, int height);
  GlyphSheet& Sheet() { return cache.Select({layout.fontSize, std::max(layout.rowHeight, 1)}); }
  const Palette& Colours() const {
    if (settings.work) return PaletteOf(PaletteKind::kDisguise);
    return PaletteOf(settings.darkColor ? PaletteKind::kDark : PaletteKind::kNormal);
  }
  LookOptions Look(bool blinkOff) const { return {&Colours(), settings.lighterDarkBlue, blinkOff}; }
  QRect CellsRect(int row, int first, int last) const;
  void PaintMargins(RowPainter& painter) const;
  void PaintAll(RowPainter& painter, const FrameState& frame);
  QRegion PaintChanges(RowPainter& painter, const FrameState& frame);
};

FramePainter::FramePainter() : impl_(std::make_unique<Impl>()) {
  impl_->families = FaceFamilies(QString::fromStdU16String(impl_->settings.font));
  impl_->cache.SetFaces(impl_->families, impl_->settings.smoothFont);
  impl_->TakeLayout(1, 1);
}

FramePainter::~FramePainter() = default;

void FramePainter::ApplySettings(const DisplaySettings& settings) {
  const bool facesChange =
      settings.font != impl_->settings.font || settings.smoothFont != impl_->settings.smoothFont;
  impl_->settings = settings;
  if (facesChange) {
    impl_->families = FaceFamilies(QString::fromStdU16String(settings.font));
    impl_->cache.SetFaces(impl_->families, settings.smoothFont);
  }
  impl_->TakeLayout(impl_->image.width(), impl_->image.height());
  impl_->everythingStale = true;
}

void FramePainter::Resize(int width, int height) {
  width = std::max(width, 1);
  height = std::max(height, 1);
  if (impl_->image.size() != QSize(width, height)) impl_->TakeLayout(width, height);
}

void FramePainter::Impl::TakeLayout(int width, int height) {
  layout = RecalcLayout({width, height, settings.lineSpacing, settings.pushLineSpacing});
  if (image.size() != QSize(width, height)) image = QImage(width, height, QImage::Format_RGB32);
  warmUp.Restart();
  everythingStale = true;
}

QRegion FramePainter::Update(const FrameState& frame) {
  Impl& impl = *impl_;
  const bool all = impl.everythingStale;
  if (!all) {
    bool same = true;
    for (int row = 0; row < kRows && same; ++row)
      same = impl.drawn[static_cast<std::size_t>(row)].input.Same(InputOf(frame, row));
    if (same) return {};
  }
  const Canvas canvas{reinterpret_cast<std::uint32_t*>(impl.image.bits()), impl.image.bytesPerLine() / 4,
                      impl.image.width(), impl.image.height()};
  RowPainter painter(canvas, impl.layout, impl.Sheet());
  if (!all) return impl.PaintChanges(painter, frame);
  impl.PaintAll(painter, frame);
  return QRegion(impl.image.rect());
}

void FramePainter::Impl::PaintAll(RowPainter& painter, const FrameState& frame) {
  PaintMargins(painter);
  for (int row = 0; row < kRows; ++row) {
    DrawnRow& line = drawn[static_cast<std::size_t>(row)];
    line.input = InputOf(frame, row);
    line.look =
        ResolveRow(line.input.text, line.input.attr, line.input.caretCol, Charset(), Look(frame.blinkOff));
    if (layout.rowHeight > 0) painter.Paint(row, line.look, 0, kCols);
  }
  everythingStale = false;
}

QRegion FramePainter::Impl::PaintChanges(RowPainter& painter, const FrameState& frame) {
  QRegion changed;
  for (int row = 0; row < kRows; ++row) {
    DrawnRow& line = drawn[static_cast<std::size_t>(row)];
    const RowInput input = InputOf(frame, row);
    if (line.input.Same(input)) continue;
    const RowLook look = ResolveRow(input.text, input.attr, input.caretCol, Charset(), Look(frame.blinkOff));
    const CellRange range = Differences(line.look, look);
    line = {input, look};
    if (range.Empty() || layout.rowHeight == 0) continue;
    painter.Paint(row, look, range.first, range.last);
    changed += CellsRect(row, range.first, range.last) & image.rect();
  }
  return changed;
}

void FramePainter::Impl::PaintMargins(RowPainter& painter) const {
  const std::uint32_t colour = Colours()[16];
  const int gridRight = layout.originX + kCols * layout.halfCell;
  const int gridBottom = layout.originY + kRows * layout.rowHeight;
  painter.Fill(0, 0, image.width(), layout.originY, colour);
  painter.Fill(0, gridBottom, image.width(), image.height() - gridBottom, colour);
  painter.Fill(0, layout.originY, layout.originX, gridBottom - layout.originY, colour);
  painter.Fill(gridRight, layout.originY, image.width() - gridRight, gridBottom - layout.originY, colour);
}

QRect FramePainter::Impl::CellsRect(int row, int first, int last) const {
  return {layout.originX + first * layout.halfCell, layout.originY + row * layout.rowHeight,
          (last - first) * layout.halfCell, layout.rowHeight};
}

bool FramePainter::WarmUp(int milliseconds) {
  return impl_->layout.rowHeight > 0 && impl_->warmUp.Continue(impl_->Sheet(), milliseconds, kWarmUpBudget);
}

const QImage& FramePainter::Image() const {
  return impl_->image;
}

const Layout& FramePainter::CurrentLayout() const {
  return impl_->layout;
}

QRect FramePainter::CellRect(int row, int col) const {
  return impl_->CellsRect(row, col, col + 1);
}

}  // namespace quillet
