#include "demo/pages/reader_page.h"

#include <utility>

#include "demo/content_loader.h"
#include "demo/pages/article_info.h"
#include "demo/pages/board_prompt.h"
#include "demo/pages/open_article.h"
#include "demo/pages/post_flow.h"
#include "demo/pages/prompts.h"
#include "demo/pages/push_page.h"

namespace quillet::demo {
namespace {

constexpr int kSearchRow = 22;

struct StepKey {
  char key;
  ArticleStep step;
};
constexpr StepKey kStepKeys[] = {
    {'f', ArticleStep::kNext},          {'b', ArticleStep::kPrevious},
    {'=', ArticleStep::kFirstOfThread}, {']', ArticleStep::kNextOfThread},
    {'t', ArticleStep::kNextOfThread},  {'[', ArticleStep::kPreviousOfThread},
    {'a', ArticleStep::kNextOfAuthor},  {'A', ArticleStep::kPreviousOfAuthor},
};

}  // namespace

ReaderPage::ReaderPage(PageHost& host, std::string board, ArticlePtr article, ArticleStepper stepper)
    : host_(host),
      board_(std::move(board)),
      article_(std::move(article)),
      stepper_(std::move(stepper)),
      viewer_(LayOutArticle(*article_, board_, host.TheHouse()), TextViewer::Footer::kArticle) {
  host_.ReadArticles().insert(article_->fileName);
}

void ReaderPage::Draw(Canvas& canvas) {
  // Pushes of others appear at the next redraw.
  const ArticlePtr now = host_.TheWorld().FindArticle(board_, article_->fileName);
  if (now && now != article_) {
    article_ = now;
    viewer_.Replace(LayOutArticle(*article_, board_, host_.TheHouse()));
  }
  viewer_.Draw(canvas);
}

void ReaderPage::OnKey(const Key& key) {
  if ((key.Is(' ') || key.Is(KeyKind::kRight)) && viewer_.AtEnd())
    GoTo(ArticleStep::kNext);
  else if (viewer_.OnKey(key) || OnStepKey(key))
    return;
  else if (key.Is(KeyKind::kLeft) || key.Is('q'))
    Leave();
  else if (key.Is('X') || key.Is('%'))
    StartPush(host_, board_, *article_);
  else if (key.Is('y') || key.Is('r'))
    StartReply(host_, board_, *article_);
  else if (key.Is('h'))
    OpenHelp(host_);
  else if (key.Is('Q'))
    OpenArticleInfo(host_, board_, *article_);
  else if (key.Is('s'))
    OpenBoardPrompt(host_);
  else if (key.Is('/'))
    AskSearch();
  else if (key.Is('n'))
    Search(searched_);
}

bool ReaderPage::OnStepKey(const Key& key) {
  for (const StepKey& entry : kStepKeys) {
    if (!key.Is(entry.key)) continue;
    GoTo(entry.step);
    return true;
  }
  return false;
}

void ReaderPage::GoTo(ArticleStep step) {
  const ArticlePtr next = stepper_(step);
  Leave();
  if (next) OpenArticle(host_, board_, next, stepper_);
}

void ReaderPage::AskSearch() {
  host_.Open(std::make_unique<LinePrompt>(host_, LinePrompt::Place{kSearchRow, u"[搜尋]關鍵字:", 30, {}},
                                          [this](const std::string& text) { Search(text); }));
}

void ReaderPage::Search(const std::string& text) {
  if (text.empty()) return;
  searched_ = text;
  if (!viewer_.FindNext(text)) host_.Open(std::make_unique<MessagePage>(host_, u"後面沒有這個關鍵字"));
}

TextPage::TextPage(PageHost& host, const std::vector<std::string>& lines)
    : TextPage(host, LayOutText(lines)) {}

TextPage::TextPage(PageHost& host, ReaderText text)
    : host_(host), viewer_(std::move(text), TextViewer::Footer::kText) {}

void TextPage::OnKey(const Key& key) {
  const bool past = (key.Is(' ') || key.Is(KeyKind::kRight)) && viewer_.AtEnd();
  if (past || key.Is(KeyKind::kLeft) || key.Is('q'))
    host_.CloseTop();
  else
    viewer_.OnKey(key);
}

void OpenHelp(PageHost& host) {
  host.Open(std::make_unique<TextPage>(host, LoadScreen(host.TheHouse().contentFolder, "help.txt")));
}

}  // namespace quillet::demo
