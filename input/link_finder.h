// Links in a line of text: web addresses, and articles of the BBS by their web link or by "#code (board)".
// Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bbs/article_code.h"
#include "core/screen_snapshot.h"
#include "platform/web_address.h"

namespace quillet {

struct TextLink {
  int first = 0;  // columns first to last-1
  int last = 0;
  std::u16string address;                   // one that IsWebAddress takes; empty for an article code
  std::optional<ArticleReference> article;  // opens on the BBS itself

  bool operator==(const TextLink&) const = default;
};

// In the order of their columns, not overlapping. A web address ends where none can go on: at blanks, quotes,
// double-width characters; punctuation at its end belongs to the sentence around it, and so does a bracket
// that is not opened within it.
std::vector<TextLink> FindLinks(const ScreenRow& text, const WebHosts& hosts);

}  // namespace quillet
