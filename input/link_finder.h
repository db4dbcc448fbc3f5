// Links in a line of text: web addresses, and articles of the BBS by their web link or by "#code (board)".
// Pure; any thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bbs/article_code.h"
#include "bbs/link_places.h"
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

// What stands at a place of the line.
TextLink LinkOf(const ScreenRow& text, const LinkPlace& place, const WebHosts& hosts);

// All of the line, in the order of their columns.
std::vector<TextLink> FindLinks(const ScreenRow& text, const WebHosts& hosts);

}  // namespace quillet
