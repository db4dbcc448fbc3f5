// The prompt for a board's name on the top rows; a blank completes what was typed. The client's thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "demo/page.h"
#include "demo/pages/line_field.h"

namespace quillet::demo {

class BoardPrompt : public Page {
 public:
  using Chosen = std::function<void(const BoardInfo& board)>;
  BoardPrompt(PageHost& host, Chosen chosen);

  bool CoversScreen() const override { return false; }
  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;

 private:
  void Complete();
  void Finish();

  PageHost& host_;
  Chosen chosen_;
  LineField field_;
  std::vector<std::string> candidates_;
};

// Asks for a board and enters it; what was open above the main menu is closed.
void OpenBoardPrompt(PageHost& host);

}  // namespace quillet::demo
