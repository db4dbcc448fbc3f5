// A plain editor of 23 rows with the status line below. What becomes of the text is the caller's business.
// The client's thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "demo/page.h"

namespace quillet::demo {

class EditorPage : public Page {
 public:
  using Saved = std::function<void(std::vector<std::string> lines)>;
  EditorPage(PageHost& host, std::vector<std::string> lines, Saved saved);

  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;

 private:
  std::string& Line() { return lines_[line_]; }
  void Insert(const std::string& text);
  void Break();
  void JoinWithNext();
  void Erase(const Key& key);
  bool Move(const Key& key);
  void MoveToLine(std::size_t line);
  void AskWhatNow();
  void Leave(const std::string& answer);

  PageHost& host_;
  std::vector<std::string> lines_;
  Saved saved_;
  std::size_t line_ = 0;
  std::size_t at_ = 0;             // byte in the line; always the start of a character
  std::size_t top_ = 0;            // first line shown
  std::optional<KeyKind> passed_;  // the arrow that has just passed a wide character
};

}  // namespace quillet::demo
