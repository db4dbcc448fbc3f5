// Who is online, and sending one of them a message. The client's thread.
#pragma once

#include <vector>

#include "demo/pages/list_page.h"

namespace quillet::demo {

class UserListPage : public ListPage {
 public:
  explicit UserListPage(PageHost& host) : ListPage(host) {}
  bool HasGlobalKeys() const override { return false; }

 protected:
  int Count() const override { return static_cast<int>(users_.size()); }
  void Update() override { users_ = host_.TheWorld().Online(); }
  void DrawFrame(Canvas& canvas) override;
  void DrawItem(Canvas& canvas, int row, int index) override;
  void OpenItem(int index) override;
  void OnOtherKey(const Key&) override {}

 private:
  std::vector<OnlineUser> users_;
};

}  // namespace quillet::demo
