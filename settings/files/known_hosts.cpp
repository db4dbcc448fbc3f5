#include "settings/files/known_hosts.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/ascii.h"
#include "platform/utf8.h"

namespace quillet {
namespace {

// No name comes near it, and its line must stay one.
constexpr std::size_t kLongestHost = 253;

enum Field { kHost, kType, kFingerprint, kFields };
using Fields = std::array<std::u16string_view, kFields>;

// Nothing when there are more or fewer.
std::optional<Fields> FieldsOf(std::u16string_view line) {
  Fields fields;
  for (std::size_t i = 0; i < kFields; ++i) {
    const std::size_t end = std::min(line.find(u' '), line.size());
    fields[i] = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    if (fields[i].empty()) return std::nullopt;
  }
  return line.empty() ? std::optional(fields) : std::nullopt;
}

bool IsOneWord(std::u16string_view text) {
  return !text.empty() && std::none_of(text.begin(), text.end(), [](char16_t unit) { return unit <= u' '; });
}

std::u16string HostWord(std::string_view host) {
  std::u16string word = Utf16FromUtf8(AsciiLowered(host)).value_or(std::u16string());
  return word.size() <= kLongestHost && IsOneWord(word) ? word : std::u16string();
}

}  // namespace

KnownHosts::KnownHosts(DataFiles& files) : files_(files), lines_(files.Read(kKnownHostsFile).lines) {}

std::optional<std::size_t> KnownHosts::LineOf(std::u16string_view host) const {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const std::optional<Fields> fields = FieldsOf(lines_[i]);
    if (fields && (*fields)[kHost] == host) return i;
  }
  return std::nullopt;
}

std::optional<HostKey> KnownHosts::KeyOf(std::string_view host) const {
  const std::optional<std::size_t> line = LineOf(HostWord(host));
  if (!line) return std::nullopt;
  const std::optional<Fields> fields = FieldsOf(lines_[*line]);
  return HostKey{Utf8FromUtf16((*fields)[kType]), Utf8FromUtf16((*fields)[kFingerprint])};
}

bool KnownHosts::Keep(std::string_view host, const HostKey& key) {
  return Change(host, key, false);
}

bool KnownHosts::Replace(std::string_view host, const HostKey& key) {
  return Change(host, key, true);
}

bool KnownHosts::Change(std::string_view host, const HostKey& key, bool replaces) {
  const std::u16string word = HostWord(host);
  const std::u16string text = word + u' ' + Utf16FromUtf8(key.type).value_or(std::u16string()) + u' ' +
                              Utf16FromUtf8(key.fingerprint).value_or(std::u16string());
  if (!FieldsOf(text)) return false;
  const FileLock turn = files_.WaitForTurn(kKnownHostsFile);
  // What every program has changed stands in the file already.
  if (auto others = files_.ReadAgain(kKnownHostsFile)) lines_ = std::move(others->now);
  const std::optional<std::size_t> line = LineOf(word);
  if (line && !replaces && lines_[*line] != text) return false;
  if (line)
    lines_[*line] = text;
  else
    lines_.push_back(text);
  std::u16string whole;
  for (const std::u16string& one : lines_)
    whole.append(one).append(u"\n");
  return files_.Write(kKnownHostsFile, whole);
}

}  // namespace quillet
