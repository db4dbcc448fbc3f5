#include "bbs/article_code.h"

#include <algorithm>
#include <array>
#include <optional>

namespace quillet {
namespace {

constexpr std::u16string_view kScheme = u"https://";
constexpr std::u16string_view kArticlePath = u"/bbs/";
constexpr std::u16string_view kSecondMirrorPath = u"/p/";

constexpr unsigned kBitsPerDigit = 6;
constexpr unsigned kSuffixBits = 12;
constexpr unsigned kSecondsBits = 32;
constexpr std::uint64_t kSecondsMask = (std::uint64_t{1} << kSecondsBits) - 1;
constexpr std::uint64_t kKindMask = 0xF;
constexpr std::uint64_t kLargestSeconds = 0x7FFFFFFF;

constexpr std::size_t kSecondsDigits = 10;
constexpr std::size_t kSuffixDigits = 3;

constexpr int kNoDigit = -1;

constexpr auto kDigitValues = [] {
  std::array<signed char, 128> values{};
  values.fill(kNoDigit);
  for (std::size_t i = 0; i < kAidAlphabet.size(); ++i)
    values[kAidAlphabet[i]] = static_cast<signed char>(i);
  return values;
}();

int AidDigit(char16_t c) {
  return c < kDigitValues.size() ? kDigitValues[c] : kNoDigit;
}

int HexDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  if (c >= u'A' && c <= u'F') return c - u'A' + 10;
  if (c >= u'a' && c <= u'f') return c - u'a' + 10;
  return kNoDigit;
}

std::u16string_view BeforeAt(std::u16string_view code) {
  return code.substr(0, code.find(u'@'));
}

std::optional<std::uint64_t> ReadDigits(std::u16string_view digits, int base) {
  std::uint64_t value = 0;
  for (const char16_t c : digits) {
    const int digit = HexDigit(c);
    if (digit == kNoDigit || digit >= base) return std::nullopt;
    value = value * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
  }
  return value;
}

std::u16string ValueToAid(std::uint64_t value) {
  std::u16string code(kAidLength, kAidAlphabet[0]);
  for (auto digit = code.rbegin(); digit != code.rend(); ++digit) {
    *digit = kAidAlphabet[value % kAidAlphabet.size()];
    value >>= kBitsPerDigit;
  }
  return code;
}

std::u16string LinkPrefix(std::u16string_view host, std::u16string_view path) {
  if (host.empty()) return {};
  return std::u16string(kScheme).append(host).append(path);
}

// What follows the prefix, up to the blank or control character that ends a link in running text.
std::optional<std::u16string_view> RestOfLink(std::u16string_view text, std::u16string_view prefix) {
  if (prefix.empty()) return std::nullopt;
  const std::size_t found = text.find(prefix);
  if (found == text.npos) return std::nullopt;
  const std::u16string_view rest = text.substr(found + prefix.size());
  const auto end = std::find_if(rest.begin(), rest.end(), [](char16_t c) { return c <= 0x20 || c == 0x7F; });
  return rest.substr(0, static_cast<std::size_t>(end - rest.begin()));
}

}  // namespace

std::uint64_t AidToValue(std::u16string_view code) {
  std::uint64_t value = 0;
  for (const char16_t c : BeforeAt(code)) {
    const int digit = AidDigit(c);
    if (digit == kNoDigit) return 0;
    value = value << kBitsPerDigit | static_cast<unsigned>(digit);
  }
  return value;
}

std::u16string AidToFileName(std::u16string_view code) {
  const std::u16string_view digits = BeforeAt(code);
  if (digits.size() != kAidLength) return {};
  if (!std::all_of(digits.begin(), digits.end(), [](char16_t c) { return AidDigit(c) != kNoDigit; }))
    return {};

  const std::uint64_t value = AidToValue(digits);
  const std::uint64_t kind = value >> (kSuffixBits + kSecondsBits) & kKindMask;
  std::u16string name = kind == 0 ? u"M." : u"G.";
  for (const char c : std::to_string(value >> kSuffixBits & kSecondsMask))
    name += static_cast<char16_t>(c);
  name += u".A.";
  for (unsigned shift = kSuffixBits; shift > 0; shift -= 4)
    name += u"0123456789ABCDEF"[value >> (shift - 4) & 0xF];
  return name;
}

std::u16string FileNameToAid(std::u16string_view fileName) {
  if (fileName.size() != kArticleFileNameLength) return {};
  if (fileName[0] != u'M' && fileName[0] != u'G') return {};
  if (fileName[1] != u'.' || fileName.substr(2 + kSecondsDigits, 3) != u".A.") return {};
  const auto seconds = ReadDigits(fileName.substr(2, kSecondsDigits), 10);
  const auto suffix = ReadDigits(fileName.substr(kArticleFileNameLength - kSuffixDigits), 16);
  if (!seconds || !suffix) return {};

  const std::uint64_t kind = fileName[0] == u'G' ? 1 : 0;
  const std::uint64_t kindAndSeconds = kind << kSecondsBits | std::min(*seconds, kLargestSeconds);
  return ValueToAid(kindAndSeconds << kSuffixBits | *suffix);
}

WebHosts WebHostsOf(const Endpoints& endpoints) {
  return {.host = endpoints.HostName("web/host"),
          .mirror1 = endpoints.HostName("web/mirror_1"),
          .mirror2 = endpoints.HostName("web/mirror_2")};
}

std::u16string ArticleUrl(std::u16string_view board, std::u16string_view code, const WebHosts& hosts) {
  const std::u16string prefix = LinkPrefix(hosts.host, kArticlePath);
  const std::u16string fileName = AidToFileName(code);
  if (board.empty() || fileName.empty() || prefix.empty()) return {};
  return std::u16string(prefix).append(board).append(u"/").append(fileName).append(u".html");
}

bool ParseArticleUrl(std::u16string_view text, const WebHosts& hosts, ArticleReference& reference) {
  reference = {};
  auto link = RestOfLink(text, LinkPrefix(hosts.host, kArticlePath));
  if (!link) link = RestOfLink(text, LinkPrefix(hosts.mirror1, kArticlePath));
  if (!link) link = RestOfLink(text, LinkPrefix(hosts.mirror2, kSecondMirrorPath));
  if (!link) return false;

  std::size_t separator = link->find(u'/');
  if (separator == link->npos) separator = link->find(u'.');
  if (separator == link->npos) return false;
  reference.board = link->substr(0, separator);
  reference.code = FileNameToAid(link->substr(separator + 1, kArticleFileNameLength));
  return true;
}

}  // namespace quillet
