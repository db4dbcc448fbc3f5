#include "render/article_bar.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "core/charset.h"
#include "render/contrast.h"
#include "render/palette.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

enum Offer { kNone, kBookmark, kGiveMoney, kPush, kPushOn, kFirstPush };
const std::vector<BarCaption> kAllOffers = {{kBookmark, u'm', u"加入書籤"},
                                            {kGiveMoney, u'g', u"自動發P幣"},
                                            {kPush, u'p', u"推!"},
                                            {kPushOn, u'x', u"連續推文"},
                                            {kFirstPush, 0, u"推文開頭"}};
const std::vector<int> kAll = {kBookmark, kGiveMoney, kPush, kPushOn, kFirstPush};

std::string BytesOf(const PageRow& row, int first = 0, int last = kCols) {
  std::string bytes;
  for (int col = first; col < last; ++col)
    bytes += static_cast<char>(row.cells[static_cast<std::size_t>(col)].byte);
  return bytes;
}

std::u16string TextOf(const PageRow& row, int first = 0, int last = kCols) {
  return FromBig5(BytesOf(row, first, last));
}

std::u16string CaptionOf(const ArticleBar& bar, int command) {
  for (const CaptionArea& area : bar.areas)
    if (area.command == command) return TextOf(bar.row, area.first, area.last);
  return {};
}

std::vector<int> CommandsOf(const ArticleBar& bar) {
  std::vector<int> commands;
  for (const CaptionArea& area : bar.areas)
    commands.push_back(area.command);
  return commands;
}

// Like the footer of the BBS's reader.
PageRow StatusLine(std::u16string_view text) {
  PageRow row;
  std::size_t col = 0;
  for (const char byte : ToBig5(text))
    row.cells[col++] = {static_cast<std::uint8_t>(byte), 4, 23, 0};
  return row;
}

class ArticleBarTest : public WithTables {
 protected:
  ArticleBarInput input_{.line = 23, .lines = 120, .offers = kAllOffers};
};

TEST_F(ArticleBarTest, TellsThePlaceAndOffersTheArticlesCommands) {
  const ArticleBar bar = MakeArticleBar(input_);
  EXPECT_EQ(TextOf(bar.row).substr(0, 14), u"  23 / 120 行  ");
  EXPECT_EQ(CommandsOf(bar), kAll);
  EXPECT_EQ(CaptionOf(bar, kBookmark), u" (m)加入書籤");
  EXPECT_EQ(TextOf(bar.row).find(u"控制碼"), std::u16string::npos);
  EXPECT_EQ(CaptionOf(bar, kFirstPush), u" 推文開頭") << "it has no key";
}

TEST_F(ArticleBarTest, CaptionsStayInPlaceWhileTheArticleScrollsAndGrows) {
  const std::vector<CaptionArea> settled = MakeArticleBar(input_).areas;
  const auto expectSettled = [&](int line, int lines, bool stillReading) {
    input_.line = line;
    input_.lines = lines;
    input_.stillReading = stillReading;
    const ArticleBar bar = MakeArticleBar(input_);
    EXPECT_EQ(bar.areas.front().first, settled.front().first);
    EXPECT_EQ(bar.areas.back().last, settled.back().last);
    EXPECT_NE(TextOf(bar.row).find(stillReading ? u"+ 行 " : u" 行 "), std::u16string::npos);
  };
  expectSettled(1, 22, true);
  expectSettled(120, 120, false);
  expectSettled(44, 999, true);
}

TEST_F(ArticleBarTest, LastOffersGoFirstWhereTheRowIsFullAndTheNoticeStays) {
  input_.controlCodes = true;
  input_.line = 1234;
  input_.lines = 5678;
  const ArticleBar bar = MakeArticleBar(input_);
  EXPECT_EQ(CommandsOf(bar), std::vector(kAll.begin(), kAll.end() - 1));
  EXPECT_TRUE(TextOf(bar.row).ends_with(u" 此篇有控制碼 "));
}

