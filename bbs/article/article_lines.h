// The text of the open article as far as its pages have passed by, line by line from the top. Fed by the
// article reading, drawn by the article view. The character tables must be loaded before one is made. Any one
// thread.
//
// A line here is a row as the reader shows it. The rule below the header is one too, though the BBS's status
// line does not count it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bbs/understood_page.h"
#include "core/screen_snapshot.h"

namespace quillet {

// What stands in it is known for the lines of an article; a line put together otherwise has none of it.
struct ArticleLine {
  ScreenRow text;
  ScreenRow attr;
  std::optional<PushLine> push{};
  LinkPlaces links{};
  CellRange author{};  // of the article, in its first line
  NoteLine note = NoteLine::kNone;
  CellRange address{};  // a person's, where the line is no push line

  bool operator==(const ArticleLine&) const = default;
};

class ArticleLines {
 public:
  ArticleLines();

  enum class Added {
    kNothing,  // no whole page of a reader, nothing new on it, or lines between are not known
    kMore,     // lines that were not known
    kChanged,  // known lines read differently now; what was known from the first of them on is forgotten
    kOther     // a page of another text: nothing was taken
  };
  // A screen, and what stands on it; only a reader's page that is drawn to its end is looked at. The first
  // page added is one that begins at the top. When another text has been shown meanwhile (help, in the same
  // reader), a page is this text's again once its first rows or most of its lines are recognised.
  Added Add(const ScreenSnapshot& screen, const UnderstoodPage& page);
  // Lines from `index` on are not known any more; the next page may lie anywhere in the same text.
  void ForgetFrom(int index);
  void Clear() { ForgetFrom(0); }

  // Lines known from the top without a gap.
  int Count() const { return static_cast<int>(lines_.size()); }
  // Up to the article's end. An article of more than kMostLines never is.
  bool IsComplete() const { return complete_; }
  const ArticleLine& At(int index) const { return lines_[static_cast<std::size_t>(index)]; }
  // Another number when Add, ForgetFrom or Clear has changed anything.
  unsigned Version() const { return version_; }

  // Where a reader page lies.
  struct Place {
    int top = 0;   // the index here of its first row, known or not
    int rows = 0;  // 1 to kPageRows; fewer than that only where the article ends
    int End() const { return top + rows; }
    bool operator==(const Place&) const = default;
  };
  // Nothing when the status line does not say, says what cannot be, or the page does not begin at the top
  // and no page that does has been taken.
  std::optional<Place> PlaceOf(const ScreenSnapshot& screen, const UnderstoodPage& page) const;
  std::optional<int> TopOf(const ScreenSnapshot& screen, const UnderstoodPage& page) const;

  // Rows of an article on one page of the reader.
  static constexpr int kPageRows = kRows - 1;
  // The BBS leaves one line of the page before in sight.
  static constexpr int kPageStep = kPageRows - 1;
  // 26 MB; what lies behind is not kept.
  static constexpr int kMostLines = 100'000;

 private:
  bool IsOfThisText(const ScreenSnapshot& screen, const UnderstoodPage& page, const Place& place) const;
  int FirstDifference(const ScreenSnapshot& screen, const Place& place) const;
  void Append(const ScreenSnapshot& screen, const UnderstoodPage& page, const Place& place);
  bool UpdateColours(const ScreenSnapshot& screen, const UnderstoodPage& page, const Place& place);
  std::optional<int> RuleRow(const ScreenSnapshot& screen, const UnderstoodPage& page) const;

  std::string author_, rule_;  // what the first row begins with, and the rule
  std::vector<ArticleLine> lines_;
  std::optional<int> ruleRow_;  // of the first page taken
  bool complete_ = false;
  bool away_ = false;  // the last page was another text's
  unsigned version_ = 0;
};

// A reader's page that is drawn to its end, with nothing lying over it.
bool IsWholeReaderPage(const ScreenSnapshot& screen);

}  // namespace quillet
