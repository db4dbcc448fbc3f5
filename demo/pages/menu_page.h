// A menu: items one below another, chosen with the arrows or by their first letter. The client's thread.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "demo/page.h"

namespace quillet::demo {

struct MenuItem {
  char letter;           // jumps here, in either case; drawn in brackets before the rest of the name
  std::string name;      // "oards" of "(B)oards"
  std::u16string label;  // "看板列表"
  std::function<void()> enter;
};

class MenuPage : public Page {
 public:
  enum class Leave { kCloses, kMovesToLastItem };
  MenuPage(PageHost& host, std::u16string title, const std::string& screen, std::vector<MenuItem> items,
           Leave leave);

  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;
  bool HasGlobalKeys() const override { return true; }

 protected:
  PageHost& host_;

 private:
  bool JumpTo(const Key& key);
  void LeaveMenu();

  std::u16string title_;
  std::vector<std::string> picture_;
  std::vector<MenuItem> items_;
  Leave leave_;
  std::size_t selected_ = 0;
};

// The bar on row 0: "【title】", the BBS's name in the middle.
void DrawTitleBar(Canvas& canvas, std::u16string_view title, std::string_view right = {});
// The bar on row 23: date, who and how many are here.
void DrawStatusBar(Canvas& canvas, PageHost& host);

}  // namespace quillet::demo
