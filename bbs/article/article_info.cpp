#include "bbs/article/article_info.h"

#include <algorithm>
#include <utility>

#include "bbs/screen_fields.h"

namespace quillet {
namespace {

// Pages that are entered by leaving the article.
constexpr std::uint32_t kOtherPages =
    PF_LIST_CURSOR | PF_MAIL_MENU | PF_ARTICLE_LIST | PF_ARTICLE_LIST_CURSOR | PF_EDITOR | PF_DISPUTED_NOTICE;
// What the BBS draws over an article and takes away again.
constexpr std::uint32_t kCovers = PF_PUSH_OVER_READER | PF_PUSH_LINE | PF_PUSH_CONFIRM | PF_STAR_LINE |
                                  PF_INPUT_FIELD | PF_PAUSE | PF_ANYKEY_BANNER | PF_ANIMATION_PROMPT;

template <class T>
bool Take(T& known, T seen) {
  if (known == seen) return false;
  known = std::move(seen);
  return true;
}

// The reader calls its first page the top even when it has been scrolled by a few lines.
bool IsScrolled(const UnderstoodPage& page) {
  return page.footer.lines && page.footer.lines->first > 1;
}

// Cleared, and not yet drawn down to its status line.
bool IsWithoutFoot(const ScreenSnapshot& screen) {
  constexpr int kStatusBeginning = 6;
  return IsBlankBetween(screen, kBottomRow, kStatusBeginning, kCols - 1);
}

}  // namespace

bool IsSameArticle(const ArticleInfo& one, const ArticleInfo& other) {
  return one.board == other.board && one.author == other.author && one.title == other.title &&
         one.postTime == other.postTime;
}

bool ArticleTracker::Look(const ScreenSnapshot& screen, const UnderstoodPage& page, std::int64_t now) {
  const bool left = page.Shows(kOtherPages) && !page.Shows(PF_PUSH_OVER_READER);
  if (!left && page.Shows(PF_STAR_LINE)) return false;
  if (page.Shows(PF_READING)) return Read(screen, page, now);
  if (!open_) return false;
  if (left || !StaysUnder(screen, page)) {
    Drop();
    return true;
  }
  return ReadCode(screen, page);
}

void ArticleTracker::Drop() {
  info_ = {};
  header_.reset();
  open_ = false;
}

bool ArticleTracker::Read(const ScreenSnapshot& screen, const UnderstoodPage& page, std::int64_t now) {
  bool changed = !std::exchange(open_, true);
  if (page.Shows(PF_READ_TOP) && !IsScrolled(page)) changed |= ReadHeader(screen, page, now);
  const ReaderFooter& footer = page.footer;
  changed |= Take(info_.page, std::int32_t{footer.page.value_or(0)});
  changed |= Take(info_.lastLine, std::int32_t{footer.lastLine == kNoLine ? 0 : footer.lastLine});
  std::copy_n(screen.text.begin(), kPageRows, page_.begin());
  return changed;
}

bool ArticleTracker::ReadHeader(const ScreenSnapshot& screen, const UnderstoodPage& page, std::int64_t now) {
  const HeaderRows rows{
      {screen.text[kHeaderAuthorRow], screen.text[kHeaderTitleRow], screen.text[kHeaderTimeRow]},
      page.header};
  if (header_ == rows) return false;
  ArticleInfo seen;
  seen.author = HeaderAuthor(screen, page);
  seen.board = HeaderBoard(screen, page);
  seen.title = HeaderTitle(screen, page);
  const bool isFirst = !header_;
  const bool sameTime = header_ && BytesOf(header_->text.back()) == BytesOf(rows.text.back());
  header_ = rows;
  if (seen.author == info_.author && seen.board == info_.board && seen.title == info_.title && sameTime)
    return false;
  // The information box may have been opened before the header was seen.
  if (isFirst) seen.code = info_.code;
  seen.postTime = HeaderPostTime(screen, page, now);
  info_ = std::move(seen);
  return true;
}

bool ArticleTracker::ReadCode(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  std::u16string code = BoxCode(screen, page);
  if (code.empty() || code == info_.code) return false;
  const std::u16string board = BoxBoard(screen, page);
  const bool another = !info_.code.empty() || (!info_.board.empty() && board != info_.board);
  if (another) {
    info_ = {};
    header_.reset();
    info_.board = board;
  }
  info_.code = std::move(code);
  return true;
}

bool ArticleTracker::StaysUnder(const ScreenSnapshot& screen, const UnderstoodPage& page) const {
  return page.Shows(kCovers) || IsWithoutFoot(screen) || ShowsTheSamePage(screen);
}

// A message in the bottom rows, or a box over some, leaves the rest of the page as it was.
bool ArticleTracker::ShowsTheSamePage(const ScreenSnapshot& screen) const {
  int same = 0;
  for (std::size_t row = 0; row < kPageRows; ++row)
    same += page_[row] == screen.text[row] ? 1 : 0;
  return same > kPageRows / 2;
}

}  // namespace quillet
