// Pushing an article: whether it is worth it, the words, and the confirmation, all on the bottom row over the
// list or the reader. The client's thread.
#pragma once

#include <string>

#include "demo/page.h"
#include "demo/pages/line_field.h"

namespace quillet::demo {

// Asks, or says why this user may not push this article now.
void StartPush(PageHost& host, const std::string& board, const Article& article);

class PushPage : public Page {
 public:
  enum class Author { kSomebodyElse, kThisUser };
  PushPage(PageHost& host, std::string board, std::string fileName, Author author);

  bool CoversScreen() const override { return false; }
  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;

 private:
  enum class Step { kKind, kText, kConfirm };
  void OnKind(const Key& key);
  void Publish();

  PageHost& host_;
  std::string board_;
  std::string fileName_;
  Author author_;
  Step step_;
  PushKind kind_ = PushKind::kGood;
  LineField text_;
  LineField answer_;
};

}  // namespace quillet::demo
