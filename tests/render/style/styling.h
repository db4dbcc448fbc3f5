// Rules, lines and pages for the tests of styling, and what a row reads as.
#pragma once

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "render/page_row.h"
#include "render/style/style_rules.h"
#include "render/style/styled_screen.h"
#include "tests/support/pages.h"

namespace quillet {

// Seconds since 1970 on this machine's clock.
inline std::int64_t Local(int year, int month, int day, int hour = 0, int minute = 0) {
  std::tm fields{};
  fields.tm_year = year - 1900;
  fields.tm_mon = month - 1;
  fields.tm_mday = day;
  fields.tm_hour = hour;
  fields.tm_min = minute;
  fields.tm_isdst = -1;
  return std::mktime(&fields);
}

// What StyleRules points to, all in one place.
struct Wishes {
  Settings settings;
  NameList names;
  std::vector<std::u16string> titleWords;
  std::vector<std::u16string> keywords;
  std::u16string myId;
  Reveal reveal = Reveal::kNothing;
  std::int64_t now = Local(2026, 11, 6, 12, 0);

  void Note(std::u16string_view id, ListKind kind, std::u16string_view description = {},
            std::uint8_t colours = 0, bool underline = false) {
    names.Set(id, {kind, underline, colours, std::u16string(description)});
  }
  StyleRules Rules() const {
    return {.settings = &settings,
            .names = &names,
            .titleWords = &titleWords,
            .keywords = Keywords(keywords),
            .myId = myId,
            .reveal = reveal,
            .now = now};
  }
};

inline constexpr std::uint8_t kPushIdAttr = 3 | kAttrBold;
inline constexpr std::uint8_t kPushWordsAttr = 3;

// A push line in the BBS's colours. `tail` ends in column 77: address and time.
inline void PutPush(ScreenBuilder& builder, int row, std::u16string_view mark, std::u16string_view id,
                    std::u16string_view words, std::u16string_view tail = u"140.112.8.8 11/06 10:00") {
  const int colon = 3 + static_cast<int>(id.size());
  builder.Put(row, 0, mark, 1 | kAttrBold).Put(row, 3, id, kPushIdAttr);
  builder.Fill(row, colon, 50, kPushWordsAttr).Put(row, colon, u": ", kPushWordsAttr);
  builder.Put(row, colon + 2, words, kPushWordsAttr);
  builder.Put(row, 78 - static_cast<int>(tail.size()), tail);
}

// As the view has it styled.
inline StyledScreen Dress(const ScreenSnapshot& screen, const StyleRules& rules, std::int64_t postTime) {
  UnderstoodPage page = Understand(screen);
  KeywordMarks().Mark(screen, rules.keywords, page);
  return StyleScreen(screen, page, rules, postTime);
}

inline ScreenSnapshot AsReader(const ScreenBuilder& builder) {
  return Classified(WithReaderFooter(builder.screen));
}

// What the row reads as, trailing blanks left out.
inline std::u16string Reads(const PageRow& row) {
  std::string bytes;
  for (const PageCell& cell : row.cells)
    bytes += static_cast<char>(cell.byte);
  bytes.erase(bytes.find_last_not_of(' ') + 1);
  return FromBig5(bytes);
}

// The columns that `holds`, as a text of "x" and ".", trailing dots left out.
template <typename Test>
std::string Where(const PageRow& row, Test holds) {
  std::string columns;
  for (const PageCell& cell : row.cells)
    columns += holds(cell) ? 'x' : '.';
  columns.erase(columns.find_last_not_of('.') + 1);
  return columns;
}
inline std::string WhereFore(const PageRow& row, int colour) {
  return Where(row, [&](const PageCell& cell) { return cell.fore == colour; });
}
inline std::string WhereStyle(const PageRow& row, CellStyle style) {
  return Where(row, [&](const PageCell& cell) { return (cell.style & style) != 0; });
}

}  // namespace quillet
