#include "demo/pages/text_viewer.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "core/charset.h"
#include "demo/big5_text.h"

namespace quillet::demo {
namespace {

constexpr int kRowsShown = kBottomRow;
constexpr int kPageStep = kRowsShown - 1;  // one line of the page before stays in sight
constexpr int kBarEnd = kCols - 1;

// Clients tell the first, a middle and the last page by the background of the left part.
constexpr std::uint8_t kFirstPage = Attr(kYellow, kMagenta, Weight::kBold);
constexpr std::uint8_t kMiddlePage = Attr(kWhite, kCyan, Weight::kBold);
constexpr std::uint8_t kLastPage = Attr(kWhite, kBlue, Weight::kBold);
constexpr std::uint8_t kRange = Attr(kBlue, kWhite);
constexpr std::uint8_t kKeys = Attr(kRed, kWhite);
constexpr std::uint8_t kWords = Attr(kBlack, kWhite);

template <typename... Values>
std::string Format(const char* pattern, Values... values) {
  std::array<char, 48> buffer{};
  std::snprintf(buffer.data(), buffer.size(), pattern, values...);
  return buffer.data();
}

struct Offer {
  std::u16string_view keys;
  std::u16string_view words;
};
constexpr Offer kArticleOffers[] = {
    {u"(y)", u"回應"}, {u"(X%)", u"推文"}, {u"(h)", u"說明"}, {u"(←)", u"離開 "}};
constexpr Offer kTextOffers[] = {{u"  (h)", u"說明 "}, {u"(←/q)", u"離開 "}};

// Right-aligned; offers that find no room behind `from` are left out, the first ones first.
void DrawOffers(Canvas& canvas, std::span<const Offer> offers, int from) {
  const auto width = [](const Offer& offer) {
    return static_cast<int>(ToBig5(offer.keys).size() + ToBig5(offer.words).size());
  };
  int start = kBarEnd;
  std::size_t first = offers.size();
  while (first > 0 && start - width(offers[first - 1]) >= from)
    start -= width(offers[--first]);
  for (const Offer& offer : offers.subspan(first)) {
    start = canvas.Put(kBottomRow, start, offer.keys, kKeys);
    start = canvas.Put(kBottomRow, start, offer.words, kWords);
  }
}

}  // namespace

int TextViewer::LastTop() const {
  return std::max(0, static_cast<int>(text_.rows.size()) - kRowsShown);
}

void TextViewer::ScrollTo(int top) {
  top_ = std::clamp(top, 0, LastTop());
}

void TextViewer::Replace(ReaderText text) {
  text_ = std::move(text);
  ScrollTo(top_);
}

void TextViewer::Draw(Canvas& canvas) const {
  auto line = static_cast<std::size_t>(top_);
  for (int row = 0; row < kRowsShown && line < text_.rows.size(); ++row, ++line)
    canvas.Put(row, 0, text_.rows[line]);
  DrawFooter(canvas);
  canvas.MoveCursor(kBottomRow, kCols - 1);
}

void TextViewer::DrawFooter(Canvas& canvas) const {
  const int total = static_cast<int>(text_.rows.size());
  const int lastRow = std::min(top_ + kRowsShown, total) - 1;
  const int lastLine = text_.LineOf(lastRow);
  const int pages = (LastTop() + kPageStep - 1) / kPageStep + 1;
  const int page = AtEnd() ? pages : top_ / kPageStep + 1;
  const std::uint8_t left = AtEnd() ? kLastPage : AtTop() ? kFirstPage : kMiddlePage;
  const std::string position = ToBig5(u"  瀏覽 第 ") + Format("%d/%d", page, pages) + ToBig5(u" 頁 ") +
                               Format("(%3d%%) ", lastLine * 100 / text_.LineOf(total - 1));
  const std::string range =
      ToBig5(u" 目前顯示: 第 ") + Format("%02d~%02d", text_.LineOf(top_), lastLine) + ToBig5(u" 行");
  canvas.Fill(kBottomRow, 0, kBarEnd, kWords);
  canvas.Fill(kBottomRow, kBarEnd, kCols, kAttrBlank);
  int col = canvas.Put(kBottomRow, 0, position, left);
  col = canvas.Put(kBottomRow, col, range, kRange);
  DrawOffers(canvas, footer_ == Footer::kArticle ? std::span<const Offer>(kArticleOffers) : kTextOffers, col);
}

bool TextViewer::OnKey(const Key& key) {
  if (key.Is(KeyKind::kPageDown) || key.Is(KeyKind::kRight) || key.Is(' ') || key.IsControl('F'))
    ScrollTo(top_ + kPageStep);
  else if (key.Is(KeyKind::kPageUp) || key.Is(KeyKind::kBackspace) || key.IsControl('B'))
    ScrollTo(top_ - kPageStep);
  else if (key.Is(KeyKind::kDown) || key.Is(KeyKind::kEnter) || key.Is('j'))
    ScrollTo(top_ + 1);
  else if (key.Is(KeyKind::kUp) || key.Is('k'))
    ScrollTo(top_ - 1);
  else if (key.Is(KeyKind::kHome) || key.Is('N') || key.Is('0'))
    ScrollTo(0);
  else if (key.Is(KeyKind::kEnd) || key.Is('$') || key.Is('G'))
    ScrollTo(LastTop());
  else
    return false;
  return true;
}

bool TextViewer::FindNext(const std::string& big5) {
  for (int row = top_ + 1; row < std::ssize(text_.rows); ++row) {
    std::string line;
    for (const Cell& cell : text_.rows[static_cast<std::size_t>(row)])
      line += static_cast<char>(cell.byte);
    if (!ContainsIgnoringCase(line, big5)) continue;
    ScrollTo(row);
    return true;
  }
  return false;
}

}  // namespace quillet::demo
