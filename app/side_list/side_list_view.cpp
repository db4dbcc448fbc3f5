#include "app/side_list/side_list_view.h"

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include "app/side_list/side_list_painter.h"
#include "bbs/article_code.h"
#include "render/scroll_motion.h"

namespace quillet {
namespace {

constexpr int kMotionMs = 16;
constexpr int kAgesMs = 60000;
constexpr int kQuestionMs = 3000;
constexpr double kWidthShare = 0.45;
// In terminal rows' heights: what a card needs to say anything.
constexpr double kLeastWidth = 17;
// One notch of a wheel, in eighths of a degree.
constexpr int kNotch = 120;

// The BBS could find it.
bool CanBeOpened(const ArticleItem& item) {
  return !item.board.empty() && !AidToFileName(item.code).empty();
}

// Tells entries apart, wherever they stand.
std::u16string NameOf(const SideListEntry* entry) {
  if (entry == nullptr) return {};
  if (entry->item == nullptr) return u'/' + entry->folderName;
  return entry->item->board + u' ' + entry->item->code + u' ' + entry->item->title;
}

QString RemovalQuestion(const ArticleFolder& folder) {
  const int articles = ArticlesIn(folder);
  if (articles == 0) return QStringLiteral("再按一次 D 刪除資料夾與其中的資料夾");
  return QStringLiteral("再按一次 D 刪除資料夾與其中 %1 篇文章").arg(articles);
}

std::vector<SideListFrame::Hint> HintsFor(ArticleListKind kind, const SideListEntry* selected) {
  std::vector<SideListFrame::Hint> hints;
  if (selected != nullptr && selected->item != nullptr) {
    if (CanBeOpened(*selected->item))
      hints.push_back({QStringLiteral("開啟 (Enter)"), SideListButton::kOpen});
    else
      hints.push_back({QStringLiteral("沒有文章代碼，無法開啟"), SideListButton::kNone});
  }
  if (selected != nullptr && kind == ArticleListKind::kBookmarks)
    hints.push_back({QStringLiteral("刪除 (Del)"), SideListButton::kRemove});
  hints.push_back({QStringLiteral("關閉 (Esc)"), SideListButton::kClose});
  return hints;
}

}  // namespace

SideListView::SideListView(Bookmarks& lists, const UserSettings& settings, EmbeddedImages& images,
                           QWidget* parent)
    : QWidget(parent), lists_(lists), settings_(settings), images_(images) {
  setFocusPolicy(Qt::NoFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::ArrowCursor);
  hide();
  motion_.setInterval(kMotionMs);
  motion_.setTimerType(Qt::PreciseTimer);
  connect(&motion_, &QTimer::timeout, this, &SideListView::StepMotion);
  removalQuestion_.setSingleShot(true);
  removalQuestion_.setInterval(kQuestionMs);
  connect(&removalQuestion_, &QTimer::timeout, this, &SideListView::FollowState);
  ages_.setInterval(kAgesMs);
  connect(&ages_, &QTimer::timeout, this, qOverload<>(&QWidget::update));
  connect(&lists_, &Bookmarks::Changed, this, &SideListView::Refresh);
  connect(&settings_, &UserSettings::Changed, this, &SideListView::Refresh);
}

SideListView::~SideListView() = default;

// ---- Opening and closing

void SideListView::Open(ArticleListKind kind) {
  const bool isOther = shown_ != kind;
  shown_ = kind;
  if (isOther) {
    state_ = {};
    top_ = 0;
    wheelRest_ = 0;
    selectedName_.clear();
  }
  Refresh();
  ages_.start();
  show();
  raise();
  emit Opened();
}

void SideListView::Close() {
  if (!shown_) return;
  shown_.reset();
  entries_.clear();
  held_.reset();
  motion_.stop();
  removalQuestion_.stop();
  ages_.stop();
  hide();
  emit Closed();
}

void SideListView::Toggle(ArticleListKind kind) {
  if (shown_ == kind)
    Close();
  else
    Open(kind);
}

void SideListView::SetCompact(bool compact) {
  if (compact == compact_) return;
  compact_ = compact;
  Arrange();
}

// ---- State

const ArticleFolder& SideListView::Root() const {
  return lists_.List(*shown_);
}

const SideListEntry* SideListView::Selected() const {
  const auto index = static_cast<std::size_t>(state_.selected);
  return index < entries_.size() ? &entries_[index] : nullptr;
}

const ArticleFolder* SideListView::SelectedFolder() const {
  const SideListEntry* const entry = Selected();
  return entry != nullptr ? std::get_if<ArticleFolder>(EntryAt(Root(), entry->path)) : nullptr;
}

void SideListView::Refresh() {
  if (!shown_) return;
  removalQuestion_.stop();
  ArticleOrder order;
  if (*shown_ == ArticleListKind::kHot)
    order = HotArticleOrder(settings_.Fields().hotArticleSortMode, lists_.Boards());
  entries_ = FlattenList(Root(), order);
  state_.count = static_cast<int>(entries_.size());
  FindSelectedAgain();
  Arrange();
}

void SideListView::FindSelectedAgain() {
  if (selectedName_.empty() || NameOf(Selected()) == selectedName_) return;
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const SideListEntry& entry) {
    return NameOf(&entry) == selectedName_;
  });
  if (found == entries_.end()) return;
  const int moved = static_cast<int>(found - entries_.begin()) - state_.selected;
  state_.selected += moved;
  state_.first += moved;
  top_ += moved;
}

