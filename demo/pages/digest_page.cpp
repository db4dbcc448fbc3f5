#include "demo/pages/digest_page.h"

#include <algorithm>
#include <iterator>

#include "core/charset.h"
#include "demo/article_code.h"
#include "demo/big5_text.h"
#include "demo/pages/menu_page.h"
#include "demo/pages/open_article.h"

namespace quillet::demo {
DigestPage::DigestPage(PageHost& host, BoardInfo board) : ListPage(host), board_(std::move(board)) {
  const auto all = host_.TheWorld().Articles(board_.name);
  std::copy_if(all.begin(), all.end(), std::back_inserter(articles_), [](const ArticlePtr& article) {
    return article->mark == 'm' && article->kind != ArticleKind::kDeleted;
  });
}

void DigestPage::DrawFrame(Canvas& canvas) {
  DrawTitleBar(canvas, u"【精華文章】", board_.name + " ");
  canvas.Put(1, 0, u"[←]離開 [→]閱讀 [↑↓]選擇");
  canvas.Fill(2, 0, kBarEnd, kHeads);
  canvas.Put(2, 0, u"   編號   標      題                                        編選        日期", kHeads);
  if (articles_.empty()) canvas.Put(5, 10, u"這個看板還沒有精華文章。");
  DrawStatusBar(canvas, host_);
}

void DigestPage::DrawItem(Canvas& canvas, int row, int index) {
  const Article& article = *articles_[static_cast<std::size_t>(index)];
  const BbsTime time = TimeOf(article.seconds);
  canvas.Put(row, 3, PadLeft(std::to_string(index + 1), 4));
  canvas.Put(row, 10, PadRight(ToBig5(u"◇ ") + article.title, 45));
  canvas.Put(row, 57, PadRight(article.authorId, 12));
  canvas.Put(row, 69, std::to_string(time.month) + "/" + std::to_string(time.day));
}

void DigestPage::OpenItem(int index) {
  OpenArticle(host_, board_.name, articles_[static_cast<std::size_t>(index)],
              [this](ArticleStep step) { return Step(step); });
}

ArticlePtr DigestPage::Step(ArticleStep step) {
  const int next = Selected() + (step == ArticleStep::kPrevious ? -1 : 1);
  const bool byOrder = step == ArticleStep::kNext || step == ArticleStep::kPrevious;
  if (!byOrder || next < 0 || next >= Count()) return nullptr;
  Select(next);
  return articles_[static_cast<std::size_t>(next)];
}

}  // namespace quillet::demo
