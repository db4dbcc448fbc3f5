#include "app/page/article_view.h"

#include <algorithm>
#include <utility>

#include "app/page/article_captions.h"
#include "core/key_sequence.h"
#include "platform/clock.h"
#include "render/link_signs.h"
#include "render/scroll_motion.h"

namespace quillet {
namespace {

constexpr int kFrameMs = 16;
constexpr std::int64_t kLongestWaitMs = 60'000;
constexpr const char* kPreviousArticle = "b";

// A header's rows and its rule.
constexpr int kOpeningLines = 4;
// Of lines that are yet to come: as far as one sees ahead when one presses a key a few times.
constexpr int kMostBeyond = 3 * kPageStep;

}  // namespace

ArticleView::ArticleView(const Parts& parts, QWidget& parent)
    : parts_(parts),
      rules_{.settings = &parts.settings.Fields(),
             .names = &parts.settings.Names(),
             .titleWords = &parts.settings.TitleWords(),
             .keywords = {},
             .myId = {}},
      reading_({.send = [this](std::string_view keys) { parts_.connection.Session().SendBytes(keys); },
                .news = [this](const ArticleNews& news) { emit NewsArrived(news); }}),
      scrollBar_(std::make_unique<ArticleScrollBar>(&parent)) {
  animation_.setInterval(kFrameMs);
  animation_.setTimerType(Qt::PreciseTimer);
  connect(&animation_, &QTimer::timeout, this, [this] {
    Step();
    Review();
    emit Changed();
  });
  readOn_.setSingleShot(true);
  connect(&readOn_, &QTimer::timeout, this, [this] { OnTick(mayRefresh_); });
  connect(scrollBar_.get(), &ArticleScrollBar::Wanted, this, [this](int value, bool dragged) {
    MoveTo(value, dragged ? Motion::kAtOnce : Motion::kEased, Stay::kAtLine);
  });
  connect(&parts_.automations, &Automations::ArticlePushed, this,
          [this](const ArticleInfo& article, PushedBy by) {
            if (by == PushedBy::kOrder || IsSameArticle(article, OpenArticle())) reading_.WantRefresh();
          });
  connect(&parts_.automations, &Automations::MoneyEnded, this, [this] {
    // No key of the user's has to be waited for on the way back to the place.
    if (wanted_) reading_.WantMore(SteadyMilliseconds());
    ReadOnInTime();
  });
  connect(&parts_.bookmarks, &Bookmarks::Changed, this, [this] {
    bookmarked_ = parts_.bookmarks.HasOpenArticle();
    Review();
    emit Changed();
  });
}

ArticleView::~ArticleView() = default;

ArticleReadingOptions ReadingOptionsOf(const Settings& settings) {
  return {.fetchAll = settings.webArticle,
          .refreshPush = settings.autoRefreshPush,
          .tellChanges = settings.notifyArticleChanged};
}

// ---- What comes in

void ArticleView::SetRules(const StyleRules& rules) {
  rules_ = rules;
  ++rulesVersion_;
  reading_.SetOptions(ReadingOptionsOf(*rules_.settings));
  Follow();
  Review();
}

void ArticleView::OnScreen(const ScreenSnapshot& screen, const UnderstoodPage& page) {
  reading_.OnScreen(screen, page, OpenArticle(), parts_.connection.Seen().articleOpen, SteadyMilliseconds());
  rules_.now = SecondsNow();
  atBbsEnd_ = page.Shows(PF_READING) && page.Shows(PF_READ_END);
  bookmarked_ = parts_.bookmarks.HasOpenArticle();

  const bool another = IsAnotherArticle();
  if (another) {
    dressed_.Clear();
    bands_.clear();
    postTime_ = 0;
    beyond_ = 0;
  }
  Follow();
  std::optional<int> line = reading_.TakeMovedTo();
  if (held_) line.reset();  // an automation's doing
  if (another && !line) line = 0;
  const ArticleInfo& open = OpenArticle();
  if (wanted_ && open.IsArticle() && !IsSameArticle(open, wanted_->article)) wanted_.reset();
  if (line && wanted_)
    StandWhereWanted();
  else if (line)
    StandAt(*line);
  Review();
  ReadOnInTime();
  if (another) emit OtherArticle();
}

void ArticleView::OnTick(bool mayRefresh) {
  mayRefresh_ = mayRefresh;
  // No key of the reading's own comes between those of an automation.
  if (parts_.automations.IsBusy()) OnAutomationKey();
  rules_.now = SecondsNow();
  const bool wasShown = IsShown();
  reading_.OnTick(SteadyMilliseconds(), mayRefresh && !IsMoving());
  ReadOnInTime();
  if (IsShown() == wasShown) return;
  Review();
  emit Changed();
}

void ArticleView::ReadOnInTime() {
  if (const auto at = reading_.NextTick())
    readOn_.start(static_cast<int>(std::clamp<std::int64_t>(*at - SteadyMilliseconds(), 0, kLongestWaitMs)));
  else
    readOn_.stop();
}

void ArticleView::OnUserKey() {
  wanted_.reset();
  OnAutomationKey();
  // He has something else in mind than the end that he was waiting for.
  if (!reading_.Lines().IsComplete()) stay_ = Stay::kAtLine;
}

void ArticleView::OnAutomationKey() {
  reading_.OnUserKey(SteadyMilliseconds());
  beyond_ = 0;
}

void ArticleView::Forget() {
  reading_.Drop();
  wanted_.reset();
  beyond_ = 0;
  postTime_ = 0;
  IsAnotherArticle();
  dressed_.Clear();
  bands_.clear();
  Follow();
  StandAt(0);
  Review();
  emit Changed();
}

// Where one reads, which is below, stays.
void ArticleView::SetLinesInSight(int lines) {
  const int fewer = inSight_ - std::exchange(inSight_, std::clamp(lines, 1, kLinesShown));
  if (fewer == 0) return;
  scrollBar_->setPageStep(PageStep(inSight_));
  if (target_ > 0 || fewer < 0) GoTo(target_ + fewer, Motion::kAtOnce, stay_);
  Review();
}

void ArticleView::SetHeld(bool held) {
  const bool now = held && IsShown();
  if (std::exchange(held_, now) == now) return;
  Review();
  emit Changed();
}

bool ArticleView::IsAnotherArticle() {
  const ArticleLines& lines = reading_.Lines();
  std::vector<ScreenRow> opening;
  for (int i = 0; i < std::min(lines.Count(), kOpeningLines); ++i)
    opening.push_back(lines.At(i).text);
  return std::exchange(opening_, opening) != opening;
}

void ArticleView::Follow() {
  const bool resting = top_ == target_;
  const RowAnchor top = AnchorAt(top_);
  // It is not known while the article is away to be opened anew.
  if (OpenArticle().postTime != 0) postTime_ = OpenArticle().postTime;
  dressed_.Follow(reading_.Lines(), postTime_, rules_);
  LayRows();
  target_ = TopOf(anchor_);
  top_ = resting ? target_ : TopOf(top);
  if (stay_ == Stay::kAtEnd) GoTo(LastTopRow(), Motion::kEased, Stay::kAtEnd);
  if (beyond_ > 0) GoBeyond(target_ + beyond_);
}

void ArticleView::GoBeyond(int top) {
  GoTo(top, Motion::kEased, Stay::kAtLine);
  beyond_ = reading_.Lines().IsComplete() ? 0 : std::clamp(top - LastTopRow(), 0, kMostBeyond);
}

void ArticleView::LayRows() {
  std::vector<PictureBand> shown;
  shown.reserve(bands_.size());
  for (const PictureBand& band : bands_)
    if (const int index = dressed_.IndexOf(band.line); dressed_.LineOf(index) == band.line)
      shown.push_back({index, band.rows});
  rows_.Set(dressed_.Count(), shown);
}

RowAnchor ArticleView::AnchorAt(int row) const {
  RowAnchor anchor = rows_.AnchorAt(row);
  anchor.line = std::max(dressed_.LineOf(anchor.line), 0);
  return anchor;
}

int ArticleView::TopOf(const RowAnchor& anchor) const {
  const int index = dressed_.IndexOf(anchor.line);
  const bool isShown = dressed_.LineOf(index) == anchor.line;
  const int row = rows_.RowOf(RowAnchor{index, isShown ? anchor.toEnd : RowAnchor::kOwnRow});
  return std::clamp(row, 0, LastTopRow());
}

// Who is at the end of a page that held the whole article was not sent there, and has its begin before him.
void ArticleView::SetBands(std::vector<PictureBand> bands, BandsBy by) {
  if (bands == bands_) return;
  const bool resting = top_ == target_;
  const bool followsEnd = stay_ == Stay::kAtEnd && target_ > 0 && by == BandsBy::kThemselves;
  const RowAnchor top = AnchorAt(top_);
  bands_ = std::move(bands);
  LayRows();
  target_ = followsEnd ? LastTopRow() : TopOf(anchor_);
  top_ = resting ? target_ : TopOf(top);
  if (followsEnd) anchor_ = AnchorAt(target_);
  if (target_ < LastTopRow() && reading_.Lines().IsComplete()) stay_ = Stay::kAtLine;
  Review();
}

// ---- Where it stands

bool ArticleView::IsShown() const {
  const ArticleLines& lines = reading_.Lines();
  return rules_.settings->webArticle && (held_ || reading_.StandsForScreen()) &&
         (lines.Count() >= kLinesShown || lines.IsComplete()) && dressed_.Count() > 0;
}

void ArticleView::StandAt(int line) {
  beyond_ = 0;
  GoTo(rows_.RowOf(dressed_.IndexOf(line)), Motion::kAtOnce, Stay::kAtLine);
  // It may lie beyond what is known yet.
  anchor_ = {line};
}

void ArticleView::StandWhereWanted() {
  if (wanted_->line == kEnd)
    GoTo(LastTopRow(), Motion::kAtOnce, Stay::kAtEnd);
  else
    StandAt(wanted_->line);
}

void ArticleView::GoTo(int top, Motion motion, Stay stay) {
  target_ = std::clamp(top, 0, LastTopRow());
  anchor_ = AnchorAt(target_);
  const bool atEnd = target_ == LastTopRow() && reading_.Lines().IsComplete();
  stay_ = atEnd ? Stay::kAtEnd : stay;
  if (motion == Motion::kAtOnce || rules_.settings->noScrollAnimation) top_ = target_;
  if (top_ == target_ || animation_.isActive()) return;
  Step();
  animation_.start();
}

void ArticleView::Step() {
  top_ = std::clamp(ScrollAnimationStep(top_, target_), 0, LastTopRow());
  if (top_ == target_) animation_.stop();
}

void ArticleView::MoveTo(int top, Motion motion, Stay stay) {
  if (!IsShown()) return;
  reading_.OnLocalMove(SteadyMilliseconds());
  wanted_.reset();
  beyond_ = 0;
  // Who is on his way to an end that is yet to come goes there with any step forward.
  if (stay_ == Stay::kAtEnd && motion == Motion::kEased && top >= target_) stay = Stay::kAtEnd;
  if (stay == Stay::kAtLine && motion == Motion::kEased)
    GoBeyond(top);
  else
    GoTo(top, motion, stay);
  const bool nearEnd = target_ + inSight_ + kLinesShown > rows_.Count();
  if (nearEnd && !reading_.Lines().IsComplete() && !parts_.automations.IsBusy())
    reading_.WantMore(SteadyMilliseconds());
  ReadOnInTime();
  Review();
  emit Changed();
}

PagingState ArticleView::Paging() const {
  return {.top = target_ + beyond_,
          .count = rows_.Count(),
          .shown = inSight_,
          .complete = reading_.Lines().IsComplete(),
          .keepArticle = rules_.settings->preventUpDownChangeArticle};
}

bool ArticleView::ApplyPaging(const PagingAction& action) {
  if (!IsShown()) return false;
  switch (action.kind) {
    case PagingAction::Kind::kToBbs:
      return false;
    case PagingAction::Kind::kNext:
      // There the key means the next article; elsewhere the BBS would only turn the page.
      if (!atBbsEnd_) emit BytesForBbs(QByteArray::fromStdString(std::string(KeySequence(kKeyEnd))));
      return false;
    case PagingAction::Kind::kPrevious:
      emit BytesForBbs(kPreviousArticle);
      return true;
    case PagingAction::Kind::kScrollTo:
    case PagingAction::Kind::kNothing:
      MoveTo(action.top, Motion::kEased, Stay::kAtLine);
      return true;
    case PagingAction::Kind::kToEnd:
      MoveTo(action.top, Motion::kEased, Stay::kAtEnd);
      return true;
  }
  return false;
}

bool ArticleView::ScrollBy(int rows) {
  if (!IsShown() || (LastTopRow() == 0 && reading_.Lines().IsComplete())) return false;
  const int top = target_ + beyond_ + std::clamp(rows, -rows_.Count(), rows_.Count());
  MoveTo(top, Motion::kEased, Stay::kAtLine);
  return true;
}

void ArticleView::ScrollWithin(int rows) {
  ScrollTo(std::clamp(target_ + rows, 0, LastTopRow()));
}

void ArticleView::ScrollTo(int row) {
  MoveTo(row, Motion::kEased, Stay::kAtLine);
}

bool ArticleView::WillShow(int line) const {
  const int row = rows_.RowOf(line);
  return row >= target_ && row < target_ + inSight_;
}

void ArticleView::GoToFirstPush() {
  if (const int first = dressed_.FirstPush(); first >= 0) ScrollTo(rows_.RowOf(first));
}

void ArticleView::ReadOn() {
  if (!parts_.automations.IsBusy()) reading_.WantMore(SteadyMilliseconds());
  ReadOnInTime();
}

void ArticleView::KeepPlace() {
  wanted_ = {OpenArticle(), anchor_.line};
}

void ArticleView::ShowEnd() {
  if (!wanted_) return;
  wanted_->line = kEnd;
  beyond_ = 0;
  GoTo(LastTopRow(), Motion::kEased, Stay::kAtEnd);
  Review();
  emit Changed();
}

// ---- What it looks like

void ArticleView::Review() {
  const bool shown = IsShown();
  if (!shown) {
    animation_.stop();
    top_ = target_;
  }
  bar_ = shown ? MakeArticleBar(BarInput()) : ArticleBar{};
  scrollBar_->Follow(target_, LastTopRow(), shown && LastTopRow() > 0);
}

ArticleBarInput ArticleView::BarInput() const {
  const int lastRow = std::min(top_ + inSight_, rows_.Count()) - 1;
  ArticleBarInput input{.line = lastRow < 0 ? 0 : rows_.At(lastRow).line + 1,
                        .lines = dressed_.Count(),
                        .stillReading = !reading_.Lines().IsComplete(),
                        .controlCodes = dressed_.HasControlCodes(),
                        .offers = {},
                        .hovered = NumberOf(hovered_)};
  if (!rules_.settings->hideTopLeftIcons)
    input.offers = MakeCaptions(
        Conditions().AddIf(bookmarked_, Condition::kBookmarked).AddIf(HasPushes(), Condition::kHasPushes));
  return input;
}

void ArticleView::SetHovered(Command command) {
  if (command == std::exchange(hovered_, command)) return;
  Review();
  emit Changed();
}

std::optional<LinePlace> ArticleView::PlaceAtRow(int row) const {
  const int at = top_ + row - (kLinesShown - inSight_);
  if (at < 0 || at >= rows_.Count()) return std::nullopt;
  return rows_.At(at);
}

int ArticleView::LineAtRow(int row) const {
  const std::optional<LinePlace> place = PlaceAtRow(row);
  return place && place->below == 0 ? place->line : -1;
}

void ArticleView::Compose(FrameState& frame) const {
  for (int row = 0; row < kLinesShown; ++row) {
    PageRow& shown = frame.page[static_cast<std::size_t>(row)];
    shown = dressed_.Row(reading_.Lines(), LineAtRow(row), rules_);
    if (const ArticleLine* const line = ShownLine(LineAtRow(row))) LayLinkSigns(line->links, shown);
  }
  frame.page[kBottomRow] = bar_.row;
  frame.caretRow = -1;
  frame.progress = LastTopRow() > 0 ? static_cast<double>(top_) / LastTopRow() : 0;
}

bool ArticleView::StandsLikePage(int firstLine, int rows) const {
  for (int row = 0; row < rows; ++row) {
    const int line = dressed_.LineOf(LineAtRow(row));
    if (line < 0 && PlaceAtRow(row)) return false;  // a picture
    const int wanted = firstLine + row < reading_.Lines().Count() ? firstLine + row : -1;
    if (line != wanted) return false;
  }
  return true;
}

const ArticleLine* ArticleView::ShownLine(int index) const {
  const int line = dressed_.LineOf(index);
  return line < 0 || line >= reading_.Lines().Count() ? nullptr : &reading_.Lines().At(line);
}

std::optional<PageRow> ArticleView::RowWithHidden(int index) const {
  if (!dressed_.HidesIn(index, rules_)) return std::nullopt;
  return dressed_.Row(reading_.Lines(), index, rules_);
}

void ArticleView::PlaceScrollBar(const QRect& area, bool plain) {
  scrollBar_->SetPlain(plain);
  scrollBar_->PlaceIn(area);
  Review();
}

}  // namespace quillet