void SideListView::Place(const OverlayPlace& place) {
  const QRect& area = place.area;
  unit_ = place.unit;
  const int wanted = static_cast<int>(std::lround(std::max(area.width() * kWidthShare, unit_ * kLeastWidth)));
  const int width = std::min(area.width(), wanted);
  setGeometry(area.x() + area.width() - width, area.y(), width, area.height());
  Arrange();
}

void SideListView::resizeEvent(QResizeEvent* /*event*/) {
  Arrange();
}

void SideListView::Arrange() {
  const bool wasShown = state_.selected >= state_.first && state_.selected < state_.first + state_.shown;
  frame_.Place(size(), unit_, font(), compact_);
  state_.shown = frame_.ShownRows();
  ClampSideList(state_);
  if (wasShown) ShowSelection(state_);
  FollowState();
}

void SideListView::FollowState() {
  if (!shown_) return;
  selectedName_ = NameOf(Selected());
  frame_.SetHints(Hints());
  // A list that became shorter has nothing left to move through.
  top_ = std::clamp(top_, 0, std::max(0, state_.count - state_.shown));
  if (settings_.Fields().noScrollAnimation) top_ = state_.first;
  if (top_ != state_.first && !motion_.isActive()) motion_.start();
  update();
}

std::vector<SideListFrame::Hint> SideListView::Hints() const {
  if (IsAskingToRemove())
    if (const ArticleFolder* const folder = SelectedFolder())
      return {{RemovalQuestion(*folder), SideListButton::kRemove, true},
              {QStringLiteral("取消 (Esc)"), SideListButton::kNone}};
  return HintsFor(*shown_, Selected());
}

void SideListView::StepMotion() {
  top_ = SideListScrollStep(top_, state_.first);
  if (top_ == state_.first) motion_.stop();
  update();
}

// ---- Keys and mouse

bool SideListView::OnKey(int virtualKey) {
  if (!shown_) return false;
  const bool wasAsking = IsAskingToRemove();
  const SideListAction action = OnSideListKey(virtualKey, *shown_, state_);
  if (action != SideListAction::kRemove) DropQuestion();
  if (wasAsking && action == SideListAction::kClose) return true;
  Perform(action);
  return action != SideListAction::kNotConsumed;
}

void SideListView::Perform(SideListAction action) {
  switch (action) {
    case SideListAction::kMoved:
      FollowState();
      break;
    case SideListAction::kClose:
      Close();
      break;
    case SideListAction::kOpen:
      OpenSelected();
      break;
    case SideListAction::kRemove:
      RemoveSelected();
      break;
    case SideListAction::kNone:
    case SideListAction::kNotConsumed:
      break;
  }
}

void SideListView::Press(SideListButton button) {
  if (button != SideListButton::kRemove) DropQuestion();
  switch (button) {
    case SideListButton::kLayout:
      SetCompact(!compact_);
      break;
    case SideListButton::kClose:
      Close();
      break;
    case SideListButton::kOpen:
      OpenSelected();
      break;
    case SideListButton::kRemove:
      RemoveSelected();
      break;
    case SideListButton::kNone:
      break;
  }
}

