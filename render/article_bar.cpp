#include "render/article_bar.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/ascii.h"
#include "core/charset.h"
#include "settings/files/text_lines.h"

namespace quillet {
namespace {

struct Tint {
  std::uint8_t fore;  // indices of the palette
  std::uint8_t back;
  std::uint8_t style = 0;
};

// Quieter than the BBS's own bars, and each readable on its ground in all three palettes.
constexpr Tint kGround = {7, 24};
constexpr Tint kPosition = {7, 20};
constexpr Tint kKey = {33, 24};
constexpr Tint kWords = {7, 24};
constexpr Tint kNotice = {28, 24};
constexpr Tint kHoveredKey = {11, 41, CS_UNDERLINE};
constexpr Tint kHoveredWords = {15, 41, CS_UNDERLINE};

constexpr std::u16string_view kNoticeText = u" 此篇有控制碼 ";
constexpr std::u16string_view kRangeEnd = u"行";

constexpr int kGap = 1;  // the blank before each caption

int ColumnsOf(std::u16string_view text) {
  return static_cast<int>(ToBig5(text).size());
}

std::u16string KeyText(const BarCaption& caption) {
  return caption.key == 0 ? std::u16string() : std::u16string{u'(', caption.key, u')'};
}

int ColumnsOf(const BarCaption& caption) {
  return kGap + ColumnsOf(KeyText(caption)) + ColumnsOf(caption.words);
}

// Writes texts into a row from left to right; what would run past the row's end is left out whole.
class RowWriter {
 public:
  RowWriter(PageRow& row, int col) : row_(row), col_(col) {}

  int Col() const { return col_; }
  void MoveTo(int col) { col_ = col; }

  void Put(std::u16string_view text, const Tint& tint) {
    const std::string bytes = ToBig5(text);
    if (std::ssize(bytes) > kCols - col_) return;
    for (const char byte : bytes)
      row_.cells[static_cast<std::size_t>(col_++)] = {static_cast<std::uint8_t>(byte), tint.fore, tint.back,
                                                      tint.style};
  }

  // Blanks up to, not including, `end`.
  void FillTo(int end, const Tint& tint) {
    while (col_ < end)
      Put(u" ", tint);
  }

 private:
  PageRow& row_;
  int col_;
};

std::u16string RightAligned(const std::u16string& text, std::size_t width) {
  return text.size() < width ? std::u16string(width - text.size(), u' ') + text : text;
}

// " 23 / 120 行 ", as wide for every line of an article of up to 999 lines, and whether or not all of it is
// known: the captions behind it stay where they are while it scrolls and grows.
void PutPosition(RowWriter& writer, const ArticleBarInput& input) {
  constexpr std::size_t kUsualDigits = 3;
  const std::u16string lines = ToText(std::max(input.lines, 0));
  const std::size_t digits = std::max(lines.size(), kUsualDigits);
  const std::u16string line = RightAligned(ToText(std::max(input.line, 0)), digits);
  const std::u16string more = input.stillReading ? u"+" : u"";

  const int start = writer.Col();
  writer.Put(u" " + line + u" / " + lines + more + u" 行 ", kPosition);
  const int widest = ColumnsOf(u"  / + 行 ") + static_cast<int>(line.size() + digits);
  writer.FillTo(start + widest, kPosition);
}

// Those of the offers that `room` columns hold; the first one that does not fit takes the later ones with it.
std::span<const BarCaption> CaptionsThatFit(std::span<const BarCaption> offers, int room) {
  std::size_t count = 0;
  while (count < offers.size() && ColumnsOf(offers[count]) <= room)
    room -= ColumnsOf(offers[count++]);
  return offers.first(count);
}

CaptionArea PutCaption(RowWriter& writer, const BarCaption& caption, bool hovered) {
  const int first = writer.Col();
  writer.FillTo(first + kGap, kGround);
  writer.Put(KeyText(caption), hovered ? kHoveredKey : kKey);
  writer.Put(caption.words, hovered ? kHoveredWords : kWords);
  return {first, writer.Col(), caption.command};
}

// Everything right of the position: captions from the left, the notice at the right end.
void PutOffers(RowWriter& writer, const ArticleBarInput& input, std::vector<CaptionArea>& areas) {
  const int notice = input.controlCodes ? ColumnsOf(kNoticeText) : 0;
  const int room = kCols - writer.Col() - notice;
  for (const BarCaption& caption : CaptionsThatFit(input.offers, room))
    areas.push_back(PutCaption(writer, caption, caption.command == input.hovered));
  writer.FillTo(kCols - notice, kGround);
  if (input.controlCodes) writer.Put(kNoticeText, kNotice);
  writer.FillTo(kCols, kGround);
}

// The column behind "第 01~22 行": the first such character that a number stands before.
std::optional<int> EndOfLineRange(const PageRow& row) {
  const std::string wanted = ToBig5(kRangeEnd);
  const auto byteAt = [&row](int col) { return row.cells[static_cast<std::size_t>(col)].byte; };
  bool afterNumber = false;
  for (int col = 0; col < kCols; ++col) {
    const std::uint8_t byte = byteAt(col);
    if (byte > 0x80 && col + 1 < kCols) {
      const char pair[] = {static_cast<char>(byte), static_cast<char>(byteAt(++col))};
      if (afterNumber && std::string_view(pair, sizeof pair) == wanted) return col + 1;
      afterNumber = false;
    } else if (byte != ' ') {
      afterNumber = IsAsciiDigit(byte);
    }
  }
  return std::nullopt;
}

}  // namespace

ArticleBar MakeArticleBar(const ArticleBarInput& input) {
  ArticleBar bar;
  RowWriter writer(bar.row, 0);
  PutPosition(writer, input);
  PutOffers(writer, input, bar.areas);
  return bar;
}

ArticleBar MakeArticleBarOver(const PageRow& statusLine, const ArticleBarInput& input) {
  ArticleBar bar{statusLine, {}};
  const std::optional<int> end = EndOfLineRange(statusLine);
  if (!end) return bar;
  RowWriter writer(bar.row, *end);
  PutOffers(writer, input, bar.areas);
  return bar;
}

int CommandAt(const std::vector<CaptionArea>& areas, int col) {
  for (const CaptionArea& area : areas)
    if (col >= area.first && col < area.last) return area.command;
  return 0;
}

}  // namespace quillet
