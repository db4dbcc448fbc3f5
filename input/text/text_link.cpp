#include "input/text/text_link.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/ascii.h"

namespace quillet {
namespace {

std::u16string Widened(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
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

// What "#code (board)" names; the blank may be missing.
ArticleReference ArticleOfCode(std::u16string_view text) {
  const std::u16string_view board = text.substr(text.find(u'(') + 1);
  return {.board = std::u16string(board.substr(0, board.size() - 1)),
          .code = std::u16string(text.substr(1, kAidLength))};
}

}  // namespace

TextLink LinkOf(const ScreenRow& text, const LinkPlace& place, const WebHosts& hosts) {
  TextLink link{.first = place.first, .last = place.last, .address = {}, .article = {}, .kind = place.kind};
  std::u16string shown =
      Widened(BytesOf(text).substr(place.first, static_cast<std::size_t>(place.last - place.first)));
  if (place.kind == LinkKind::kArticleCode) {
    link.article = ArticleOfCode(shown);
  } else {
    link.article = ArticleOf(shown, hosts);
    link.address = std::move(shown);
  }
  return link;
}

}  // namespace quillet
