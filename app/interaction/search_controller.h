// Looking for a text in the article that is shown: asks for it, goes from hit to hit, marks them in the
// picture. A hit is a place in the lines that the picture shows, so that what the user's lists hide is not
// found. The text is kept for the next article. User-interface thread.
#pragma once

#include <optional>

#include <QObject>
#include <QString>

#include "app/overlay/search_bar.h"
#include "app/page/article_view.h"
#include "app/page/picture_lines.h"
#include "input/text/article_search.h"
#include "render/page_row.h"

namespace quillet {

class SearchController : public QObject {
  Q_OBJECT

 public:
  // All outlive the controller; the field lies in `view`.
  SearchController(ArticleView& article, const PictureLines& text, QWidget& view);

  SearchUse Use() const;
  // The field is open and has the keyboard.
  bool IsAsking() const { return bar_.IsOpen(); }
  // Only while an article is shown.
  void Perform(SearchStep step);
  // Closes the field and stays with what was found: something else has come up.
  void StopAsking();
  // A key that had nothing to do with this.
  void OnOtherKey() { walks_ = false; }
  // The picture may show other lines.
  void OnLines();
  // The field.
  Overlay& Bar() { return bar_; }

  // Lays the hits over the page.
  void Decorate(Page& page) const;

 signals:
  // The picture is different.
  void Changed();
  // What came of a step that shows no field.
  void Said(const QString& words);

 private:
  enum class Seek { kStays, kMoves };

  void Ask();
  void TakeText(const QString& text, Seek seek);
  void Confirm();
  void Dismiss();
  void Step(SearchStep step);
  void Forget();
  // Counts anew, from a line on where those before it are the same.
  void Read(int from);
  // Others than before may be in sight: a hit that was seen is not lost when the window shows fewer lines.
  void KeepHereInSight();
  // The hit nearest to where the search began.
  void SeekFromOrigin();
  // The hit from which a step goes on; nothing: from what is in sight.
  bool IsHereInSight() const;
  void StandAt(int number);
  void ScrollTo(int row);
  void Review();
  bool IsReading() const { return !article_.Reading().Lines().IsComplete(); }

  ArticleView& article_;
  const PictureLines& text_;
  SearchBar bar_;
  ArticleSearch search_;
  QString wanted_;      // kept for later
  bool marks_ = false;  // hits are marked
  bool walks_ = false;  // the key before was about them
  bool seeks_ = false;  // a text has been typed, and its hit is yet to come
  LinePlace origin_;    // the first line in sight when the field was opened
  int stoodAt_ = 0;     // the first line in sight after the last step
  int here_ = -1;       // the number of the hit at which the user is
  SearchHit hereHit_;
  bool hereSeen_ = false;  // it is in sight

  // What was read last.
  unsigned rules_ = 0;
  unsigned version_ = 0;
  int lines_ = 0;
  bool complete_ = false;
  int linesInSight_ = kLinesShown;
};

}  // namespace quillet
