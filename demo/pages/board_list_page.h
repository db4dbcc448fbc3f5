// The list of all boards. The client's thread.
#pragma once

#include <vector>

#include "demo/pages/list_page.h"

namespace quillet::demo {

class BoardListPage : public ListPage {
 public:
  explicit BoardListPage(PageHost& host);

 protected:
  int Count() const override { return static_cast<int>(boards_.size()); }
  void DrawFrame(Canvas& canvas) override;
  void DrawItem(Canvas& canvas, int row, int index) override;
  void OpenItem(int index) override;
  void OnOtherKey(const Key& key) override;

 private:
  void Search();
  void AskBoard();

  std::vector<BoardInfo> boards_;
};

}  // namespace quillet::demo
