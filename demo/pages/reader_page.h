// The article reader, and the same viewer for texts that are no articles. The client's thread.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "demo/page.h"
#include "demo/pages/text_viewer.h"

namespace quillet::demo {

enum class ArticleStep {
  kNext,
  kPrevious,
  kFirstOfThread,
  kNextOfThread,
  kPreviousOfThread,
  kNextOfAuthor,
  kPreviousOfAuthor
};
// Moves the list's cursor and returns the article there; null when there is none.
using ArticleStepper = std::function<ArticlePtr(ArticleStep)>;

class ReaderPage : public Page {
 public:
  ReaderPage(PageHost& host, std::string board, ArticlePtr article, ArticleStepper stepper);

  void Draw(Canvas& canvas) override;
  void OnKey(const Key& key) override;

 private:
  void Leave() { host_.CloseTop(); }
  bool OnStepKey(const Key& key);
  void GoTo(ArticleStep step);
  void AskSearch();
  void Search(const std::string& text);

  PageHost& host_;
  std::string board_;
  ArticlePtr article_;
  ArticleStepper stepper_;
  TextViewer viewer_;
  std::string searched_;
};

// Notices, help, letters: a text with the reader's status line.
class TextPage : public Page {
 public:
  TextPage(PageHost& host, const std::vector<std::string>& lines);
  TextPage(PageHost& host, ReaderText text);
  void Draw(Canvas& canvas) override { viewer_.Draw(canvas); }
  void OnKey(const Key& key) override;

 private:
  PageHost& host_;
  TextViewer viewer_;
};

void OpenHelp(PageHost& host);

}  // namespace quillet::demo
