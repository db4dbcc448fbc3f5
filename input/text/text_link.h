// Where a link leads: to a web address, or to an article of the BBS, named by its web link or by
// "#code (board)". Pure; any thread.
#pragma once

#include <optional>
#include <string>

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
  LinkKind kind = LinkKind::kWeb;

  bool operator==(const TextLink&) const = default;
};

// What stands at a place of the line.
TextLink LinkOf(const ScreenRow& text, const LinkPlace& place, const WebHosts& hosts);

}  // namespace quillet
