#include "bbs/article_news.h"

#include <algorithm>

#include "core/charset.h"

namespace quillet {
namespace {

struct Summary {
  int firstPush = 0;  // the number of lines where there is none
  int pushes = 0;
  int editNotes = 0;
};

Summary Summarise(const ArticleLines& lines, const PageFacts& facts) {
  const std::string editNote = ToBig5(u"※ 編輯: ");
  Summary summary{.firstPush = lines.Count()};
  for (int index = 0; index < lines.Count(); ++index) {
    const ScreenRow& text = lines.At(index).text;
    if (facts.ReadPush(text)) {
      summary.firstPush = std::min(summary.firstPush, index);
      ++summary.pushes;
    } else if (BytesOf(text).starts_with(editNote)) {
      ++summary.editNotes;
    }
  }
  return summary;
}

}  // namespace

ArticleNews CompareArticle(const ArticleLines& before, const ArticleLines& now, const PageFacts& facts) {
  const Summary old = Summarise(before, facts);
  const Summary present = Summarise(now, facts);
  bool edited = old.firstPush != present.firstPush || present.editNotes > old.editNotes;
  for (int index = 0; !edited && index < old.firstPush; ++index)
    edited = before.At(index).text != now.At(index).text;
  return {.newPushes = std::max(0, present.pushes - old.pushes), .edited = edited};
}

}  // namespace quillet
