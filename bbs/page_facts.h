// The facts on a page, each found by its fixed place: header of an article, lines of an article list, the
// information box, push lines, the reader's position, the money. A page that does not fit gives the empty
// answer, never a wrong one. The patterns are converted to Big5 once, at construction; the character tables
// must be loaded before. Safe from any thread once made.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/screen_snapshot.h"

namespace quillet {

// Answers of ParseReaderLastLine and ParseMoney for a page without one.
inline constexpr int kNoLine = -99;
inline constexpr std::int32_t kNoMoney = -1;

// Where an article list has its lines, and where their authors begin.
inline constexpr int kListFirstRow = 3;
inline constexpr int kListLastRow = 22;
inline constexpr int kListAuthorCol = 17;

// The lines that the reader says it shows, counted from 1.
struct LineRange {
  int first = 0;
  int last = 0;

  bool operator==(const LineRange&) const = default;
};

class PageFacts {
 public:
  PageFacts();

  // ---- The four header rows of an article.
  std::u16string ParseHeaderAuthor(const ScreenSnapshot& screen) const;
  std::u16string ParseHeaderBoard(const ScreenSnapshot& screen) const;
  std::u16string ParseHeaderTitle(const ScreenSnapshot& screen) const;
  // Seconds since 1970 of the row read as local time; 0 when there is no such row or the time is none. A
  // month that cannot be read is that of `now` (seconds since 1970).
  std::int64_t ParseHeaderTime(const ScreenSnapshot& screen, std::int64_t now) const;

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
  // A row that the push prompt drawn over an article occupies.
  bool IsArrowInputRow(const ScreenSnapshot& screen, int row) const;

  // ---- The reader's status line, and the money.
  // The last line shown; kNoLine when the line does not say, 1 when it says nothing readable.
  static int ParseReaderLastLine(const ScreenSnapshot& screen);
  // Both ends; none unless they are numbers, 1 or more and in order, with a blank in front.
  static std::optional<LineRange> ParseReaderLines(const ScreenSnapshot& screen);
  // The page shown, none when the line does not say.
  std::optional<int> ParseReaderPage(const ScreenSnapshot& screen) const;
  static std::int32_t ParseMoney(const ScreenSnapshot& screen);

 private:
  // The column of the colon behind a push line's id.
  std::optional<int> PushColon(const ScreenSnapshot& screen, int row) const;

  std::string author_, board_, title_, time_;   // labels of the header
  std::string push_, boo_, arrow_, arrowNote_;  // beginnings of push lines
  std::string pageBegin_, pageEnd_;             // around the reader's page number
};

}  // namespace quillet
