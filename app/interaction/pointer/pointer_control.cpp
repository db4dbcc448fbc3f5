#include "app/interaction/pointer/pointer_control.h"

#include <utility>

#include <QApplication>

#include "app/interaction/pointer/pointer_shapes.h"
#include "core/key_sequence.h"
#include "input/article_paging.h"
#include "platform/clock.h"

namespace quillet {
namespace {

// Systems that scroll by pages tell a huge count.
constexpr int kMostLinesPerNotch = kPageStep;

bool IsFar(const QPointF& one, const QPointF& other) {
  return (one - other).manhattanLength() >= QApplication::startDragDistance();
}

// X11 calls the notches of an ordinary wheel pixels.
WheelDelta DeltaOf(const QWheelEvent& event) {
  const bool hasPixels = QGuiApplication::platformName() != QLatin1String("xcb");
  return {.angle = event.angleDelta().y(), .pixels = hasPixels ? event.pixelDelta().y() : 0};
}

// Asked for each time: the system's setting may have changed.
int LinesPerNotch() {
  return qBound(1, QApplication::wheelScrollLines(), kMostLinesPerNotch);
}

SelectUnit UnitOf(int presses) {
  if (presses == 2) return SelectUnit::kWord;
  return presses == 3 ? SelectUnit::kLine : SelectUnit::kCharacter;
}

}  // namespace

PointerControl::PointerControl(Parts parts, Handlers handlers)
    : parts_(parts), handlers_(std::move(handlers)) {
  parts_.widget.setMouseTracking(true);
}

// ---- Where the pointer is.

Picture PointerControl::PictureNow() const {
  return parts_.composer.ShowsArticle() ? Picture::kArticle : Picture::kScreen;
}

PointerPlace PointerControl::PlaceAt(const QPointF& at) const {
  const FrameSurface& surface = parts_.surface;
  PointerPlace place{.picture = PictureNow(), .row = -1};
  const bool left = surface.IsLeftOfPage(at);
  if (const auto cell = surface.CellAt(at)) {
    place.row = place.picture == Picture::kArticle ? cell->row : parts_.composer.ScreenRowAt(cell->row);
    place.col = cell->col;
  } else {
    place.col = left ? -1 : kCols;
  }
  place.upperHalf = at.y() * 2 < parts_.widget.height();
  // Where the page fills the width, the window's very edge is left.
  place.leftMargin = left || at.x() * surface.Scale() * 2 < surface.CurrentLayout().halfCell;
  return place;
}

std::optional<ArticlePictures::Place> PointerControl::PictureAt(const QPointF& at) const {
  const auto pixel = parts_.surface.PixelAt(at);
  return pixel ? parts_.pictures.PictureAt(pixel->row, pixel->x) : std::nullopt;
}

// With Ctrl a link leads to the browser, whatever it shows.
PointerControl::Target PointerControl::TargetAt(const QPointF& at, Qt::KeyboardModifiers modifiers) const {
  Target target;
  if (const auto cell = parts_.surface.CellAt(at)) {
    target.command = parts_.composer.CommandAt(cell->row, cell->col);
    if (target.command != Command::kNone) return target;
    target.link = parts_.links.LinkAt(cell->row, cell->col);
    if (target.link && !modifiers.testFlag(Qt::ControlModifier)) DecideLink(cell->row, target);
    if (target.link) return target;
  }
  target.picture = PictureAt(at);
  if (target.picture) return target;
  if (!MayAct()) return target;
  const PointerPlace place = PlaceAt(at);
  target.action = DecideClick(place, parts_.screen, parts_.page, parts_.settings);
  if (target.action.repeat == Repeat::kByNewGesture) target.page = SignOfPage(place);
  return target;
}

// Of a shortened link nobody knows yet whether it shows a picture.
void PointerControl::DecideLink(int row, Target& target) const {
  if (parts_.pictures.CanToggle(row, target.link->first)) {
    target.togglesInRow = row;
    return;
  }
  const LinkKind kind = target.link->kind;
  const bool isPicture =
      kind == LinkKind::kPicture || kind == LinkKind::kPicturePage || kind == LinkKind::kVideo;
  target.overScreen = isPicture && PictureNow() == Picture::kScreen && !parts_.settings.work;
}

// The same keys may open another line, or leave another page. An article is left as a whole, wherever it is.
std::string PointerControl::SignOfPage(const PointerPlace& place) const {
  const PageKind kind = place.picture == Picture::kArticle ? PageKind::kReader : parts_.page.kind;
  if (kind == PageKind::kReader) return {};
  std::string sign(parts_.screen.RowText(0));
  sign += parts_.screen.RowText(kBottomRow);
  const bool isLine = kind == PageKind::kList || kind == PageKind::kArticleList || kind == PageKind::kMenu;
  if (isLine && place.row >= 0) sign += parts_.screen.RowText(place.row);
  return sign;
}

// A hand trembles: cells are smaller than what they belong to.
bool PointerControl::IsSame(const Target& one, const Target& other) {
  constexpr MouseActionKind kMove = MouseActionKind::kMoveCursor;
  return one == other || (one.action.kind == kMove && other.action.kind == kMove);
}

std::optional<CellPosition> PointerControl::CellUnderPointer() const {
  return pointer_ ? parts_.surface.CellAt(*pointer_) : std::nullopt;
}

// ---- Hovering.

PointerControl::Hovered PointerControl::HoveredAt(const QPointF& at) const {
  const auto cell = parts_.surface.CellAt(at);
  if (!cell) return {};
  const Command command = parts_.composer.CommandAt(cell->row, cell->col);
  if (command != Command::kNone) return {.command = command};
  const bool opensLine = meansRow_ && MayAct() && parts_.widget.isActiveWindow() &&
                         OpensLine(PlaceAt(at), parts_.screen, parts_.page, parts_.settings);
  return {.cell = cell, .row = opensLine ? cell->row : -1};
}

void PointerControl::SetHovered(const Hovered& hovered) {
  const bool commandChanged = parts_.composer.SetHovered(hovered.command);
  const bool linkChanged = parts_.links.SetPointer(hovered.cell);
  const bool placeChanged = parts_.places.SetPointer(hovered.cell);
  const int row = parts_.links.Current() ? -1 : hovered.row;  // there a click opens the link
  const bool rowChanged = std::exchange(hoveredRow_, row) != row;
  if (commandChanged || linkChanged || placeChanged || rowChanged) handlers_.changed();
  if (linkChanged || placeChanged) handlers_.targetChanged();
}

void PointerControl::Decorate(Page& page) const {
  if (hoveredRow_ < 0) return;
  for (PageCell& cell : page[static_cast<std::size_t>(hoveredRow_)].cells)
    cell.style |= CS_HOVER;
}

void PointerControl::SetShape(PointerShape shape) {
  if (shape == shape_) return;
  shape_ = shape;
  if (shape == PointerShape::kOrdinary)
    parts_.widget.unsetCursor();
  else
    parts_.widget.setCursor(CursorOf(shape, parts_.surface.Scale()));
}

void PointerControl::Hover() {
  if (drags_) return;
  if (!pointer_ || !hovers_) {
    SetHovered({});
    SetShape(PointerShape::kOrdinary);
    return;
  }
  const Hovered hovered = HoveredAt(*pointer_);
  SetHovered(hovered);
  const bool picture = PictureAt(*pointer_).has_value();
  if (hovered.command != Command::kNone || parts_.links.Current() || picture)
    SetShape(PointerShape::kHand);
  else if (MayAct())
    SetShape(ShapeAt(PlaceAt(*pointer_), parts_.screen, parts_.page, parts_.settings));
  else
    SetShape(PointerShape::kOrdinary);
}

void PointerControl::OnMove(const QMouseEvent& event) {
  pointer_ = event.position();
  // A release can go to a window that has opened meanwhile.
  if (left_.down && !event.buttons().testFlag(Qt::LeftButton)) Cancel();
  hovers_ = meansRow_ = true;
  if (left_.down && !left_.isVoid) Drag(*pointer_);
  Hover();
}

void PointerControl::OnLeave() {
  pointer_.reset();
  Hover();
}

void PointerControl::OnKey() {
  if (std::exchange(meansRow_, false)) Hover();
}

void PointerControl::OnPictureChanged() {
  // While the article scrolls, what is selected reaches to what has come under the pointer.
  if (drags_ && pointer_ && PictureNow() == Picture::kArticle) Drag(*pointer_);
  Hover();
}

void PointerControl::OnScreen() {
  gate_.OnScreen(parts_.screen, SteadyMilliseconds());
}

void PointerControl::Cancel() {
  if (left_.down) parts_.selection.Release();
  left_ = middle_ = right_ = Held();
  drags_ = false;
  hovers_ = false;
  Hover();
}

// ---- Buttons.

bool PointerControl::OnPress(const QMouseEvent& event) {
  return Press(event, ContinuesClicks(event) ? 3 : 1);
}

bool PointerControl::OnDoubleClick(const QMouseEvent& event) {
  return Press(event, 2);
}

bool PointerControl::Press(const QMouseEvent& event, int presses) {
  pointer_ = event.position();
  hovers_ = meansRow_ = true;
  switch (event.button()) {
    case Qt::LeftButton:
      PressLeft(event, presses);
      return true;
    case Qt::MiddleButton:
      middle_ = {.down = true, .at = event.position()};
      return true;
    case Qt::RightButton:
      right_ = {.down = true, .at = event.position()};
      return true;
    case Qt::BackButton:
      PressSide(SideButtonPressed::kBack);
      return true;
    case Qt::ForwardButton:
      PressSide(SideButtonPressed::kForward);
      return true;
    default:
      return false;
  }
}

bool PointerControl::OnRelease(const QMouseEvent& event) {
  const QPointF at = event.position();
  switch (event.button()) {
    case Qt::LeftButton: {
      const bool meant = ReleaseLeft(event);
      Hover();
      return meant;
    }
    case Qt::MiddleButton:
      if (std::exchange(middle_.down, false) && !IsFar(middle_.at, at)) ReleaseMiddle(at);
      return true;
    case Qt::RightButton:
      if (std::exchange(right_.down, false) && !right_.isVoid)
        handlers_.contextMenu(event.globalPosition().toPoint(), parts_.surface.CellAt(at), PictureAt(at));
      return true;
    default:
      return true;
  }
}

// ---- The left button.

// The toolkit tells of the second press only.
bool PointerControl::ContinuesClicks(const QMouseEvent& event) const {
  return presses_ == 2 && lastPress_.isValid() &&
         lastPress_.elapsed() < QApplication::doubleClickInterval() && !IsFar(left_.at, event.position());
}

void PointerControl::PressLeft(const QMouseEvent& event, int presses) {
  lastPress_.start();
  presses_ = presses;
  if (presses_ == 1) swallows_ = false;
  left_ = {.down = true, .isVoid = swallows_, .at = event.position()};
  drags_ = false;
  if (left_.isVoid) return;
  pressed_ = TargetAt(left_.at, event.modifiers());
  if (pressed_.command != Command::kNone) return PressCaption(pressed_.command);
  const bool selects = pressed_.IsNothing() || pressed_.action.kind == MouseActionKind::kMoveCursor;
  if (!selects) presses_ = 1;
  BeginSelection(event);
}

// A button, not text: it acts at once, and nothing can be dragged from it.
void PointerControl::PressCaption(Command command) {
  left_.isVoid = true;
  swallows_ = true;
  handlers_.perform(command);
  Hover();
}

void PointerControl::BeginSelection(const QMouseEvent& event) {
  const FrameSurface::Place place = parts_.surface.PlaceAt(left_.at);
  const int slot = parts_.selection.BoundaryAt(place.row, place.halves);
  const bool column = event.modifiers().testFlag(Qt::AltModifier);
  const bool extends = event.modifiers().testFlag(Qt::ShiftModifier);
  acts_ = presses_ == 1 && !column && !extends && !parts_.selection.IsShown();
  if (extends) return parts_.selection.ExtendTo(place.row, slot);
  // A word is that of the character under the pointer, not of the nearest place between two.
  const auto cell = parts_.surface.CellAt(left_.at);
  const bool byCell = presses_ > 1 && cell;
  parts_.selection.Press(place.row, byCell ? cell->col : slot, UnitOf(presses_),
                         column ? SelectShape::kColumn : SelectShape::kStream);
}

void PointerControl::Drag(const QPointF& at) {
  if (!drags_ && !IsFar(left_.at, at)) return;
  if (!drags_) SetHovered({});
  drags_ = true;
  FrameSurface::Place place = parts_.surface.PlaceAt(at);
  // The article's text ends above the bar.
  if (PictureNow() == Picture::kArticle && place.row == kBottomRow) {
    --place.row;
    ++place.rowsOutside;
  }
  parts_.selection.ExtendTo(place.row, parts_.selection.BoundaryAt(place.row, place.halves));
  parts_.selection.DragBeyond(place.rowsOutside);
}

bool PointerControl::ReleaseLeft(const QMouseEvent& event) {
  if (!std::exchange(left_.down, false) || left_.isVoid) return true;
  parts_.selection.Release();
  if (std::exchange(drags_, false) || !acts_) return true;
  // Another page may have come meanwhile.
  return !IsSame(pressed_, TargetAt(event.position(), event.modifiers())) || Click(pressed_);
}

bool PointerControl::Click(const Target& target) {
  swallows_ = target.link || target.picture || target.action.repeat == Repeat::kByNewGesture;
  if (target.togglesInRow >= 0)
    parts_.pictures.Toggle(target.togglesInRow, target.link->first);
  else if (target.overScreen)
    handlers_.showPicture(*target.link);
  else if (target.link)
    handlers_.open(*target.link);
  else if (target.picture)
    parts_.pictures.Click(*target.picture);
  else
    Carry(target.action);
  return !target.IsNothing();
}

// ---- The other buttons.

void PointerControl::ReleaseMiddle(const QPointF& at) {
  const auto cell = parts_.surface.CellAt(at);
  const bool opens = parts_.settings.middleButtonOpensUrl;
  const auto link = cell && opens ? parts_.links.LinkAt(cell->row, cell->col) : std::nullopt;
  if (link)
    handlers_.open(*link);
  else
    handlers_.pastePrimary();
}

void PointerControl::PressSide(SideButtonPressed button) {
  Carry(DecideSideButton(button, PictureNow(), parts_.screen, parts_.page, parts_.settings));
}

// ---- The wheel.

HeldButton PointerControl::HeldFor(const QWheelEvent& event) const {
  if (left_.down && event.buttons().testFlag(Qt::LeftButton)) return HeldButton::kLeft;
  if (right_.down && event.buttons().testFlag(Qt::RightButton)) return HeldButton::kRight;
  return HeldButton::kNone;
}

// The button has been used for the wheel and nothing else.
void PointerControl::VoidHeld(HeldButton held) {
  if (held == HeldButton::kRight) right_.isVoid = true;
  if (held != HeldButton::kLeft || left_.isVoid) return;
  left_.isVoid = true;
  parts_.selection.Release();
}

bool PointerControl::OnWheel(const QWheelEvent& event) {
  const WheelDelta delta = DeltaOf(event);
  if (delta.angle == 0 && delta.pixels == 0) return false;
  pointer_ = event.position();
  // A touchpad's fling must not reach the page that comes next.
  if (event.phase() == Qt::ScrollMomentum && PictureNow() != Picture::kArticle) return true;
  const qreal rowHeight = parts_.surface.CurrentLayout().rowHeight / parts_.surface.Scale();
  const WheelTurn turn = wheel_.Add(
      delta, {.linesPerNotch = LinesPerNotch(), .pixelsPerLine = qRound(rowHeight)}, SteadyMilliseconds());
  if (drags_) {
    TurnWhileSelecting(turn);
    return true;
  }
  const HeldButton held = HeldFor(event);
  if (held == HeldButton::kNone && event.modifiers().testFlag(Qt::ControlModifier)) {
    ZoomBy(turn.notches);
    return true;
  }
  VoidHeld(held);
  Carry(DecideWheel(turn, held, PictureNow(), parts_.screen, parts_.page, parts_.settings));
  Hover();
  return true;
}

void PointerControl::ZoomBy(int notches) {
  const Command step = notches > 0 ? Command::kZoomIn : Command::kZoomOut;
  for (int notch = 0; notch < std::abs(notches); ++notch)
    handlers_.perform(step);
}

// What is selected goes on into what the wheel brings; another page would end it.
void PointerControl::TurnWhileSelecting(const WheelTurn& turn) {
  if (PictureNow() != Picture::kArticle) return;
  ScrollArticle(
      DecideWheel(turn, HeldButton::kNone, PictureNow(), parts_.screen, parts_.page, parts_.settings));
  Drag(*pointer_);
}

// ---- Actions.

void PointerControl::Carry(const MouseAction& action) {
  const bool forBbs = action.kind == MouseActionKind::kSend || action.kind == MouseActionKind::kMoveCursor;
  if (!forBbs) return ScrollArticle(action);
  if (!MayAct()) return;
  if (action.repeat != Repeat::kFreely) {
    const std::int64_t now = SteadyMilliseconds();
    if (gate_.IsWaiting(parts_.screen, now)) return;
    gate_.Sent(parts_.screen, now);
  }
  handlers_.act(action);
}

void PointerControl::ScrollArticle(const MouseAction& action) {
  switch (action.kind) {
    case MouseActionKind::kScrollLines:
      parts_.article.ScrollBy(action.lines);
      break;
    case MouseActionKind::kScrollPages:
      parts_.article.ScrollBy(action.lines * PageStep(parts_.article.LinesInSight()));
      break;
    case MouseActionKind::kScrollToEnd:
      if (action.lines < 0)
        parts_.article.ScrollTo(0);
      else
        parts_.article.ApplyPaging(DecidePaging({.virtualKey = kKeyEnd}, false, parts_.article.Paging()));
      break;
    default:
      break;
  }
}

}  // namespace quillet
