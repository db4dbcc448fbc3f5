// What the user noted about one user id of the BBS, and its stored form: "_" when underlined, the kind's
// letter unless there is none, the flag colours as digits, ":", then the description. Pure; a plain value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillet {

// In the order of the letters "NBCW" and of the dialog's choices.
enum class ListKind { kNone, kBlack, kSuperBlack, kWhite };

// Colours 1 to 7: red, green, yellow, dark blue, purple, light blue, white.
inline constexpr int kFlagColours = 7;

struct ListEntry {
  ListKind kind = ListKind::kBlack;
  bool underline = false;
  std::uint8_t colours = 0;  // bit n for colour n, bits 1 to 7
  std::u16string description;
  bool changed = false;  // edited since it was read

  bool HasColour(int colour) const { return (colours >> colour & 1) != 0; }
  // Nothing for a colour out of range.
  void SetColour(int colour, bool on);

  bool operator==(const ListEntry&) const = default;
};

// The stored form, its description trimmed and on one line. A plain black entry is its bare description, but
// with "B:" where the description alone would be read back as something else.
std::u16string EntryText(const ListEntry& entry);

// The inverse. What stands before the first ":" is a marker only when it has a marker's shape: "_" or
// nothing, one of B, C, W or nothing, then digits 0 to 7 (0 is no colour); everything else is a plain black
// entry with the whole text as its description. A marker without a letter, ":" alone too, is of no kind.
// Descriptions are trimmed.
ListEntry ParseEntryText(std::u16string_view text);

// The longest description that comes back whole from a line of the file after this id and the marker that
// this entry needs, in UTF-16 units; 0 when these alone are too long.
std::size_t LongestDescription(std::u16string_view id, const ListEntry& entry);

// The first character that a description cannot hold ("=" ends it on the next read, control characters become
// blanks, half a surrogate pair U+FFFD), 0 when there is none.
char16_t FirstUnfitCharacter(std::u16string_view description);

}  // namespace quillet
