// The lines of the two texts of places, and what stands in them. Pure; hostile input is expected.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillet {

// In UTF-16 units. A longer line goes on as a line of its own.
inline constexpr std::size_t kLongestPlaceLine = 79;

class PlaceLines {
 public:
  // UTF-8 with or without a byte-order mark; outlives the object and what it gives.
  explicit PlaceLines(std::string_view bytes);

  // The next line or piece of one, trimmed. Empty ones are skipped; nothing at the end. No character is cut
  // in two.
  std::optional<std::string_view> Next();
  // Of the line that Next gave last, from 1, as an editor counts.
  std::size_t Number() const { return number_; }

 private:
  std::string_view rest_;
  std::string_view line_;  // what is left of the line
  std::size_t number_ = 0;
};

// Takes the next token off the front of `line`: runs of separators count as one. Empty when there is none.
std::string_view TakeToken(std::string_view& line, std::string_view separators);

// A name as it may come to the screen: without control characters. Nothing when the bytes are no UTF-8.
std::optional<std::u16string> ShownName(std::string_view bytes);

}  // namespace quillet