TEST_F(ArticleBarTest, HoveredCaptionStandsOutAndNothingElseChanges) {
  const ArticleBar calm = MakeArticleBar(input_);
  input_.hovered = kPushOn;
  const ArticleBar lit = MakeArticleBar(input_);
  EXPECT_EQ(BytesOf(lit.row), BytesOf(calm.row));
  for (int col = 0; col < kCols; ++col) {
    const auto at = static_cast<std::size_t>(col);
    // All of the caption but the blank before it.
    const bool inside = CommandAt(lit.areas, col) == kPushOn && CommandAt(lit.areas, col - 1) == kPushOn;
    EXPECT_EQ(lit.row.cells[at] != calm.row.cells[at], inside) << col;
    EXPECT_EQ((lit.row.cells[at].style & CS_UNDERLINE) != 0, inside) << col;
  }
}

TEST_F(ArticleBarTest, EveryCellIsReadableInEveryPalette) {
  input_.controlCodes = true;
  for (const int hovered : {kNone, kBookmark}) {
    input_.hovered = hovered;
    const PageRow row = MakeArticleBar(input_).row;
    for (const PaletteKind kind : {PaletteKind::kNormal, PaletteKind::kDark, PaletteKind::kDisguise})
      for (const PageCell& cell : row.cells) {
        ASSERT_LT(std::max(cell.fore, cell.back), PaletteOf(kind).size());
        EXPECT_GE(Contrast(PaletteOf(kind)[cell.fore], PaletteOf(kind)[cell.back]), kReadableContrast)
            << static_cast<int>(cell.fore) << " on " << static_cast<int>(cell.back);
      }
  }
}

TEST_F(ArticleBarTest, StatusLineKeepsItsPartUpToTheLineRange) {
  const std::u16string kept = u"  瀏覽 第 1/7 頁 ( 13%)  目前顯示: 第 01~22 行";
  const PageRow status = StatusLine(kept + u"  (y)回應(X%)推文(h)說明(←)離開 ");
  const int end = static_cast<int>(ToBig5(kept).size());
  const ArticleBar bar = MakeArticleBarOver(status, input_);
  for (int col = 0; col < end; ++col)
    EXPECT_EQ(bar.row.cells[static_cast<std::size_t>(col)], status.cells[static_cast<std::size_t>(col)]);
  ASSERT_FALSE(bar.areas.empty());
  EXPECT_EQ(bar.areas.front().first, end);
  EXPECT_EQ(CommandsOf(bar), std::vector(kAll.begin(), kAll.begin() + 3));
  EXPECT_EQ(TextOf(bar.row).find(u"離開"), std::u16string::npos);
  const std::u16string full = std::u16string(70, u' ') + u"第 22 行";
  input_.controlCodes = true;
  EXPECT_EQ(TextOf(MakeArticleBarOver(StatusLine(full), input_).row), full + u"  ")
      << "no room for the notice";
  input_.controlCodes = false;

  // A short caption never stands for a longer one that matters more.
  std::swap(input_.offers[2], input_.offers[3]);
  EXPECT_EQ(CommandsOf(MakeArticleBarOver(status, input_)), (std::vector<int>{kBookmark, kGiveMoney}));
}

TEST_F(ArticleBarTest, RowWithoutALineRangeStaysAsItIs) {
  // No range; the word without a number before it.
  for (const std::u16string_view text : {u"", u"▼ (h)說明 (q)離開", u"第一行詩 不行"}) {
    const ArticleBar bar = MakeArticleBarOver(StatusLine(text), input_);
    EXPECT_EQ(bar.row, StatusLine(text));
    EXPECT_TRUE(bar.areas.empty());
  }
  // The word's bytes as the second half of one character and the first of the next.
  PageRow shifted = StatusLine(u"第 01~22 ");
  const std::string wanted = ToBig5(u"行");
  const unsigned char bytes[] = {0xA4, static_cast<unsigned char>(wanted[0]),
                                 static_cast<unsigned char>(wanted[1]), 0x41};
  for (std::size_t i = 0; i < sizeof bytes; ++i)
    shifted.cells[9 + i].byte = bytes[i];
  EXPECT_EQ(MakeArticleBarOver(shifted, input_).row, shifted);
}

}  // namespace
}  // namespace quillet
