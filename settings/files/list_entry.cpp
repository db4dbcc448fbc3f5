#include "settings/files/list_entry.h"

#include <optional>

#include "settings/files/text_lines.h"

namespace quillet {
namespace {

// By ListKind. The letter of "none" is never written.
constexpr std::u16string_view kKindLetters = u"NBCW";
constexpr std::u16string_view kPlainMarker = u"B:";
constexpr std::size_t kUncut = std::u16string::npos;

struct Marker {
  ListEntry entry;     // without its description
  std::size_t length;  // the ":" included
};

std::optional<Marker> ReadMarker(std::u16string_view text) {
  Marker marker{ListEntry{.kind = ListKind::kNone, .description = {}}, 0};
  std::size_t at = 0;
  const auto next = [&] { return at < text.size() ? text[at] : u'\0'; };

  if (next() == u'_') {
    marker.entry.underline = true;
    ++at;
  }
  const std::size_t letter = kKindLetters.find(next(), 1);
  if (letter != std::u16string_view::npos) {
    marker.entry.kind = static_cast<ListKind>(letter);
    ++at;
  }
  for (; next() >= u'0' && next() <= u'7'; ++at)
    marker.entry.SetColour(next() - u'0', true);
  if (next() != u':') return std::nullopt;
  marker.length = at + 1;
  return marker;
}

// Whether the description, standing alone, would not be read as a plain black entry's. With "=" in front it
// would join the "=" after the id and what follows would be read in its place.
bool NeedsMarker(std::u16string_view description) {
  return description.starts_with(u'=') || ReadMarker(description).has_value();
}

// `description` is the entry's own as it is written.
std::u16string MarkerText(const ListEntry& entry, std::u16string_view description) {
  std::u16string text;
  if (entry.underline) text += u'_';
  if (entry.kind != ListKind::kNone) text += kKindLetters[static_cast<std::size_t>(entry.kind)];
  for (int colour = 1; colour <= kFlagColours; ++colour)
    if (entry.HasColour(colour)) text += static_cast<char16_t>(u'0' + colour);
  text += u':';
  if (text == kPlainMarker && !NeedsMarker(description)) text.clear();
  return text;
}

std::u16string WrittenDescription(const ListEntry& entry) {
  return std::u16string(Trimmed(OneLine(entry.description, kUncut)));
}

}  // namespace

void ListEntry::SetColour(int colour, bool on) {
  if (colour < 1 || colour > kFlagColours) return;
  const auto bit = static_cast<std::uint8_t>(1U << colour);
  colours = static_cast<std::uint8_t>(on ? colours | bit : colours & ~bit);
}

std::u16string EntryText(const ListEntry& entry) {
  const std::u16string description = WrittenDescription(entry);
  return MarkerText(entry, description) + description;
}

ListEntry ParseEntryText(std::u16string_view text) {
  text = Trimmed(text);
  const std::optional<Marker> marker = ReadMarker(text);
  ListEntry entry = marker ? marker->entry : ListEntry{};
  entry.description = Trimmed(text.substr(marker ? marker->length : 0));
  return entry;
}

std::size_t LongestDescription(std::u16string_view id, const ListEntry& entry) {
  const std::size_t taken = id.size() + 1 + MarkerText(entry, WrittenDescription(entry)).size();
  return taken < kLongestLine ? kLongestLine - taken : 0;
}

char16_t FirstUnfitCharacter(std::u16string_view description) {
  const std::u16string oneLine = OneLine(description, kUncut);
  for (std::size_t i = 0; i < description.size(); ++i)
    if (description[i] == u'=' || oneLine[i] != description[i]) return description[i];
  return 0;
}

}  // namespace quillet
