// The facts on a page, each found by its fixed place: header of an article, lines of an article list, the
// information box, push lines, the reader's position, the money. A page that does not fit gives the empty
// answer, never a wrong one. The patterns are converted to Big5 once, at construction; the character tables
// must be loaded before. Safe from any thread once made.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "bbs/listed_article.h"
#include "bbs/page_header.h"
#include "bbs/push_line.h"
#include "bbs/reader_footer.h"
#include "core/screen_snapshot.h"

namespace quillet {

// ParseMoney's answer for a page without one.
inline constexpr std::int32_t kNoMoney = -1;

class PageFacts {
 public:
  PageFacts();

  // ---- The four header rows of an article.
  std::u16string ParseHeaderAuthor(const ScreenSnapshot& screen) const;
  std::u16string ParseHeaderBoard(const ScreenSnapshot& screen) const;
  std::u16string ParseHeaderTitle(const ScreenSnapshot& screen) const;
  // Seconds since 1970, as HeaderSeconds; 0 when there is no such row.
  std::int64_t ParseHeaderTime(const ScreenSnapshot& screen, std::int64_t now) const;
  const HeaderReader& Header() const { return header_; }

  // ---- A line of an article list, rows 3 to 22; nothing of another row.
  static std::u16string ParseListAuthor(const ScreenSnapshot& screen, int row);
  static std::u16string ParseListTitle(const ScreenSnapshot& screen, int row);
  static bool IsDeletedListLine(const ScreenSnapshot& screen, int row);

  // ---- The information box of the article under the list's cursor, or of the one that is open.
  // Empty unless it is whole: eight characters of the codes' alphabet.
  static std::u16string ParseInfoBoxAid(const ScreenSnapshot& screen);
  static std::u16string ParseInfoBoxBoard(const ScreenSnapshot& screen);
  // In the form in which the BBS prints titles in lists.
  static std::u16string ParseInfoBoxTitle(const ScreenSnapshot& screen);

  // ---- Push lines.
  bool IsPushCommentLine(const ScreenSnapshot& screen, int row) const;
  // The user id of a push line; empty for another line.
  std::u16string ParsePushAuthor(const ScreenSnapshot& screen, int row) const;
  // All of its parts; none of another line.
  std::optional<PushLine> ReadPush(const ScreenRow& text) const { return push_.Read(text); }
  // A row that the push prompt drawn over an article occupies.
  bool IsArrowInputRow(const ScreenSnapshot& screen, int row) const;

  // ---- The reader's status line, and the money.
  // The last line shown; kNoLine when the line does not say, 1 when it says nothing readable.
  static int ParseReaderLastLine(const ScreenSnapshot& screen);
  // Both ends; none unless they are numbers, 1 or more and in order, with a blank in front.
  static std::optional<LineRange> ParseReaderLines(const ScreenSnapshot& screen);
  // The page shown, none when the line does not say.
  std::optional<int> ParseReaderPage(const ScreenSnapshot& screen) const;
  ReaderFooter ReadFooter(const ScreenSnapshot& screen) const;
  static std::int32_t ParseMoney(const ScreenSnapshot& screen);

 private:
  HeaderReader header_;
  PushLineReader push_;
  std::string arrowNote_;            // in a row of the push prompt
  std::string pageBegin_, pageEnd_;  // around the reader's page number
};

}  // namespace quillet
