#include "input/link_finder.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/ascii.h"

namespace quillet {
namespace {

// Digits in front of the suffix and the seconds of an article's file name: its kind.
constexpr unsigned kKindShift = 44;
constexpr std::uint64_t kHighestKind = 1;
constexpr std::size_t kLongestBoardName = 20;

std::u16string Widened(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

bool StartsWithAnyCase(std::string_view text, std::string_view lower) {
  return text.size() >= lower.size() &&
         std::equal(lower.begin(), lower.end(), text.begin(),
                    [](char wanted, char c) { return wanted == AsciiLower(c); });
}

bool IsWide(char byte) {
  return static_cast<unsigned char>(byte) >= 0x80;
}

bool IsBoardName(std::u16string_view name) {
  return !name.empty() && name.size() <= kLongestBoardName &&
         std::all_of(name.begin(), name.end(), [](char16_t c) {
           return IsAsciiLetterOrDigit(c) || c == u'-' || c == u'_' || c == u'.';
         });
}

// ---- Web addresses

bool CanGoOn(char byte) {
  constexpr std::string_view kEnds = "\"<>`\\";
  return byte > ' ' && byte < 0x7F && kEnds.find(byte) == kEnds.npos;
}

// Whether the address closes more brackets of the kind at its end than it opens.
bool EndsWithStrayBracket(std::string_view address) {
  constexpr std::string_view kOpening = "([{";
  constexpr std::string_view kClosing = ")]}";
  const std::size_t kind = kClosing.find(address.back());
  return kind != kClosing.npos && std::count(address.begin(), address.end(), kClosing[kind]) >
                                      std::count(address.begin(), address.end(), kOpening[kind]);
}

std::string_view WithoutSentenceEnd(std::string_view address) {
  constexpr std::string_view kPunctuation = ".,;:!?'";
  while (!address.empty() &&
         (kPunctuation.find(address.back()) != kPunctuation.npos || EndsWithStrayBracket(address)))
    address.remove_suffix(1);
  return address;
}

// An address names an article only by its own host: another one within it, as the target of a redirection, is
// that site's affair.
std::optional<ArticleReference> ArticleOf(std::u16string address, const WebHosts& hosts) {
  const std::size_t site = address.find(u"://") + 3;
  const std::size_t siteEnd = std::min(address.find_first_of(u"/?#", site), address.size());
  for (std::size_t i = 0; i < siteEnd; ++i)
    address[i] = AsciiLower(address[i]);
  address.resize(std::min(address.find(u"://", site), address.size()));
  ArticleReference article;
  if (!ParseArticleUrl(address, hosts, article) || article.code.empty() || !IsBoardName(article.board))
    return std::nullopt;
  return article;
}

std::optional<TextLink> WebLinkAt(std::string_view cells, int col, const WebHosts& hosts) {
  const std::string_view rest = cells.substr(static_cast<std::size_t>(col));
  if (!StartsWithAnyCase(rest, "http://") && !StartsWithAnyCase(rest, "https://")) return std::nullopt;
  const auto* const end = std::find_if_not(rest.begin(), rest.end(), CanGoOn);
  const std::string_view shown = WithoutSentenceEnd({rest.begin(), end});
  std::u16string address = Widened(shown);
  if (!IsWebAddress(address)) return std::nullopt;
  std::optional<ArticleReference> article = ArticleOf(address, hosts);
  return TextLink{.first = col,
                  .last = col + static_cast<int>(shown.size()),
                  .address = std::move(address),
                  .article = std::move(article)};
}

// ---- Article codes

bool IsOfCode(char16_t c) {
  return kAidAlphabet.find(c) != kAidAlphabet.npos;
}

// Of eight characters that could be a code, most words are none: they would name an article of a kind that
// there is not.
bool IsArticleCode(std::u16string_view code) {
  return code.size() == kAidLength && std::all_of(code.begin(), code.end(), IsOfCode) &&
         AidToValue(code) >> kKindShift <= kHighestKind;
}

// "#code (board)"; the blank may be missing. `before` is the character in front of `col`, a blank where that
// is a double-width one, whose second byte may look like a letter.
std::optional<TextLink> CodeLinkAt(std::string_view cells, int col, char before) {
  const std::string_view rest = cells.substr(static_cast<std::size_t>(col));
  if (!rest.starts_with('#') || IsOfCode(static_cast<unsigned char>(before))) return std::nullopt;
  std::u16string code = Widened(rest.substr(1, kAidLength));
  if (!IsArticleCode(code)) return std::nullopt;
  std::size_t open = 1 + kAidLength;
  if (rest.substr(open).starts_with(' ')) ++open;
  if (!rest.substr(open).starts_with('(')) return std::nullopt;
  const std::size_t close = rest.find(')', open);
  if (close == rest.npos) return std::nullopt;
  std::u16string board = Widened(rest.substr(open + 1, close - open - 1));
  if (!IsBoardName(board)) return std::nullopt;
  return TextLink{.first = col,
                  .last = col + static_cast<int>(close) + 1,
                  .address = {},
                  .article = ArticleReference{.board = std::move(board), .code = std::move(code)}};
}

}  // namespace

std::vector<TextLink> FindLinks(const ScreenRow& text, const WebHosts& hosts) {
  const std::string_view cells = BytesOf(text);
  std::vector<TextLink> links;
  char before = ' ';
  for (int col = 0; col < kCols;) {
    std::optional<TextLink> link = WebLinkAt(cells, col, hosts);
    if (!link) link = CodeLinkAt(cells, col, before);
    const char byte = cells[static_cast<std::size_t>(col)];
    if (link) {
      col = link->last;
      before = cells[static_cast<std::size_t>(col) - 1];
      links.push_back(*std::move(link));
    } else {
      col += IsWide(byte) ? 2 : 1;
      before = IsWide(byte) ? ' ' : byte;
    }
  }
  return links;
}

}  // namespace quillet
