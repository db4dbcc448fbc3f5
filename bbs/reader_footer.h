// What the reader's status line says of where it stands. A value; any thread.
#pragma once

#include <cstdint>
#include <optional>

namespace quillet {

// A page whose status line names no last line.
inline constexpr int kNoLine = -99;

// The lines that the reader says it shows, counted from 1.
struct LineRange {
  int first = 0;
  int last = 0;

  bool operator==(const LineRange&) const = default;
};

struct ReaderFooter {
  std::optional<LineRange> lines;  // both ends, where they can be
  int lastLine = kNoLine;          // the last one even where the first cannot be read
  std::optional<int> page;         // from 1 on
  std::optional<int> percent;      // of the article above the page's lower edge, rounded down

  bool operator==(const ReaderFooter&) const = default;
};

}  // namespace quillet
