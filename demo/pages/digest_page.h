// The digest of a board: the articles that its moderators marked. The client's thread.
#pragma once

#include <vector>

#include "demo/pages/list_page.h"
#include "demo/pages/reader_page.h"

namespace quillet::demo {

class DigestPage : public ListPage {
 public:
  DigestPage(PageHost& host, BoardInfo board);

 protected:
  int Count() const override { return static_cast<int>(articles_.size()); }
  void DrawFrame(Canvas& canvas) override;
  void DrawItem(Canvas& canvas, int row, int index) override;
  void OpenItem(int index) override;
  void OnOtherKey(const Key&) override {}

 private:
  ArticlePtr Step(ArticleStep step);

  BoardInfo board_;
  std::vector<ArticlePtr> articles_;
};

}  // namespace quillet::demo
