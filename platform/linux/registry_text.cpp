#include "platform/linux/registry_text.h"

#include <array>
#include <cstdio>
#include <optional>
#include <utility>

#include "platform/utf8.h"

namespace quillet {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kOpeningLine = "; Values that Quillet keeps for its user";
constexpr std::string_view kClosingLine = "; end of the values";
constexpr std::u16string_view kNumberMark = u"dword:";
constexpr std::size_t kNumberDigits = 8;
constexpr std::size_t kUnitDigits = 4;

bool IsControl(char16_t unit) {
  return unit < 0x20 || unit == 0x7F;
}

bool IsSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDFFF;
}

bool IsPairAt(std::u16string_view text, std::size_t i) {
  return text[i] >= 0xD800 && text[i] <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
         text[i + 1] <= 0xDFFF;
}

bool Take(std::u16string_view& rest, std::u16string_view expected) {
  if (!rest.starts_with(expected)) return false;
  rest.remove_prefix(expected.size());
  return true;
}

// Exactly `count` digits of either case.
std::optional<std::uint32_t> TakeHex(std::u16string_view& rest, std::size_t count) {
  if (rest.size() < count) return std::nullopt;
  std::uint32_t value = 0;
  for (const char16_t digit : rest.substr(0, count)) {
    std::uint32_t part = 0;
    if (digit >= u'0' && digit <= u'9')
      part = digit - std::uint32_t{u'0'};
    else if (digit >= u'a' && digit <= u'f')
      part = digit - std::uint32_t{u'a'} + 10;
    else if (digit >= u'A' && digit <= u'F')
      part = digit - std::uint32_t{u'A'} + 10;
    else
      return std::nullopt;
    value = value << 4 | part;
  }
  rest.remove_prefix(count);
  return value;
}

// The text up to `end`, which is taken too.
std::optional<std::u16string> TakeEscaped(std::u16string_view& rest, char16_t end) {
  std::u16string text;
  while (!rest.empty()) {
    const char16_t unit = rest.front();
    rest.remove_prefix(1);
    if (unit == end) return text;
    if (IsControl(unit)) return std::nullopt;
    if (unit != u'\\') {
      text += unit;
    } else if (Take(rest, u"u")) {
      const auto value = TakeHex(rest, kUnitDigits);
      if (!value) return std::nullopt;
      text += static_cast<char16_t>(*value);
    } else if (!rest.empty() && (rest.front() == u'\\' || rest.front() == end)) {
      text += rest.front();
      rest.remove_prefix(1);
    } else {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

std::optional<std::u16string> ParsePath(std::u16string_view line) {
  if (!Take(line, u"[")) return std::nullopt;
  auto path = TakeEscaped(line, u']');
  return line.empty() ? path : std::nullopt;
}

std::optional<std::pair<std::u16string, RegistryValues::Data>> ParseValue(std::u16string_view line) {
  if (!Take(line, u"\"")) return std::nullopt;
  auto name = TakeEscaped(line, u'"');
  if (!name || !Take(line, u"=")) return std::nullopt;
  std::optional<RegistryValues::Data> data;
  if (Take(line, kNumberMark)) {
    data = TakeHex(line, kNumberDigits);
  } else if (Take(line, u"\"")) {
    data = TakeEscaped(line, u'"');
  }
  if (!data || !line.empty()) return std::nullopt;
  return std::pair(*std::move(name), *std::move(data));
}

std::string_view WithoutBlanks(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = line.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}

// `path` is the section that the line stands in, and is left empty by a heading that cannot be read, so that
// the values under it do not go to the section before.
bool ReadLine(std::string_view bytes, std::optional<std::u16string>& path, RegistryValues& values) {
  const auto line = Utf16FromUtf8(bytes);
  if (bytes.starts_with('[')) {
    path = line ? ParsePath(*line) : std::nullopt;
    return path.has_value();
  }
  auto value = line ? ParseValue(*line) : std::nullopt;
  if (!value || !path) return false;
  values.Set(*path, value->first, std::move(value->second));
  return true;
}

std::string Escaped(std::u16string_view text, char16_t end) {
  std::u16string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (IsPairAt(text, i)) {
      out += unit;
      out += text[++i];
    } else if (IsControl(unit) || IsSurrogate(unit)) {
      std::array<char, 8> digits{};
      std::snprintf(digits.data(), digits.size(), "\\u%04x", static_cast<unsigned>(unit));
      out.append(digits.data(), digits.data() + 2 + kUnitDigits);
    } else {
      if (unit == u'\\' || unit == end) out += u'\\';
      out += unit;
    }
  }
  return Utf8FromUtf16(out);
}

std::string FormatData(const RegistryValues::Data& data) {
  if (const auto* text = std::get_if<std::u16string>(&data)) return '"' + Escaped(*text, u'"') + '"';
  std::array<char, 16> number{};
  std::snprintf(number.data(), number.size(), "dword:%08x", unsigned{std::get<std::uint32_t>(data)});
  return number.data();
}

}  // namespace

RegistryText ParseRegistryText(std::string_view bytes) {
  RegistryText text;
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  std::optional<std::u16string> path;
  for (std::size_t number = 1; !bytes.empty(); ++number) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    const std::string_view line = WithoutBlanks(bytes.substr(0, end));
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
    if (line.empty()) continue;
    text.closed = line == kClosingLine;
    if (line.starts_with(';')) continue;
    if (!ReadLine(line, path, text.values) && text.firstBadLine == 0) text.firstBadLine = number;
  }
  return text;
}

std::string FormatRegistryText(const RegistryValues& values) {
  std::string text(kOpeningLine);
  const std::u16string* section = nullptr;
  for (const auto& [key, value] : values.All()) {
    if (!section || *section != key.first) text += "\n[" + Escaped(value.path, u']') + ']';
    section = &key.first;
    text += "\n\"" + Escaped(value.name, u'"') + "\"=" + FormatData(value.data);
  }
  text += '\n';
  text += kClosingLine;
  text += '\n';
  return text;
}

}  // namespace quillet
