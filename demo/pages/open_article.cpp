#include "demo/pages/open_article.h"

#include "core/charset.h"
#include "demo/pages/animation_page.h"
#include "demo/pages/prompts.h"

namespace quillet::demo {
namespace {

// The notice in front of a disputed article: looks like a reader of one page, and Enter passes it.
class DisputedPage : public Page {
 public:
  DisputedPage(PageHost& host, std::function<void()> pass)
      : host_(host), pass_(std::move(pass)), viewer_(Notice(), TextViewer::Footer::kText) {}
  void Draw(Canvas& canvas) override { viewer_.Draw(canvas); }
  void OnKey(const Key& key) override {
    if (key.Is(KeyKind::kLeft) || key.Is('q')) {
      host_.CloseTop();
    } else if (key.Is(KeyKind::kEnter) || key.Is(KeyKind::kRight) || key.Is(' ')) {
      host_.CloseTop();
      pass_();
    }
  }

 private:
  static ReaderText Notice() {
    std::vector<std::string> lines(11);
    lines.push_back(ToBig5(u"        本篇文章內容經站方授權之板務管理人員判斷有尚待證實之處，"));
    lines.push_back(ToBig5(u"        請使用者於閱讀時自行參閱其他資訊來源，對文章內容真實性進一步查證。"));
    lines.emplace_back();
    lines.push_back("        \x1b[1;33m" + ToBig5(u"按 Enter 繼續閱讀本文，按 ← 離開。"));
    return LayOutText(lines);
  }

  PageHost& host_;
  std::function<void()> pass_;
  TextViewer viewer_;
};

}  // namespace

void OpenArticle(PageHost& host, const std::string& board, const ArticlePtr& article,
                 const ArticleStepper& stepper) {
  const auto read = [&host, board, article, stepper] {
    host.Open(std::make_unique<ReaderPage>(host, board, article, stepper));
  };
  switch (article->kind) {
    case ArticleKind::kEmpty:
      host.ReadArticles().insert(article->fileName);
      host.Open(std::make_unique<MessagePage>(host, u"此文章無內容 "));
      return;
    case ArticleKind::kDisputed:
      host.Open(std::make_unique<DisputedPage>(host, read));
      return;
    case ArticleKind::kAnimation:
      host.Open(std::make_unique<AnimationPage>(host, article->body, read));
      return;
    default:
      read();
  }
}

}  // namespace quillet::demo
