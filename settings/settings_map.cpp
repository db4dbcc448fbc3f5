#include "settings/settings_map.h"

#include <algorithm>
#include <utility>

#include "settings/files/text_lines.h"

namespace quillet {
namespace {

constexpr std::size_t kBrackets = 2;

// A name as it comes back from between the brackets.
std::u16string SectionName(std::u16string_view text) {
  return std::u16string(Trimmed(OneLine(Trimmed(text), kLongestLine - kBrackets)));
}

// Without what would make the line a section's header.
std::u16string WithoutBrackets(std::u16string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(u"[ \t\r\n"), line.size()));
  return std::u16string(Trimmed(line));
}

// A key as it comes back from before the first "=".
std::u16string KeyName(std::u16string_view text) {
  std::u16string key = OneLine(Trimmed(text));
  std::replace(key.begin(), key.end(), u'=', u' ');
  return WithoutBrackets(key);
}

// What a line still holds after the key and the "=".
std::u16string ValueThatFits(std::u16string_view text, std::u16string_view key) {
  const std::size_t room = kLongestLine - std::min(key.size() + 1, kLongestLine);
  return std::u16string(Trimmed(OneLine(Trimmed(text), room)));
}

void ReplaceAll(std::u16string& text, std::u16string_view from, std::u16string_view to) {
  for (std::size_t at = text.find(from); at != std::u16string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
}

// The last character is no part of the name, whatever it is; half of one would be no text.
std::u16string_view NameInHeader(std::u16string_view line) {
  line.remove_prefix(1);
  if (!line.empty()) line.remove_suffix(EndsWithPair(line) ? 2 : 1);
  return Trimmed(line);
}

void TakeTrackLine(std::u16string_view line, SettingsMap::Keys& keys) {
  std::u16string rule = TrackLineOf(line);
  if (!rule.empty()) keys.try_emplace(std::move(rule));
}

void TakeLine(std::u16string_view line, SettingsMap::Keys& keys) {
  const std::size_t equals = std::min(line.find(u'='), line.size());
  const std::u16string_view key = Trimmed(line.substr(0, equals));
  const std::u16string_view value = Trimmed(line.substr(std::min(equals + 1, line.size())));
  if (key.empty() && value.empty()) return;
  keys.insert_or_assign(std::u16string(key), std::u16string(value));
}

// Does to `theirs` what was done to `base` to make it `ours`.
void Redo(const SettingsMap::Keys& base, const SettingsMap::Keys& ours, SettingsMap::Keys& theirs) {
  for (const auto& [key, value] : ours) {
    const auto before = base.find(key);
    if (before == base.end() || before->second != value) theirs.insert_or_assign(key, value);
  }
  for (const auto& [key, value] : base)
    if (!ours.contains(key)) theirs.erase(key);
}

const SettingsMap::Keys& KeysOf(const SettingsMap::Sections& sections, const std::u16string& name) {
  static const SettingsMap::Keys kNone;
  const auto found = sections.find(name);
  return found == sections.end() ? kNone : found->second;
}

}  // namespace

const std::u16string* SettingsMap::Find(std::u16string_view section, std::u16string_view key) const {
  const auto keys = sections_.find(section);
  if (keys == sections_.end()) return nullptr;
  const auto entry = keys->second.find(key);
  return entry == keys->second.end() ? nullptr : &entry->second;
}

std::u16string SettingsMap::Text(std::u16string_view section, std::u16string_view key) const {
  const std::u16string* value = Find(section, key);
  return value ? *value : std::u16string();
}

int SettingsMap::Number(std::u16string_view section, std::u16string_view key) const {
  const std::u16string* value = Find(section, key);
  return value ? ToNumber(*value) : 0;
}

void SettingsMap::Set(std::u16string_view section, std::u16string_view key, std::u16string_view value) {
  std::u16string name = SectionName(section);
  if (name == kTrackSection) {
    TakeTrackLine(key, sections_[std::move(name)]);
    return;
  }
  std::u16string fitKey = KeyName(key);
  std::u16string fitValue = ValueThatFits(value, fitKey);
  if (fitKey.empty() && fitValue.empty()) return;
  sections_[std::move(name)].insert_or_assign(std::move(fitKey), std::move(fitValue));
}

void SettingsMap::SetNumber(std::u16string_view section, std::u16string_view key, int value) {
  Set(section, key, ToText(value));
}

void SettingsMap::Remove(std::u16string_view section, std::u16string_view key) {
  const auto keys = sections_.find(section);
  if (keys == sections_.end()) return;
  const auto entry = keys->second.find(key);
  if (entry != keys->second.end()) keys->second.erase(entry);
}

void SettingsMap::RemoveSection(std::u16string_view section) {
  const auto keys = sections_.find(section);
  if (keys != sections_.end()) sections_.erase(keys);
}

std::vector<std::u16string> SettingsMap::TrackLines() const {
  std::vector<std::u16string> lines;
  const auto keys = sections_.find(kTrackSection);
  if (keys == sections_.end()) return lines;
  for (const auto& [line, value] : keys->second)
    lines.push_back(line);
  return lines;
}

void SettingsMap::SetTrackLines(const std::vector<std::u16string>& lines) {
  RemoveSection(kTrackSection);
  for (const std::u16string& line : lines)
    Set(kTrackSection, line, {});
}

void SettingsMap::ReadLines(const std::vector<std::u16string>& lines) {
  Keys* keys = nullptr;
  bool isTrack = false;
  for (const std::u16string& line : lines) {
    if (line.starts_with(u'[')) {
      const std::u16string_view name = NameInHeader(line);
      isTrack = name == kTrackSection;
      keys = &sections_[std::u16string(name)];
    } else if (keys && isTrack) {
      TakeTrackLine(line, *keys);
    } else if (keys) {
      TakeLine(line, *keys);
    }
  }
}

bool SettingsMap::MergeWith(const SettingsMap& theirs, const SettingsMap& base) {
  Sections merged = theirs.sections_;
  for (const auto& [name, keys] : sections_) {
    const bool isNew = !base.sections_.contains(name);
    Keys& target = merged[name];
    Redo(KeysOf(base.sections_, name), keys, target);
    if (target.empty() && !isNew && !theirs.sections_.contains(name)) merged.erase(name);
  }
  for (const auto& [name, keys] : base.sections_) {
    const auto left = merged.find(name);
    if (sections_.contains(name) || left == merged.end()) continue;
    Redo(keys, {}, left->second);
    if (left->second.empty()) merged.erase(left);
  }
  const bool hasChanged = merged != sections_;
  sections_ = std::move(merged);
  return hasChanged;
}

std::u16string SettingsMap::AsText() const {
  std::u16string text;
  for (const auto& [name, keys] : sections_) {
    text.append(u"[").append(name).append(u"]\n");
    for (const auto& [key, value] : keys) {
      text += key;
      if (!value.empty()) text.append(u"=").append(value);
      text += u'\n';
    }
    text += u'\n';
  }
  return text;
}

std::u16string TrackLineOf(std::u16string_view line) {
  std::u16string rule = WithoutBrackets(OneLine(Trimmed(line)));
  ReplaceAll(rule, u"oard:", u"oard=");
  ReplaceAll(rule, u"uthor:", u"uthor=");
  ReplaceAll(rule, u"itle:", u"itle=");
  return rule;
}

}  // namespace quillet
