#include "app/interaction/search_controller.h"

#include <algorithm>
#include <utility>

#include "app/messages/article_messages.h"
#include "render/selection_look.h"

namespace quillet {
namespace {

// A hit that comes into sight stands in the upper third, with what leads to it above.
constexpr int kContextShare = 3;

}  // namespace

SearchController::SearchController(ArticleView& article, const PictureLines& text, QWidget& view)
    : article_(article), text_(text), bar_(view) {
  connect(&bar_, &SearchBar::TextChanged, this,
          [this](const QString& typed) { TakeText(typed, Seek::kMoves); });
  connect(&bar_, &SearchBar::StepWanted, this, &SearchController::Step);
  connect(&bar_, &SearchBar::PagesWanted, this,
          [this](int pages) { article_.ScrollBy(pages * PageStep(article_.LinesInSight())); });
  connect(&bar_, &SearchBar::Confirmed, this, &SearchController::Confirm);
  connect(&bar_, &SearchBar::Dismissed, this, &SearchController::Dismiss);
  connect(&bar_, &SearchBar::Left, this, &SearchController::StopAsking);
  connect(&article_, &ArticleView::OtherArticle, this, &SearchController::Forget);
}

SearchUse SearchController::Use() const {
  if (!marks_) return SearchUse::kNone;
  return walks_ && article_.TargetLine() == stoodAt_ ? SearchUse::kWalked : SearchUse::kMarked;
}

void SearchController::Perform(SearchStep step) {
  if (step == SearchStep::kEnd) return Forget();
  if (step == SearchStep::kAsk || wanted_.isEmpty()) return Ask();
  Step(step);
}

// ---- The field

void SearchController::Ask() {
  if (!bar_.IsOpen()) {
    origin_ = article_.Rows().At(article_.TargetRow());
    TakeText(wanted_, Seek::kStays);
  }
  bar_.Open(wanted_);
  Review();
}

void SearchController::TakeText(const QString& text, Seek seek) {
  wanted_ = text;
  here_ = -1;
  marks_ = !text.isEmpty();
  search_.SetWanted(text.toStdU16String());
  Read(0);
  seeks_ = seek == Seek::kMoves && marks_;
  if (seeks_) SeekFromOrigin();
  if (here_ < 0 && seek == Seek::kMoves) ScrollTo(article_.Rows().RowOf(origin_));
  Review();
}

void SearchController::SeekFromOrigin() {
  int number = search_.NumberFrom(origin_.line, 0, text_);
  // While lines are yet to come, the next hit may be in them.
  if (number >= search_.Count() && !IsReading()) number = 0;
  if (number >= search_.Count()) return;
  seeks_ = false;
  const int origin = article_.Rows().RowOf(origin_);
  const int row = article_.Rows().RowOf(search_.At(number, text_).line);
  // What is in sight from where one was is looked at from there.
  if (row >= origin && row < origin + PageStep(article_.LinesInSight())) ScrollTo(origin);
  StandAt(number);
}

void SearchController::Confirm() {
  if (here_ < 0 && search_.Count() > 0) Step(SearchStep::kNext);
  const bool found = here_ >= 0;
  StopAsking();
  walks_ = found;
  stoodAt_ = article_.TargetLine();
  if (!wanted_.isEmpty()) emit Said(SearchMessages::Tally({here_, search_.Count(), IsReading()}));
}

void SearchController::Dismiss() {
  ScrollTo(article_.Rows().RowOf(origin_));
  Forget();
}

void SearchController::StopAsking() {
  if (!bar_.IsOpen()) return;
  bar_.Close();
  seeks_ = false;
  marks_ = search_.Count() > 0;
  Review();
}

void SearchController::Forget() {
  const bool wasMarked = std::exchange(marks_, false);
  bar_.Close();
  walks_ = false;
  seeks_ = false;
  here_ = -1;
  search_.SetWanted({});
  if (wasMarked) emit Changed();
}

// ---- From hit to hit

void SearchController::Step(SearchStep step) {
  if (search_.WantsNothing()) TakeText(wanted_, Seek::kStays);
  const bool on = step == SearchStep::kNext;
  const int count = search_.Count();
  if (count == 0) {
    marks_ = bar_.IsOpen();
    if (!bar_.IsOpen()) emit Said(SearchMessages::Tally({-1, 0, IsReading()}));
    return;
  }
  seeks_ = false;
  const int inSight = search_.NumberFrom(article_.TargetLine(), 0, text_);
  int number = IsHereInSight() ? here_ + (on ? 1 : -1) : on ? inSight : inSight - 1;
  const bool wraps = number < 0 || number >= count;
  if (wraps && on && IsReading()) {
    article_.ScrollBy(article_.Rows().Count());
    emit Said(SearchMessages::NoMoreYet());
    return;
  }
  number = (number + count) % count;
  StandAt(number);
  walks_ = true;
  const QString tally = SearchMessages::Tally({here_, count, IsReading()});
  if (wraps)
    emit Said((on ? SearchMessages::FromTop() : SearchMessages::FromEnd()).arg(tally));
  else if (!bar_.IsOpen())
    emit Said(tally);
  Review();
}

bool SearchController::IsHereInSight() const {
  return here_ >= 0 && article_.WillShow(hereHit_.line);
}

void SearchController::StandAt(int number) {
  here_ = number;
  hereHit_ = search_.At(number, text_);
  const int lines = article_.LinesInSight();
  const int top = article_.TargetRow();
  const int row = article_.Rows().RowOf(hereHit_.line);
  // The field may lie over the lowest line.
  if (row < top || row >= top + PageStep(lines)) ScrollTo(std::max(0, row - lines / kContextShare));
  stoodAt_ = article_.TargetLine();
  hereSeen_ = true;
}

void SearchController::ScrollTo(int row) {
  if (row != article_.TargetRow()) article_.ScrollTo(row);
}

// ---- The lines

void SearchController::Read(int from) {
  if (!text_.IsArticle()) return;
  search_.Read(text_, from);
  rules_ = article_.RulesVersion();
  version_ = article_.Reading().Lines().Version();
  lines_ = text_.Count();
  complete_ = !IsReading();
}

void SearchController::KeepHereInSight() {
  const int lines = article_.LinesInSight();
  const bool others = std::exchange(linesInSight_, lines) != lines;
  if (others && hereSeen_ && here_ >= 0)
    StandAt(here_);
  else
    hereSeen_ = IsHereInSight();
}

void SearchController::OnLines() {
  if (!marks_ || !text_.IsArticle()) return;
  KeepHereInSight();
  const bool otherRules = rules_ != article_.RulesVersion();
  if (!otherRules && version_ == article_.Reading().Lines().Version() && lines_ == text_.Count() &&
      complete_ == !IsReading())
    return;
  // While an article is being read it grows at its end; the last page may come once more.
  const bool grows = !otherRules && IsReading() && text_.Count() >= lines_;
  Read(grows ? lines_ - kLinesShown : 0);
  if (here_ >= 0) {
    here_ = search_.NumberFrom(hereHit_.line, hereHit_.cols.first, text_);
    if (here_ >= search_.Count() || search_.At(here_, text_) != hereHit_) here_ = -1;
  }
  if (seeks_) SeekFromOrigin();
  Review();
}

void SearchController::Review() {
  if (bar_.IsOpen()) {
    const SearchTally tally{here_, search_.Count(), IsReading()};
    const bool found = search_.Count() > 0 || wanted_.isEmpty() || IsReading();
    bar_.Tell(wanted_.isEmpty() ? QString() : SearchMessages::Tally(tally), found);
  }
  emit Changed();
}

void SearchController::Decorate(Page& page) const {
  if (!marks_ || !text_.IsArticle()) return;
  for (int row = 0; row < kRows; ++row) {
    const int line = text_.LineAtRow(row);
    if (line < 0 || line >= text_.Count()) continue;
    for (const ColumnSpan cols : search_.HitsIn(text_.Line(line))) {
      const bool here = here_ >= 0 && hereHit_ == SearchHit{line, cols};
      LayFound(page[static_cast<std::size_t>(row)], cols.first, cols.last,
               here ? FoundLook::kHere : FoundLook::kOther);
    }
  }
}

}  // namespace quillet
