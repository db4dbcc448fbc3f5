// The rows over an article that say whose it is, and where in them author, board and title stand. Pure; any
// thread.
#pragma once

#include <cstdint>
#include <string>

#include "bbs/cell_range.h"
#include "core/screen_snapshot.h"

namespace quillet {

inline constexpr int kHeaderAuthorRow = 0;  // and of the board
inline constexpr int kHeaderTitleRow = 1;
inline constexpr int kHeaderTimeRow = 2;
inline constexpr int kHeaderFieldCol = 7;  // where author and title begin

// What is not there is empty.
struct PageHeader {
  CellRange author;
  CellRange board;
  CellRange title;
  bool hasTime = false;

  bool operator==(const PageHeader&) const = default;
};

class HeaderReader {
 public:
  // The character tables must have been loaded.
  HeaderReader();

  PageHeader Read(const ScreenSnapshot& screen) const;
  // Of the first row alone.
  CellRange Author(const ScreenRow& text, const ScreenRow& attr) const;
  CellRange Board(const ScreenRow& text, const ScreenRow& attr) const;
  CellRange Title(const ScreenRow& text) const;
  bool IsTime(const ScreenRow& text) const;

 private:
  std::string author_, board_, title_, time_;  // labels
};

// Seconds since 1970 of the row with the time, read as local time; 0 when it is none. A month that cannot be
// read is that of `now` (seconds since 1970).
std::int64_t HeaderSeconds(const ScreenSnapshot& screen, std::int64_t now);

}  // namespace quillet
