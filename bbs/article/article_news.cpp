#include "bbs/article/article_news.h"

#include <algorithm>

namespace quillet {
namespace {

struct Summary {
  int firstPush = 0;  // the number of lines where there is none
  int pushes = 0;
  int editNotes = 0;
};

Summary Summarise(const ArticleLines& lines) {
  Summary summary{.firstPush = lines.Count()};
  for (int index = 0; index < lines.Count(); ++index) {
    const ArticleLine& line = lines.At(index);
    if (line.push) {
      summary.firstPush = std::min(summary.firstPush, index);
      ++summary.pushes;
    } else if (line.note == NoteLine::kEdit) {
      ++summary.editNotes;
    }
  }
  return summary;
}

}  // namespace

ArticleNews CompareArticle(const ArticleLines& before, const ArticleLines& now) {
  const Summary old = Summarise(before);
  const Summary present = Summarise(now);
  bool edited = old.firstPush != present.firstPush || present.editNotes > old.editNotes;
  for (int index = 0; !edited && index < old.firstPush; ++index)
    edited = before.At(index).text != now.At(index).text;
  return {.newPushes = std::max(0, present.pushes - old.pushes), .edited = edited};
}

}  // namespace quillet
