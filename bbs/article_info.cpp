#include "bbs/article_info.h"

#include <algorithm>
#include <utility>

#include "bbs/page_flags.h"
#include "bbs/screen_fields.h"

namespace quillet {
namespace {

constexpr int kTimeRow = 2;

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
bool IsScrolled(const ScreenSnapshot& screen) {
  const std::optional<LineRange> lines = PageFacts::ParseReaderLines(screen);
  return lines && lines->first > 1;
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

bool ArticleTracker::Look(const ScreenSnapshot& screen, std::int64_t now) {
  const std::uint32_t flags = screen.pageFlags;
  const bool left = (flags & kOtherPages) != 0 && (flags & PF_PUSH_OVER_READER) == 0;
  if (!left && (flags & PF_STAR_LINE) != 0) return false;
  if ((flags & PF_READING) != 0) return Read(screen, now);
  if (!open_) return false;
  if (left || !StaysUnder(screen)) {
    Drop();
    return true;
  }
  return (flags & PF_ANYKEY_BANNER) != 0 && ReadCode(screen);
}

void ArticleTracker::Drop() {
  info_ = {};
  timeRow_.clear();
  open_ = false;
}

bool ArticleTracker::Read(const ScreenSnapshot& screen, std::int64_t now) {
  bool changed = !std::exchange(open_, true);
  if ((screen.pageFlags & PF_READ_TOP) != 0 && !IsScrolled(screen)) changed |= ReadHeader(screen, now);
  changed |= Take(info_.page, std::int32_t{facts_.ParseReaderPage(screen).value_or(0)});
  const int lastLine = PageFacts::ParseReaderLastLine(screen);
  changed |= Take(info_.lastLine, std::int32_t{lastLine == kNoLine ? 0 : lastLine});
  std::copy_n(screen.text.begin(), kPageRows, page_.begin());
  return changed;
}

bool ArticleTracker::ReadHeader(const ScreenSnapshot& screen, std::int64_t now) {
  ArticleInfo seen;
  seen.author = facts_.ParseHeaderAuthor(screen);
  seen.board = facts_.ParseHeaderBoard(screen);
  seen.title = facts_.ParseHeaderTitle(screen);
  const std::string_view timeRow = screen.RowText(kTimeRow);
  if (seen.author == info_.author && seen.board == info_.board && seen.title == info_.title &&
      timeRow == timeRow_)
    return false;
  // The information box may have been opened before the header was seen.
  if (timeRow_.empty()) seen.code = info_.code;
  timeRow_ = timeRow;
  seen.postTime = facts_.ParseHeaderTime(screen, now);
  info_ = std::move(seen);
  return true;
}

bool ArticleTracker::ReadCode(const ScreenSnapshot& screen) {
  std::u16string code = PageFacts::ParseInfoBoxAid(screen);
  if (code.empty() || code == info_.code) return false;
  const std::u16string board = PageFacts::ParseInfoBoxBoard(screen);
  const bool another = !info_.code.empty() || (!info_.board.empty() && board != info_.board);
  if (another) {
    info_ = {};
    timeRow_.clear();
    info_.board = board;
  }
  info_.code = std::move(code);
  return true;
}

bool ArticleTracker::StaysUnder(const ScreenSnapshot& screen) const {
  return (screen.pageFlags & kCovers) != 0 || IsWithoutFoot(screen) || ShowsTheSamePage(screen);
}

// A message in the bottom rows, or a box over some, leaves the rest of the page as it was.
bool ArticleTracker::ShowsTheSamePage(const ScreenSnapshot& screen) const {
  int same = 0;
  for (std::size_t row = 0; row < kPageRows; ++row)
    same += page_[row] == screen.text[row] ? 1 : 0;
  return same > kPageRows / 2;
}

}  // namespace quillet
