// Pages of the BBS as they stand on a settled grid.
#pragma once

#include "tests/support/screen_builder.h"

namespace quillet {

inline constexpr std::uint8_t kHeaderBlue = 0x87;   // white on blue
inline constexpr std::uint8_t kHeaderLabel = 0xE4;  // blue on white
inline constexpr int kBoardLabelCol = 59;

inline ScreenBuilder& PutBoardLabel(ScreenBuilder& builder, int col) {
  return builder.Put(0, col, u"  看板  ", kHeaderBlue).Fill(0, col + 1, col + 7, kHeaderLabel);
}

// The four rows over an article.
inline ScreenSnapshot ArticleHeader(std::u16string_view author = u"kagami (鏡)",
                                    std::u16string_view board = u"Astronomy",
                                    std::u16string_view title = u"[問題] 鏡子裡是誰",
                                    std::u16string_view time = u"Fri Nov  6 06:04:05 2026") {
  ScreenBuilder builder;
  const std::u16string_view labels[] = {u" 作者 ", u" 標題 ", u" 時間 "};
  const std::u16string_view fields[] = {author, title, time};
  for (int row = 0; row < 3; ++row) {
    builder.Fill(row, 0, kCols, kHeaderBlue).Put(row, 0, labels[row], kHeaderLabel);
    builder.Put(row, 7, fields[row], kHeaderBlue);
  }
  PutBoardLabel(builder, kBoardLabelCol).Put(0, kBoardLabelCol + 8, board, kHeaderBlue);
  for (int col = 0; col < kCols - 1; col += 2)
    builder.Put(3, col, u"─");
  return builder.screen;
}

// The reader's status line under `page`.
inline ScreenSnapshot WithReaderFooter(
    const ScreenSnapshot& page,
    std::u16string_view footer = u"  瀏覽 第 1/3 頁 ( 33%)  目前顯示: 第 01~22 行",
    std::uint8_t attr = 0xAB) {
  ScreenBuilder builder;
  builder.screen = page;
  builder.Fill(23, 0, 79, attr).Put(23, 0, footer, attr).Cursor(23, 79);
  return builder.screen;
}

}  // namespace quillet
