// The settings as texts: section, key, value, in the order in which they stand in the file. Reading and
// writing of "Quill.ini" to and from lines. Pure; a plain value.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

class SettingsMap {
 public:
  // Ordered by UTF-16 unit, letter case included.
  using Keys = std::map<std::u16string, std::u16string, std::less<>>;
  using Sections = std::map<std::u16string, Keys, std::less<>>;

  // Null when the key is absent.
  const std::u16string* Find(std::u16string_view section, std::u16string_view key) const;
  // Empty, or 0, when the key is absent.
  std::u16string Text(std::u16string_view section, std::u16string_view key) const;
  int Number(std::u16string_view section, std::u16string_view key) const;
  // Makes section and key when they are missing. What a line of the file cannot hold is made to fit, so that
  // no text can forge another line or section: control characters become blanks, so does "=" in a key, "[" at
  // the beginning of a key goes, ends are trimmed and cut. In the section "Track" the key is the whole line
  // and `value` is nothing.
  void Set(std::u16string_view section, std::u16string_view key, std::u16string_view value);
  void SetNumber(std::u16string_view section, std::u16string_view key, int value);
  void Remove(std::u16string_view section, std::u16string_view key);
  void RemoveSection(std::u16string_view section);

  const Sections& All() const { return sections_; }

  // The whole lines of the section "Track".
  std::vector<std::u16string> TrackLines() const;
  // Replaces them; empty ones are left out.
  void SetTrackLines(const std::vector<std::u16string>& lines);

  // Lays the lines of a settings file (as ReadLines gives them) over the map.
  void ReadLines(const std::vector<std::u16string>& lines);
  // Takes over every key that `theirs` has set or removed since `base`, a line of "Track" being a key; what
  // this map has set or removed since `base` stays. Returns whether it changed.
  bool MergeWith(const SettingsMap& theirs, const SettingsMap& base);
  // The text of the settings file, lines ended by LF.
  std::u16string AsText() const;

  bool operator==(const SettingsMap&) const = default;

 private:
  Sections sections_;
};

inline constexpr std::u16string_view kTrackSection = u"Track";

// How a tracking rule is spelled in the file: the older "board:", "author:" and "title:" become "board=" and
// so on, and "[" at the beginning, which would open a section and begins no rule, is taken off.
std::u16string TrackLineOf(std::u16string_view line);

}  // namespace quillet
