#include "render/row_look.h"

#include <algorithm>
#include <utility>

#include "render/contrast.h"
#include "render/shape_glyphs.h"
#include "render/style_colours.h"

namespace quillet {
namespace {

constexpr char16_t kIdeographicSpace = 0x3000;
constexpr std::size_t kBlue = 4;
constexpr std::size_t kBrightBlue = 12;
constexpr std::size_t kPageGround = kPlainGround;
constexpr std::size_t kHeaderGround = 20;
constexpr std::size_t kCaptionGround = 25;
constexpr std::size_t kBarTint = 38;
// Contrast on black 4.8 and 8.0; still told apart from each other and from cyan.
constexpr std::uint32_t kLighterBlue = 0x4C72E0;
constexpr std::uint32_t kLighterBrightBlue = 0x7C9BFF;
constexpr std::uint32_t kLightBar = 0xE0E0E0;
// Of 256: how much of the bar the pointer's row has.
constexpr unsigned kHoverShare = 168;
// Of selected text on a dark page; on a light one it is black on what plain editors use.
constexpr std::size_t kSelectedGround = 32;
constexpr std::size_t kSelectedText = 42;
constexpr std::uint32_t kLightSelection = 0xA9C7EE;
// Below this contrast a caret in the character's own colour is easily missed.
constexpr double kCaretContrast = 3;
constexpr std::uint8_t kMarked = CS_SELECTED | CS_FOUND | CS_FOUND_HERE;
constexpr MarkColours kFoundOnDark{.ground = 0x6B5200, .text = 0xFFFFFF};
constexpr MarkColours kFoundOnLight{.ground = 0xE2E2E2, .text = 0x000000};
constexpr MarkColours kFoundHereOnDark{.ground = 0xFFC23A, .text = 0x000000};
constexpr MarkColours kFoundHereOnLight{.ground = 0xF4CF70, .text = 0x000000};

bool IsBlank(char16_t unit) {
  return unit == u' ' || unit == kIdeographicSpace;
}

bool IsDark(std::uint32_t colour) {
  return Luminance(colour) < 0.18;
}

Palette WithLighterBlue(Palette palette, std::uint32_t ground) {
  if (!IsDark(ground)) return palette;
  palette[kBlue] = ReadableOn(ground, kLighterBlue);
  palette[kBrightBlue] = ReadableOn(ground, kLighterBrightBlue);
  return palette;
}

// What lines are styled in is the client's own doing, so it must not cost anyone the text.
void MakeStyleReadable(Palette& foregrounds, std::uint32_t ground) {
  foregrounds[kReadTitle] = foregrounds[kReadTitleTint];
  for (const std::uint8_t index : {kMyId, kKeywordColour, kPlaceMark, kLighterPushText, kReadTitle})
    foregrounds[index] = ReadableOn(ground, foregrounds[index]);
}

// What is written in the page's own ground colour is meant to be unseen, and stays so.
Palette ReadableOnBar(const Palette& foregrounds, std::uint32_t page, std::uint32_t bar) {
  Palette readable;
  std::transform(foregrounds.begin(), foregrounds.end(), readable.begin(),
                 [=](std::uint32_t colour) { return colour == page ? bar : ReadableOn(bar, colour); });
  return readable;
}

// What stands on the block is written in the ground that the block has taken the place of.
void LayBlock(CellLook& cell) {
  const std::uint32_t block = CaretColour(cell);
  const bool shows = cell.unit != 0 || cell.underline;
  cell.foreground = shows ? ReadableOn(block, cell.background) : 0;
  cell.background = block;
  cell.ground = CellGround::kOpaque;
}

void LayCaret(const Caret& caret, CellLook& cell) {
  if (caret.shape == CaretShape::kBlock)
    LayBlock(cell);
  else
    cell.caret = true;
}

// Columns first to last-1 of the character at the caret; none when it is not in the row.
std::pair<std::size_t, std::size_t> CellsOf(const Caret& caret, const RowLook& row) {
  if (caret.col < 0 || caret.col >= kCols) return {};
  const auto col = static_cast<std::size_t>(caret.col);
  return {row[col].part == CellPart::kTrail ? col - 1 : col,
          row[col].part == CellPart::kLead ? col + 2 : col + 1};
}

bool IsMarked(const PageCell& cell) {
  return (cell.style & kMarked) != 0;
}

bool HasStyleOnOurGround(const PageCell& cell, CellStyle style) {
  return (cell.style & style) != 0 &&
         (cell.back == kPageGround || cell.back == kPushGround || cell.back == kCaptionGround);
}

bool UnderBar(const PageCell& cell) {
  return HasStyleOnOurGround(cell, CS_BAR);
}

// The bar lies over it.
bool UnderHover(const PageCell& cell) {
  return HasStyleOnOurGround(cell, CS_HOVER) && !UnderBar(cell);
}

CellGround GroundOf(const PageCell& cell) {
  if (IsMarked(cell) || UnderBar(cell) || UnderHover(cell)) return CellGround::kOpaque;
  if (cell.back == kPageGround) return CellGround::kPage;
  return cell.back == kPushGround || cell.back == kCaptionGround ? CellGround::kVeil : CellGround::kOpaque;
}

}  // namespace

LookColours::LookColours(const Palette& palette, bool lighterDarkBlue)
    : palette_(palette), onPage_(palette), onPush_(palette), onCaption_(palette), onHeader_(palette) {
  const std::uint32_t page = palette[kPageGround];
  bar_ = IsDark(page) ? MixColours(page, palette[kBarTint], 128) : kLightBar;
  hover_ = MixColours(page, bar_, kHoverShare);
  readableBlue_ = IsDark(page) ? kLighterBlue : palette[kBlue];
  const bool dark = IsDark(page);
  selected_.ground = dark ? palette[kSelectedGround] : kLightSelection;
  selected_.text = dark ? palette[kSelectedText] : 0x000000;
  found_ = dark ? kFoundOnDark : kFoundOnLight;
  foundHere_ = dark ? kFoundHereOnDark : kFoundHereOnLight;
  if (lighterDarkBlue) {
    onPage_ = WithLighterBlue(palette, page);
    onPush_ = WithLighterBlue(palette, palette[kPushGround]);
    onCaption_ = WithLighterBlue(palette, palette[kCaptionGround]);
  }
  MakeStyleReadable(onPage_, page);
  MakeStyleReadable(onPush_, palette[kPushGround]);
  MakeStyleReadable(onCaption_, palette[kCaptionGround]);
  MakeStyleReadable(onHeader_, palette[kHeaderGround]);
  // As near to their ground as can be read.
  signOnPage_ = ReadableOn(page, page);
  signOnPush_ = ReadableOn(palette[kPushGround], palette[kPushGround]);
  onBar_ = ReadableOnBar(onPage_, page, bar_);
  onHover_ = ReadableOnBar(onPage_, page, hover_);
}

std::uint32_t LookColours::At(std::uint8_t index) const {
  return palette_[std::min<std::size_t>(index, palette_.size() - 1)];
}

const MarkColours& LookColours::MarkOf(const PageCell& cell) const {
  if ((cell.style & CS_SELECTED) != 0) return selected_;
  return (cell.style & CS_FOUND_HERE) != 0 ? foundHere_ : found_;
}

std::uint32_t LookColours::Background(const PageCell& cell) const {
  if (IsMarked(cell)) return MarkOf(cell).ground;
  if (UnderHover(cell)) return hover_;
  return UnderBar(cell) ? bar_ : At(cell.back);
}

// Blocks keep their colour: in a picture they lie beside backgrounds of the same blue.
std::uint32_t LookColours::Foreground(const PageCell& cell, char16_t unit) const {
  if (IsMarked(cell)) return MarkOf(cell).text;
  if (IsSign(cell.fore))
    return ReadableOn(Background(cell), cell.back == kPushGround ? signOnPush_ : signOnPage_);
  if (cell.fore >= palette_.size() || IsFilledShape(unit)) return At(cell.fore);
  if (UnderBar(cell)) return onBar_[cell.fore];
  if (UnderHover(cell)) return onHover_[cell.fore];
  if (cell.back == kPageGround) return onPage_[cell.fore];
  if (cell.back == kPushGround) return onPush_[cell.fore];
  if (cell.back == kCaptionGround) return onCaption_[cell.fore];
  if (cell.back == kHeaderGround) return onHeader_[cell.fore];
  return palette_[cell.fore];
}

RowLook ResolveRow(const PageRow& page, const Caret& caret, bool blinkOff, const CharsetTables& tables,
                   const LookColours& colours) {
  const RowCells cells = DecodeRow(page.cells, tables);
  RowLook row;
  for (std::size_t col = 0; col < kCols; ++col) {
    const PageCell& cell = page.cells[col];
    const bool hidden = blinkOff && (cell.style & CS_BLINK) != 0;
    row[col].part = cells[col].part;
    row[col].unit = hidden || IsBlank(cells[col].unit) ? char16_t{0} : cells[col].unit;
    row[col].underline = (cell.style & CS_UNDERLINE) != 0;
    row[col].ground = GroundOf(cell);
    row[col].background = colours.Background(cell);
  }
  const auto [first, last] = CellsOf(caret, row);
  for (std::size_t col = 0; col < kCols; ++col) {
    CellLook& cell = row[col];
    const bool hasCaret = col >= first && col < last;
    if (cell.unit != 0 || hasCaret || cell.underline)
      cell.foreground = colours.Foreground(page.cells[col], cell.unit);
    if (hasCaret) LayCaret(caret, cell);
  }
  return row;
}

CellLook ResolveMargin(const PageRow& page, const LookColours& colours) {
  PageCell last = page.cells.back();
  last.style &= static_cast<std::uint8_t>(~kMarked);
  const bool spans = last.back == kPushGround || (UnderBar(last) && !page.age.empty());
  const PageCell margin = spans ? last : PageCell{};
  return {.ground = GroundOf(margin), .background = colours.Background(margin)};
}

std::uint32_t CaretColour(const CellLook& cell) {
  if (Contrast(cell.foreground, cell.background) >= kCaretContrast) return cell.foreground;
  return IsDark(cell.background) ? 0xFFFFFF : 0x000000;
}

}  // namespace quillet
