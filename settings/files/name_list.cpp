#include "settings/files/name_list.h"

#include <algorithm>
#include <set>
#include <utility>

#include "settings/files/text_lines.h"

namespace quillet {
namespace {

constexpr char16_t kSeparator = u'=';

// Takes the text up to the next run of separators off the front of `line`.
std::u16string_view TakeToken(std::u16string_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(kSeparator), line.size()));
  const std::u16string_view token = line.substr(0, line.find(kSeparator));
  line.remove_prefix(token.size());
  return Trimmed(token);
}

std::u16string WritableId(std::u16string_view id) {
  std::u16string text = OneLine(id);
  std::erase(text, kSeparator);
  return std::u16string(Trimmed(text));
}

// Empty for an entry without an id, whose text would be read as the id, and so for a gap.
std::u16string LineOf(std::u16string_view id, const ListEntry& entry) {
  std::u16string line = WritableId(id);
  if (line.empty()) return line;
  const std::u16string text = EntryText(entry);
  // Half a marker would be read as a description.
  if (text.empty() || LongestDescription(line, entry) == 0) return line;
  line += kSeparator;
  line += text;
  return OneLine(line);
}

// What the next reader of this text of a file gets.
std::vector<std::u16string> LinesBack(std::u16string_view text) {
  return ReadLines(EncodeText(text, "\n")).lines;
}

bool AreSame(const ListEntry* one, const ListEntry* other) {
  return one && other ? *one == *other : one == other;
}

}  // namespace

const ListEntry* NameList::Find(std::u16string_view id) const {
  const auto found = at_.find(id);
  return found == at_.end() ? nullptr : &slots_[found->second].entry;
}

void NameList::Set(std::u16string_view id, ListEntry entry) {
  const auto [found, isNew] = at_.try_emplace(std::u16string(id), slots_.size());
  if (isNew)
    slots_.push_back({std::u16string(id), std::move(entry), false});
  else
    slots_[found->second].entry = std::move(entry);
}

void NameList::Remove(std::u16string_view id) {
  const auto found = at_.find(id);
  if (found == at_.end()) return;
  slots_[found->second] = {{}, {}, true};
  at_.erase(found);
  // Then each slot is moved at most once for every entry removed.
  if (slots_.size() > 2 * at_.size()) CloseGaps();
}

void NameList::CloseGaps() {
  std::erase_if(slots_, [](const Slot& slot) { return slot.isGap; });
  for (std::size_t i = 0; i < slots_.size(); ++i)
    at_.find(slots_[i].id)->second = i;
}

void NameList::Clear() {
  slots_.clear();
  at_.clear();
}

std::size_t NameList::Size() const {
  return at_.size();
}

void NameList::ReadLines(const std::vector<std::u16string>& lines) {
  slots_.reserve(slots_.size() + lines.size());
  at_.reserve(at_.size() + lines.size());
  for (std::u16string_view line : lines) {
    if (Trimmed(line).empty()) continue;
    const std::u16string_view id = TakeToken(line);
    Set(id, ParseEntryText(TakeToken(line)));
  }
}

bool NameList::MergeWith(const NameList& theirs, const NameList& base) {
  const std::u16string before = AsText();
  // Only what the file can hold compares with what was read from it.
  NameList ours;
  ours.ReadLines(LinesBack(before));
  const auto isOurs = [&](const std::u16string& id) { return !AreSame(ours.Find(id), base.Find(id)); };
  const auto entryHere = [&](const std::u16string& id) {
    const ListEntry* const entry = Find(id);
    return entry ? *entry : *ours.Find(id);
  };

  NameList merged;
  for (const Slot& slot : theirs.slots_) {
    if (slot.isGap) continue;
    const ListEntry* const own = ours.Find(slot.id);
    if (own && (isOurs(slot.id) || *own == slot.entry))
      merged.Set(slot.id, entryHere(slot.id));
    else if (!isOurs(slot.id))
      merged.Set(slot.id, slot.entry);
  }
  for (const Slot& slot : ours.slots_)
    if (isOurs(slot.id) && !merged.Find(slot.id)) merged.Set(slot.id, entryHere(slot.id));
  *this = std::move(merged);
  return AsText() != before;
}

std::u16string NameList::AsText() const {
  std::u16string text;
  for (const Slot& slot : slots_) {
    const std::u16string line = LineOf(slot.id, slot.entry);
    if (line.empty()) continue;
    text += line;
    text += u'\n';
  }
  return text;
}

bool MergeTitleWords(std::vector<std::u16string>& words, const std::vector<std::u16string>& theirs,
                     const std::vector<std::u16string>& base) {
  if (theirs == base) return false;
  using Set = std::set<std::u16string_view>;
  const std::vector<std::u16string> ours = LinesBack(TitleWordsAsText(words));
  const Set inBase(base.begin(), base.end()), inOurs(ours.begin(), ours.end());
  Set taken;
  std::vector<std::u16string> merged;
  for (const std::u16string& word : theirs) {
    const bool isRemovedHere = inBase.contains(word) && !inOurs.contains(word);
    if (!isRemovedHere && taken.insert(word).second) merged.push_back(word);
  }
  for (const std::u16string& word : ours)
    if (!inBase.contains(word) && taken.insert(word).second) merged.push_back(word);
  const bool hasChanged = merged != ours;
  words = std::move(merged);
  return hasChanged;
}

std::u16string TitleWordsAsText(const std::vector<std::u16string>& words) {
  std::u16string text;
  for (const std::u16string& word : words) {
    const std::u16string line = OneLine(Trimmed(word));
    const std::u16string_view shown = Trimmed(line);
    if (shown.empty()) continue;
    text += shown;
    text += u'\n';
  }
  return text;
}

}  // namespace quillet
