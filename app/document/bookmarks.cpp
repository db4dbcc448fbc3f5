#include "app/document/bookmarks.h"

#include <utility>

#include "settings/files/article_list_file.h"
#include "settings/files/bookmarks.h"

namespace quillet {
namespace {

// The list's record of an article that is open.
ArticleItem BookmarkOf(const ArticleInfo& article) {
  ArticleItem item;
  item.postTime = article.postTime;
  item.board = article.board;
  item.code = article.code;
  item.title = article.title;
  return item;
}

}  // namespace

Bookmarks::Bookmarks(Parts parts) : parts_(std::move(parts)) {
  connect(&parts_.automations, &Automations::CodeAsked, this, &Bookmarks::OnCodeAsked);
  connect(&parts_.automations, &Automations::ArticlePushed, this, &Bookmarks::OnArticlePushed);
}

void Bookmarks::Load() {
  LoadArticleLists(parts_.files, parts_.hosts, lists_, boards_);
}

bool Bookmarks::HoldNews() const {
  const auto holds = [&](ArticleListKind kind) { return !lists_.Of(kind).children.empty(); };
  return (parts_.settings.hotArticle && holds(ArticleListKind::kHot)) ||
         (parts_.settings.trackArticle && holds(ArticleListKind::kTracked)) ||
         (parts_.settings.bookmarkUpdate && holds(ArticleListKind::kBookmarks));
}

void Bookmarks::Change(ArticleListKind kind, const std::function<void(ArticleFolder&)>& change) {
  ChangeArticleList(parts_.files, parts_.hosts, lists_, kind, change);
  emit Changed();
}

bool Bookmarks::Has(const ArticleInfo& article) const {
  return article.IsArticle() && IsBookmarked(lists_.Of(ArticleListKind::kBookmarks), BookmarkOf(article));
}

bool Bookmarks::ToggleOpenArticle() {
  const ArticleInfo article = parts_.connection.Seen().article;
  if (!article.IsArticle() || !parts_.connection.IsConnected()) return false;
  // One that is there is found without its code.
  if (article.code.empty() && !Has(article)) return AskCode(article, CodeFor::kToggle);
  Toggle(article);
  return true;
}

void Bookmarks::Toggle(const ArticleInfo& article) {
  const bool adds = !Has(article);
  if (article.code.empty() && adds) {
    emit Ended(BookmarkEnd::kNoCode);
    return;
  }
  // Another program may have done meanwhile what is wished here.
  Change(ArticleListKind::kBookmarks, [&, item = BookmarkOf(article)](ArticleFolder& root) {
    if (IsBookmarked(root, item) != adds) ToggleBookmark(root, item);
  });
  emit Ended(adds ? BookmarkEnd::kAdded : BookmarkEnd::kRemoved);
}

bool Bookmarks::Add(const ArticleInfo& article) {
  if (article.code.empty() || Has(article)) return false;
  Change(ArticleListKind::kBookmarks, [item = BookmarkOf(article)](ArticleFolder& root) {
    // Another program may have added it meanwhile.
    if (!IsBookmarked(root, item)) ToggleBookmark(root, item);
  });
  return true;
}

// ---- Codes and pushes

bool Bookmarks::AskCode(const ArticleInfo& article, CodeFor use) {
  if (!parts_.automations.AskCode(article)) return false;
  codeFor_ = use;
  return true;
}

void Bookmarks::OnCodeAsked(const ArticleInfo& article) {
  if (codeFor_ == CodeFor::kToggle)
    Toggle(article);
  else if (Add(article))
    emit Ended(BookmarkEnd::kAdded);
}

bool Bookmarks::WantsCodeOf(const ArticleInfo& article) const {
  return parts_.settings.markAfterPush && article.code.empty() && !Has(article);
}

// What an order has pushed tells of itself, and has asked for the code.
void Bookmarks::OnArticlePushed(const ArticleInfo& article, PushedBy by) {
  if (!parts_.settings.markAfterPush || !article.IsArticle() || Has(article)) return;
  const bool isByHand = by == PushedBy::kHand;
  if (Add(article)) {
    if (isByHand) emit Ended(BookmarkEnd::kAdded);
    return;
  }
  // The BBS tells the code of the article that is open.
  if (isByHand && IsSameArticle(article, parts_.connection.Seen().article))
    AskCode(article, CodeFor::kPushed);
}

}  // namespace quillet
