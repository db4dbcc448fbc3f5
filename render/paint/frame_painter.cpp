#include "render/paint/frame_painter.h"

#include <algorithm>

#include "render/paint/canvas.h"
#include "render/paint/drawn_row.h"
#include "render/paint/glyph_cache.h"
#include "render/paint/picture_painter.h"
#include "render/paint/row_marks.h"
#include "render/paint/row_painter.h"
#include "render/paint/warm_up.h"

namespace quillet {
namespace {

constexpr std::size_t kCacheBudget = 96u << 20;
constexpr std::size_t kWarmUpBudget = kCacheBudget / 2;
constexpr std::uint8_t kGroundIndex = 16;
constexpr std::uint8_t kOutlineIndex = 8;

LookColours ColoursFor(const DisplaySettings& settings) {
  return LookColours(PaletteOf(PaletteKindFor(settings)), settings.lighterDarkBlue);
}

const FramePicture* PictureIn(const std::vector<FramePicture>& pictures, int row) {
  for (const FramePicture& picture : pictures)
    if (picture.Covers(row)) return &picture;
  return nullptr;
}

PictureStrip StripOf(const FrameState& frame, int row, int rowHeight) {
  const FramePicture* const picture = PictureIn(frame.pictures, row);
  if (picture == nullptr || picture->size.IsEmpty()) return {};
  return {.key = picture->image.isNull() ? 0 : picture->image.cacheKey(),
          .top = PictureGap(rowHeight) - (row - picture->firstRow) * rowHeight,
          .size = picture->size,
          .sign = picture->sign};
}

RowExtras ExtrasOf(const FrameState& frame, int row, int rowHeight) {
  const PageRow& page = frame.page[static_cast<std::size_t>(row)];
  const bool marked = !page.age.empty() || !page.tag.empty();
  return {.caret = frame.caretRow == row ? Caret{frame.caretCol, frame.caretShape} : Caret{},
          .blinkOff = frame.blinkOff,
          .rightInset = marked ? std::max(frame.rightInset, 0) : 0,
          .strip = StripOf(frame, row, rowHeight)};
}

// What one frame is drawn with.
struct Brush {
  Canvas canvas;
  SheetPair sheets;

  GlyphSheet& SheetOf(RowSize size) const { return size == RowSize::kPush ? sheets.push : sheets.ordinary; }
};

}  // namespace

struct FramePainter::Impl {
  DisplaySettings settings;
  LayoutMode mode = LayoutMode::kOrdinary;
  GlyphCache cache{kCacheBudget};
  LabelCache labels;
  BackdropPainter backdrop;
  std::vector<FramePicture> pictures;  // of the frame that is drawn
  WarmUpRun warmUp;
  WarmUpRun warmUpPush;
  Layout layout;
  LookColours colours{PaletteOf(PaletteKind::kNormal)};
  Ground ground;
  QImage image;
  bool everythingStale = true;
  std::array<DrawnRow, kRows> drawn;

