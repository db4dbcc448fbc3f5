// The articles of one board. The client's thread.
#pragma once

#include <string>
#include <vector>

#include "demo/pages/list_page.h"
#include "demo/pages/reader_page.h"

namespace quillet::demo {

class ArticleListPage : public ListPage {
 public:
  ArticleListPage(PageHost& host, BoardInfo board);

 protected:
  int Count() const override { return static_cast<int>(articles_.size()); }
  void Update() override;
  void DrawFrame(Canvas& canvas) override;
  void DrawItem(Canvas& canvas, int row, int index) override;
  void OpenItem(int index) override;
  void OnOtherKey(const Key& key) override;

 private:
  const Article& At(int index) const { return *articles_[static_cast<std::size_t>(index)]; }
  bool OnArticleKey(const Key& key);
  void AskCode();
  void GoToCode(const std::string& code);
  void AskTitle();
  void GoToThread(ArticleStep step);
  void Delete();
  // Moves the cursor; the article there, or null when there is no such step.
  ArticlePtr Step(ArticleStep step);

  BoardInfo board_;
  std::vector<ArticlePtr> articles_;
};

// A title as the list shows it: "□ ", "R: " or "轉 " and the rest.
std::string ListTitle(const std::string& title);
// Without "Re: " and "Fw: ".
std::string_view ThreadTitle(std::string_view title);

}  // namespace quillet::demo
