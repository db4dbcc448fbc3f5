// The lines of an article as they are shown, top to bottom: which are left out, how each one looks. Follows
// the article as it grows. Used by the article view. User-interface thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bbs/article/article_lines.h"
#include "bbs/push_line.h"
#include "render/page_row.h"
#include "render/style/style_rules.h"

namespace quillet {

class StyledArticle {
 public:
  // Takes in what `lines` holds beyond, or differently from, what is known here; costs nothing for lines that
  // did not change. To be called when lines, post time or rules may be different, before the next question.
  void Follow(const ArticleLines& lines, std::int64_t postTime, const StyleRules& rules);
  // As it was made: nothing of one article may be taken for the next one's.
  void Clear() { *this = StyledArticle(); }

  // Lines shown, those left out not counted.
  int Count() const { return static_cast<int>(shown_.size()); }
  // The look of the shown line `index` by the rules of now; an empty row outside 0 to Count() - 1.
  PageRow Row(const ArticleLines& lines, int index, const StyleRules& rules) const;
  // Whether the lists hide words or an id in the shown line `index`.
  bool HidesIn(int index, const StyleRules& rules) const;
  // Whether they keep pictures in the shown line `index` from opening by themselves, for the moment or not.
  bool KeepsPicturesClosed(int index, const StyleRules& rules) const;
  // The article's line behind a shown one, -1 outside 0 to Count() - 1; and the shown one at or behind an
  // article's line, Count() when there is none.
  int LineOf(int index) const;
  int IndexOf(int line) const;
  // The first push line among those shown, not counting what the text quotes above its origin line; -1: there
  // is none.
  int FirstPush() const { return firstPush_; }
  // A line of the author's holds colours, blinking or other traces of control codes.
  bool HasControlCodes() const { return colouredLines_ > 0; }

 private:
  static constexpr int kNobody = -1;

  // What is kept of a line; its cells stay in the article.
  struct Facts {
    std::uint64_t print = 0;    // of the cells, to see whether they changed
    std::int64_t time = 0;      // of a push line, seconds since 1970; 0 not known
    std::int64_t earliest = 0;  // PushClock's, behind this line
    int writer = kNobody;       // of a push line, an index of writers_
    bool isOrigin = false;
    bool isColoured = false;
  };
  // Who has pushed; each id once, so that the lists are asked once for each.
  struct Writer {
    std::u16string id;
    bool isRemoved = false;
  };

  std::size_t ReadLines(const ArticleLines& lines, bool isLater, std::int64_t now);
  Facts Read(const ArticleLine& line, std::size_t at, std::int64_t now);
  void ReadPush(const ScreenRow& text, const PushLine& push, Facts& facts, std::int64_t now);
  bool IsAuthorsOwn(const ArticleLine& line, std::size_t at) const;
  int WriterOf(std::u16string id);
  bool AskLists(const StyleRules& rules);
  void ShowFrom(std::size_t line);
  // The writer of the push line behind the shown line `index`; null where there is none.
  const std::u16string* PusherIn(int index) const;
  bool IsPush(std::size_t line) const { return lines_[line].writer != kNobody; }
  void FindFirstPush();

  std::vector<Facts> lines_;
  std::vector<int> shown_;
  std::vector<Writer> writers_;
  std::unordered_map<std::u16string, int> writerOf_;
  std::u16string author_;  // of the header
  std::int64_t postTime_ = 0;
  const ArticleLines* source_ = nullptr;  // with this version of it; only compared
  unsigned version_ = 0;
  int colouredLines_ = 0;
  int firstPush_ = -1;
};

}  // namespace quillet