  void TakeFaces();
  void ApplyLayout(int width, int height);
  void DecodeGround(double progress);
  SheetPair Sheets();
  RowPlace PlaceOf(int row, RowSize size) const;
  QRect BandOf(int row) const;
  bool IsDrawn(const FrameState& frame, int row) const;
  int FirstStaleRow(const FrameState& frame) const;
  DrawnRow Resolve(const FrameState& frame, int row) const;
  void PaintAll(Brush& brush, const FrameState& frame);
  QRegion PaintChanges(Brush& brush, const FrameState& frame, int first);
  void PaintBand(Brush& brush, int row);
  void PaintStrip(int row);
  void PaintCells(Brush& brush, int row, const RowChange& change);
};

FramePainter::FramePainter() : impl_(std::make_unique<Impl>()) {
  impl_->TakeFaces();
  impl_->ApplyLayout(1, 1);
}

FramePainter::~FramePainter() = default;

void FramePainter::ApplySettings(const DisplaySettings& settings) {
  const bool facesChange =
      settings.font != impl_->settings.font || settings.smoothFont != impl_->settings.smoothFont;
  impl_->settings = settings;
  impl_->colours = ColoursFor(settings);
  if (facesChange) impl_->TakeFaces();
  impl_->ApplyLayout(impl_->image.width(), impl_->image.height());
}

void FramePainter::SetLayoutMode(LayoutMode mode) {
  if (mode == impl_->mode) return;
  impl_->mode = mode;
  impl_->ApplyLayout(impl_->image.width(), impl_->image.height());
}

void FramePainter::SetBackdrop(Backdrop backdrop) {
  impl_->backdrop.Set(std::move(backdrop));
  impl_->everythingStale = true;
}

void FramePainter::Resize(int width, int height) {
  width = std::max(width, 1);
  height = std::max(height, 1);
  if (impl_->image.size() != QSize(width, height)) impl_->ApplyLayout(width, height);
}

void FramePainter::Impl::TakeFaces() {
  const QStringList families = FaceFamilies(QString::fromStdU16String(settings.font));
  cache.SetFaces(families, settings.smoothFont);
  labels.SetFaces(families, settings.smoothFont);
}

void FramePainter::Impl::ApplyLayout(int width, int height) {
  layout = RecalcLayout({.width = width,
                         .height = height,
                         .lineSpacing = settings.lineSpacing,
                         .pushLineSpacing = settings.pushLineSpacing,
                         .mode = mode,
                         .zoomPercent = settings.zoom,
                         .atTopLeft = settings.work});
  if (image.size() != QSize(width, height)) image = QImage(width, height, QImage::Format_RGB32);
  warmUp.Restart();
  warmUpPush.Restart();
  everythingStale = true;
}

// A moving picture that has moved makes everything stale.
void FramePainter::Impl::DecodeGround(double progress) {
  const std::uint32_t colour = colours.At(kGroundIndex);
  const Ground wanted =
      settings.work ? Ground{.colour = colour} : backdrop.Prepare(image.size(), progress, colour);
  if (wanted == ground) return;
  ground = wanted;
  everythingStale = true;
}

SheetPair FramePainter::Impl::Sheets() {
  const int height = std::max(layout.rowHeight, 1);
  return cache.Select({layout.fontSize, height}, {layout.pushFontSize, height});
}

RowPlace FramePainter::Impl::PlaceOf(int row, RowSize size) const {
  const RowGrid grid = GridOf(layout, size);
  return {
      .left = grid.left, .top = RowTop(layout, row), .halfCell = grid.halfCell, .height = layout.rowHeight};
}

// The row's part of the window, margins included.
QRect FramePainter::Impl::BandOf(int row) const {
  return {0, RowTop(layout, row), image.width(), layout.rowHeight};
}

bool FramePainter::Impl::IsDrawn(const FrameState& frame, int row) const {
  const auto index = static_cast<std::size_t>(row);
  return drawn[index].extras == ExtrasOf(frame, row, layout.rowHeight) &&
         SameRow(drawn[index].page, frame.page[index]);
}

int FramePainter::Impl::FirstStaleRow(const FrameState& frame) const {
  int row = 0;
  while (!everythingStale && row < kRows && IsDrawn(frame, row))
    ++row;
  return row;
}

DrawnRow FramePainter::Impl::Resolve(const FrameState& frame, int row) const {
  const PageRow& page = frame.page[static_cast<std::size_t>(row)];
  const RowExtras extras = ExtrasOf(frame, row, layout.rowHeight);
  return {page, extras, ResolveRow(page, extras.caret, extras.blinkOff, Charset(), colours),
          ResolveMargin(page, colours)};
}

QRegion FramePainter::Update(const FrameState& frame) {
  Impl& impl = *impl_;
  impl.DecodeGround(frame.progress);
  const int first = impl.FirstStaleRow(frame);
  if (first == kRows) return {};
  impl.pictures = frame.pictures;
  Brush brush{Canvas(impl.image, impl.ground), impl.Sheets()};
  if (!impl.everythingStale) return impl.PaintChanges(brush, frame, first);
  impl.PaintAll(brush, frame);
  return QRegion(impl.image.rect());
}

void FramePainter::Impl::PaintAll(Brush& brush, const FrameState& frame) {
  const int gridBottom = RowTop(layout, kRows);
  brush.canvas.ShowGround({0, 0, image.width(), RowTop(layout, 0)});
  brush.canvas.ShowGround({0, gridBottom, image.width(), image.height() - gridBottom});
  for (int row = 0; row < kRows; ++row) {
    drawn[static_cast<std::size_t>(row)] = Resolve(frame, row);
    PaintBand(brush, row);
  }
  everythingStale = false;
}

QRegion FramePainter::Impl::PaintChanges(Brush& brush, const FrameState& frame, int first) {
  QRegion changed;
  for (int row = first; row < kRows; ++row) {
    if (IsDrawn(frame, row)) continue;
    DrawnRow& line = drawn[static_cast<std::size_t>(row)];
    DrawnRow wanted = Resolve(frame, row);
    const int room = GridOf(layout, wanted.page.size).left;
    const RowChange change = ChangeOf(line, wanted, !PennantsFit(wanted.page.pennants, room));
    line = std::move(wanted);
    if (change.Empty() || layout.rowHeight == 0) continue;
    if (change.band)
      PaintBand(brush, row);
    else
      PaintCells(brush, row, change);
    const QRect part =
        change.band ? BandOf(row) : PlaceOf(row, line.page.size).Cells(change.first, change.last);
    changed += part & image.rect();
  }
  return changed;
}

void FramePainter::Impl::PaintBand(Brush& brush, int row) {
  if (layout.rowHeight == 0) return;
  const DrawnRow& line = drawn[static_cast<std::size_t>(row)];
  const RowPlace place = PlaceOf(row, line.page.size);
  GlyphSheet& sheet = brush.SheetOf(line.page.size);
  brush.canvas.ClipTo(BandOf(row));
  RowPainter cells(brush.canvas, place, sheet);
  cells.PaintMargins(line.margin);
  cells.PaintCells(line.look, 0, kCols);
  const MarkKit kit{brush.canvas, labels, colours, image.width() - line.extras.rightInset};
  RowMarks marks(kit, place, line);
  marks.PaintPennants();
  cells.PaintCaret(line.look, 0, kCols);
  marks.PaintAge(sheet);
  marks.PaintTag(cells);
  PaintStrip(row);
}

void FramePainter::Impl::PaintStrip(int row) {
  const PictureStrip& strip = drawn[static_cast<std::size_t>(row)].extras.strip;
  const FramePicture* const picture = PictureIn(pictures, row);
  if (picture == nullptr || strip.size.IsEmpty()) return;
  const bool dim = PaletteKindFor(settings) == PaletteKind::kDark;
  const QRect band = BandOf(row);
  PaintPicture(image, band, {std::max(layout.originX, 0), band.top() + strip.top}, *picture,
               colours.At(kOutlineIndex), dim ? PictureLight::kDim : PictureLight::kFull);
}

void FramePainter::Impl::PaintCells(Brush& brush, int row, const RowChange& change) {
  const DrawnRow& line = drawn[static_cast<std::size_t>(row)];
  const RowPlace place = PlaceOf(row, line.page.size);
  brush.canvas.ClipTo(BandOf(row));
  RowPainter cells(brush.canvas, place, brush.SheetOf(line.page.size));
  cells.PaintCells(line.look, change.first, change.last);
  cells.PaintCaret(line.look, change.first, change.last);
}

bool FramePainter::WarmUp(int milliseconds) {
  Impl& impl = *impl_;
  if (impl.layout.rowHeight == 0) return false;
  const SheetPair sheets = impl.Sheets();
  if (&sheets.ordinary == &sheets.push)
    return impl.warmUp.Continue(sheets.ordinary, milliseconds, kWarmUpBudget);
  return impl.warmUp.Continue(sheets.ordinary, milliseconds, kWarmUpBudget / 2) ||
         impl.warmUpPush.Continue(sheets.push, milliseconds, kWarmUpBudget / 2);
}

const QImage& FramePainter::Image() const {
  return impl_->image;
}

const Layout& FramePainter::CurrentLayout() const {
  return impl_->layout;
}

QRect FramePainter::CellRect(int row, int col) const {
  const bool known = row >= 0 && row < kRows;
  const RowSize size = known ? impl_->drawn[static_cast<std::size_t>(row)].page.size : RowSize::kOrdinary;
  return impl_->PlaceOf(row, size).Cells(col, col + 1);
}

}  // namespace quillet
