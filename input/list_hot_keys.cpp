#include "input/list_hot_keys.h"

namespace quillet {
namespace {

// Of no kind, without any mark: what an id that is not listed stands for.
ListEntry Unmarked() {
  return {.kind = ListKind::kNone, .description = {}};
}

bool SaysNothing(const ListEntry& entry) {
  return entry.kind == ListKind::kNone && !entry.underline && entry.colours == 0 && entry.description.empty();
}

void ToggleBlack(ListEntry& entry) {
  entry.kind = entry.kind == ListKind::kBlack ? ListKind::kNone : ListKind::kBlack;
}

void ToggleColour(ListEntry& entry, int colour) {
  if (colour == 0)
    entry.colours = 0;
  else
    entry.SetColour(colour, !entry.HasColour(colour));
}

void MarkLike(ListEntry& entry, const ListEntry& last) {
  entry.kind = last.kind;
  entry.underline = last.underline;
  entry.colours = last.colours;
  if (entry.description.empty()) entry.description = last.description;
}

}  // namespace

NameKey NameKeyOf(const KeyPress& press, int& colour) {
  // Both together are the AltGr that makes "~" on some keyboards.
  if (press.control != press.alt || press.text.size() != 1) return NameKey::kNone;
  switch (const char16_t character = press.text.front()) {
    case u'`':
      return NameKey::kBlack;
    case u'u':
      return NameKey::kUnderline;
    case u'~':
      return NameKey::kAgain;
    default:
      if (character < u'0' || character > u'0' + kFlagColours) return NameKey::kNone;
      colour = character - u'0';
      return NameKey::kColour;
  }
}

std::optional<ListEntry> ChangedEntry(const std::optional<ListEntry>& entry, NameKey key, int colour,
                                      const std::optional<ListEntry>& last) {
  ListEntry changed = entry.value_or(Unmarked());
  switch (key) {
    case NameKey::kBlack:
      ToggleBlack(changed);
      break;
    case NameKey::kColour:
      ToggleColour(changed, colour);
      break;
    case NameKey::kUnderline:
      changed.underline = !changed.underline;
      break;
    case NameKey::kAgain:
      if (last) MarkLike(changed, *last);
      break;
    case NameKey::kNone:
      break;
  }
  if (entry && changed == *entry) return entry;
  if (SaysNothing(changed)) return std::nullopt;
  changed.changed = true;
  return changed;
}

}  // namespace quillet
