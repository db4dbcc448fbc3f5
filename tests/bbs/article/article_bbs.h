// A BBS of one board for the tests of reading: a list, articles in a reader, and what can lie over them.
// Takes keys, gives classified screens.
#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "bbs/screen_classifier.h"
#include "core/key_sequence.h"
#include "tests/support/article_pages.h"

namespace quillet {

struct BbsArticle {
  std::u16string author = u"kagami";
  std::u16string title = u"[問題] 鏡子裡是誰";
  std::vector<std::u16string> rows;  // below the header
};

inline BbsArticle ArticleOf(int rows) {
  BbsArticle article;
  for (int row = 0; row < rows; ++row) {
    const std::string number = std::to_string(row);
    article.rows.push_back(row % 7 == 0 ? std::u16string()
                                        : u"本文 " + std::u16string(number.begin(), number.end()));
  }
  return article;
}

inline std::u16string PushText(int number) {
  const std::string digits = std::to_string(number);
  return u"推 someone: 第" + std::u16string(digits.begin(), digits.end()) + u"樓";
}

class ArticleBbs {
 public:
  static constexpr int kHeaderRows = 4;
  static constexpr int kPage = kRows - 1;

  std::vector<BbsArticle> articles{ArticleOf(100), ArticleOf(50)};
  int selected = 0;
  bool reading = false;
  int top = 0;
  std::u16string cover;  // lies over the bottom row, or is a pause of its own

  const BbsArticle& Article() const { return articles[static_cast<std::size_t>(selected)]; }
  int Total() const { return kHeaderRows + static_cast<int>(Article().rows.size()); }
  int LastTop() const { return std::max(0, Total() - kPage); }
  bool AtEnd() const { return top == LastTop(); }
  // Index of a row of the article to the number of its line: the rule, the fourth row, is not counted.
  static int LineOf(int row) { return row < 3 ? row + 1 : row; }

  void Press(std::string_view key) {
    if (!cover.empty()) {
      cover.clear();
    } else if (reading) {
      PressInReader(key);
    } else if (key == KeySequence(kKeyRight)) {
      reading = true;
      top = 0;
    } else if (key == KeySequence(kKeyDown)) {
      Select(1);
    }
  }

  ScreenSnapshot Screen() const {
    ScreenSnapshot screen = reading ? ReaderScreen() : ListScreen();
    if (!cover.empty()) {
      ScreenBuilder builder;
      builder.screen = screen;
      builder.screen.BlankRow(23, 0);
      builder.Put(23, 0, cover).Cursor(23, 79);
      screen = builder.screen;
    }
    return Classified(screen);
  }
  ScreenSnapshot Classified(ScreenSnapshot screen) const {
    screen.sessionState = SessionState::kConnected;
    screen.isBbsSite = 1;
    ClassifyScreen(pages_, screen, ScreenReason::kUpdated);
    return screen;
  }
  // All rows as they stand on the pages.
  std::vector<std::string> Whole() {
    std::vector<std::string> rows;
    const int before = std::exchange(top, 0);
    for (; static_cast<int>(rows.size()) < Total(); top = std::min(top + kPage, LastTop())) {
      const ScreenSnapshot screen = ReaderScreen();
      for (int row = static_cast<int>(rows.size()) - top; row < std::min(kPage, Total() - top); ++row)
        rows.emplace_back(screen.RowText(row));
    }
    top = before;
    return rows;
  }

 private:
  void Select(int step) { selected = std::clamp(selected + step, 0, static_cast<int>(articles.size()) - 1); }
  void PressInReader(std::string_view key) {
    const auto go = [this](int to) { top = std::clamp(to, 0, LastTop()); };
    if (key == KeySequence(kKeyPageDown)) {
      // As a BBS would where the article ends.
      if (AtEnd()) {
        Select(1);
        top = 0;
      } else {
        go(top + kPage - 1);
      }
    } else if (key == KeySequence(kKeyPageUp)) {
      go(top - kPage + 1);
    } else if (key == KeySequence(kKeyDown)) {
      go(top + 1);
    } else if (key == KeySequence(kKeyHome)) {
      go(0);
    } else if (key == KeySequence(kKeyEnd)) {
      go(LastTop());
    } else if (key == KeySequence(kKeyLeft)) {
      reading = false;
    } else if (key == "f") {
      Select(1);
      top = 0;
    }
  }
  ScreenSnapshot ReaderScreen() const {
    const ScreenSnapshot header = ArticleHeader(Article().author, u"Astronomy", Article().title);
    ScreenBuilder builder;
    const int last = std::min(top + kPage, Total()) - 1;
    for (int index = top; index <= last; ++index) {
      const auto row = static_cast<std::size_t>(index - top);
      if (index < kHeaderRows) {
        builder.screen.text[row] = header.text[static_cast<std::size_t>(index)];
        builder.screen.attr[row] = header.attr[static_cast<std::size_t>(index)];
      } else {
        builder.Put(index - top, 0, Article().rows[static_cast<std::size_t>(index - kHeaderRows)]);
      }
    }
    char range[32];
    std::snprintf(range, sizeof range, "%02d~%02d", LineOf(top), LineOf(last));
    const std::string_view digits = range;
    const std::u16string footer =
        u"  瀏覽 第 1/3 頁 ( 33%)  目前顯示: 第 " + std::u16string(digits.begin(), digits.end()) + u" 行";
    constexpr std::uint8_t kFirst = 0xAB, kMiddle = 0xCF, kEnd = 0x8F;
    return WithReaderFooter(builder.screen, footer, AtEnd() ? kEnd : top == 0 ? kFirst : kMiddle);
  }
  ScreenSnapshot ListScreen() const {
    ScreenBuilder builder;
    builder.Put(0, 0, u"【板主:someone】");
    builder.Put(1, 0, u"[←]離開 [→]閱讀 [Ctrl-P]發表文章 [d]刪除 [z]精華區 [i]看板資訊/設定 [h]說明   ");
    for (int index = 0; index < static_cast<int>(articles.size()); ++index) {
      builder.Put(3 + index, 17, articles[static_cast<std::size_t>(index)].author);
      builder.Put(3 + index, 30, articles[static_cast<std::size_t>(index)].title);
    }
    builder.Put(3 + selected, 0, u"●").Put(23, 0, u" 文章選讀 ").Cursor(3 + selected, 1);
    return builder.screen;
  }

  PageTests pages_;
};

}  // namespace quillet
