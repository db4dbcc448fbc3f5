// The two names of an article, its file name on the BBS and its eight-character code, turned into each other,
// and the web links made of them. Pure; any thread; bad input gives empty answers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/endpoints.h"

namespace quillet {

// Digit values 0 to 63.
inline constexpr std::u16string_view kAidAlphabet =
    u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz-_";
inline constexpr std::size_t kAidLength = 8;
inline constexpr std::size_t kArticleFileNameLength = 18;

// Bits 0-11 the file name's suffix, 12-43 its seconds since 1970, 44-47 0 for "M" and 1 for "G". "@" ends the
// code; 0 when a character before it is not of the alphabet.
std::uint64_t AidToValue(std::u16string_view code);

// "M.1700000000.A.1F3"; empty for a code that is no eight characters of the alphabet (before any "@").
std::u16string AidToFileName(std::u16string_view code);
// Empty unless the name is well formed. Seconds above 2147483647 become that.
std::u16string FileNameToAid(std::u16string_view fileName);

// Where the BBS shows its articles on the web.
struct WebHosts {
  std::u16string host;     // its own web view
  std::u16string mirror1;  // a mirror with the same paths
  std::u16string mirror2;  // a mirror with the path "/p/"
};
// "web/host", "web/mirror_1", "web/mirror_2", in lower case; empty for a value that is no plain ASCII.
WebHosts WebHostsOf(const Endpoints& endpoints);

struct ArticleReference {
  std::u16string board;
  std::u16string code;
  std::int32_t lastLine = 0;  // last line read; 0 when not known

  bool operator==(const ArticleReference&) const = default;
};

// Empty when board or code is, when the code names no file or the web view's host is not configured.
std::u16string ArticleUrl(std::u16string_view board, std::u16string_view code, const WebHosts& hosts);

// Looks for a link of one of the hosts anywhere in the text; of several, the first host's. It ends at the
// first blank or control character. True when its prefix and the separator behind the board are found, even
// if no well-formed file name follows: the code is then empty, and the reference is to no article. When
// false, the reference is emptied. A host that is not configured matches nothing.
bool ParseArticleUrl(std::u16string_view text, const WebHosts& hosts, ArticleReference& reference);

}  // namespace quillet
