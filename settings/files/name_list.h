// The black and white lists: a hash map from user id to entry, and the words that mark titles; with the lines
// that "black.txt" and "black_title.txt" hold. User-interface thread.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "settings/files/list_entry.h"

namespace quillet {

class NameList {
 public:
  // Null when the id is not listed. Exact, letter case included; constant time.
  const ListEntry* Find(std::u16string_view id) const;
  // Adds, or replaces an entry in its place.
  void Set(std::u16string_view id, ListEntry entry);
  // Constant time, taken over many; the others keep their order.
  void Remove(std::u16string_view id);
  void Clear();
  std::size_t Size() const;

  // Lays lines of the file (as ReadLines gives them) over the list: the id, "=", the entry's text. Runs of
  // "=" are one, what follows a second run is dropped. A later line replaces an earlier one of the same id.
  void ReadLines(const std::vector<std::u16string>& lines);
  // Takes over every id that `theirs`, a list read from the file, has added, changed or removed since `base`;
  // what this list has added, changed or removed since `base` stays. The order is theirs, then this list's
  // additions. Returns whether the text of the file changed.
  bool MergeWith(const NameList& theirs, const NameList& base);
  // The text of the file, one entry a line in the order of adding, lines ended by LF. An id or text that a
  // line cannot hold is made to fit; an entry without an id is left out, for its text would be read back as
  // somebody's id.
  std::u16string AsText() const;

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>{}(text); }
  };
  struct Slot {
    std::u16string id;
    ListEntry entry;
    bool isGap;  // left by a removed entry
  };
  void CloseGaps();

  // The order of adding; at_ indexes it.
  std::vector<Slot> slots_;
  std::unordered_map<std::u16string, std::size_t, Hash, std::equal_to<>> at_;
};

// The same for the title words; in the order of `words` where `theirs` is what `base` is.
bool MergeTitleWords(std::vector<std::u16string>& words, const std::vector<std::u16string>& theirs,
                     const std::vector<std::u16string>& base);

// The title words, one a line in list order; empty ones are left out.
std::u16string TitleWordsAsText(const std::vector<std::u16string>& words);

}  // namespace quillet
