// Shows a long text page by page with the reader's status line: what the article reader and every other text
// have in common. Part of a page; the client's thread.
#pragma once

#include <string>

#include "demo/key_decoder.h"
#include "demo/pages/article_text.h"

namespace quillet::demo {

class TextViewer {
 public:
  // What the right end of the status line offers.
  enum class Footer { kArticle, kText };
  TextViewer(ReaderText text, Footer footer) : text_(std::move(text)), footer_(footer) {}

  void Draw(Canvas& canvas) const;
  // True when the key was a move. Moves stop at both ends.
  bool OnKey(const Key& key);
  // A changed text of the same article; the place in it stays.
  void Replace(ReaderText text);

  bool AtTop() const { return top_ == 0; }
  bool AtEnd() const { return top_ == LastTop(); }
  void GoToTop() { top_ = 0; }

  // Moves to the next line below the first shown one that holds the text; false when there is none.
  bool FindNext(const std::string& big5);

 private:
  int LastTop() const;
  void ScrollTo(int top);
  void DrawFooter(Canvas& canvas) const;

  ReaderText text_;
  Footer footer_;
  int top_ = 0;
};

}  // namespace quillet::demo