void SideListView::OpenSelected() {
  const SideListEntry* const entry = Selected();
  if (entry == nullptr || entry->item == nullptr || !CanBeOpened(*entry->item)) return;
  const ArticleReference article{.board = entry->item->board, .code = entry->item->code};
  Close();
  emit ArticleChosen(article);
}

void SideListView::RemoveSelected() {
  const SideListEntry* const entry = Selected();
  const ArticleFolder::Child* const child = entry != nullptr ? EntryAt(Root(), entry->path) : nullptr;
  if (child == nullptr) return;
  const ArticleFolder* const folder = SelectedFolder();
  if (folder != nullptr && !folder->children.empty() && !IsAskingToRemove()) {
    removalQuestion_.start();
    FollowState();
    return;
  }
  const std::vector<int> path = entry->path;
  const ArticleFolder::Child what = *child;
  selectedName_.clear();  // the next one moves up to its place
  // The list may be another one when it comes to the change.
  lists_.Change(*shown_, [&](ArticleFolder& root) { RemoveEntry(root, path, what); });
}

void SideListView::DropQuestion() {
  if (!IsAskingToRemove()) return;
  removalQuestion_.stop();
  FollowState();
}

std::optional<int> SideListView::EntryUnder(const QPointF& at) const {
  const QRectF& list = frame_.List();
  if (!list.contains(at)) return std::nullopt;
  const int index = top_ + static_cast<int>((at.y() - list.top()) / frame_.RowHeight());
  if (index >= state_.count) return std::nullopt;
  return index;
}

void SideListView::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (!shown_ || event->button() != Qt::LeftButton) return;
  const QPointF at = event->position();
  if (frame_.ScrollGrip(top_, state_).contains(at)) {
    DropQuestion();
    held_ = at.y() - frame_.ScrollMark(top_, state_).top();
    update();
  } else if (const std::optional<int> entry = EntryUnder(at)) {
    DropQuestion();
    state_.selected = *entry;
    FollowState();
  } else {
    Press(frame_.ButtonAt(at));
  }
}

void SideListView::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
  if (shown_ && held_) ScrollAlong(event->position().y() - *held_);
}

void SideListView::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  if (event->button() != Qt::LeftButton) return;
  held_.reset();
  update();
}

// The mark stays under the pointer, so there is no motion towards it.
void SideListView::ScrollAlong(double y) {
  state_.first = frame_.TopAt(y, state_);
  top_ = state_.first;
  FollowState();
}

void SideListView::mouseDoubleClickEvent(QMouseEvent* event) {
  event->accept();
  if (!shown_ || event->button() != Qt::LeftButton) return;
  const bool onMark = frame_.ScrollGrip(top_, state_).contains(event->position());
  if (!onMark && EntryUnder(event->position()) == state_.selected)
    OpenSelected();
  else
    mousePressEvent(event);
}

void SideListView::wheelEvent(QWheelEvent* event) {
  event->accept();
  if (!shown_) return;
  // As far as text would move: a high card is worth two lines.
  const int lines = std::clamp(QApplication::wheelScrollLines(), 1, state_.shown * (compact_ ? 1 : 2));
  const int perNotch = compact_ ? lines : (lines + 1) / 2;
  wheelRest_ += event->angleDelta().y() * perNotch;
  const int entries = wheelRest_ / kNotch;
  wheelRest_ -= entries * kNotch;
  if (entries == 0) return;
  DropQuestion();
  ScrollSideList(state_, -entries);
  FollowState();
}

// ---- Drawing

CardLook SideListView::Look() const {
  return {.palette = &PaletteOf(PaletteKindFor(settings_.Display())),
          .font = frame_.Font(),
          .compact = compact_,
          .plain = settings_.Display().work};
}

void SideListView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (!shown_) return;
  const ListColours colours = ListColoursOf(*Look().palette, compact_);
  painter.fillRect(rect(), QColor(colours.ground));
  PaintSideList(painter,
                {.kind = *shown_,
                 .root = Root(),
                 .entries = entries_,
                 .state = state_,
                 .top = top_,
                 .frame = frame_,
                 .look = Look()},
                images_);
  frame_.PaintScrollMark(painter, frame_.ScrollMark(top_, state_), held_.has_value(), colours);
  frame_.PaintTitle(painter, {.kind = *shown_, .articles = ArticlesIn(Root())}, colours, images_);
  frame_.PaintHints(painter, colours);
  painter.fillRect(QRect(0, 0, 1, height()), QColor(colours.edge));
}

}  // namespace quillet
