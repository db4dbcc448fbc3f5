// What the mouse does on the terminal: captions and links light up under the pointer and give their command
// on a click, text is selected by dragging, and everything else is what the user has chosen for his buttons
// and his wheel. The view passes it the mouse events while nothing lies over the terminal. User-interface
// thread.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include <QCursor>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPoint>
#include <QWheelEvent>
#include <QWidget>

#include "app/interaction/pointer/link_hover.h"
#include "app/interaction/pointer/place_hover.h"
#include "app/interaction/pointer/selection_control.h"
#include "app/page/article_pictures.h"
#include "app/page/article_view.h"
#include "app/page/frame_surface.h"
#include "app/page/page_composer.h"
#include "app/session/connection.h"
#include "core/cell_position.h"
#include "input/answer_gate.h"
#include "input/mouse_scheme.h"
#include "input/wheel_steps.h"
#include "render/page_row.h"
#include "settings/settings.h"

namespace quillet {

class PointerControl {
 public:
  // All outlive the object.
  struct Parts {
    QWidget& widget;
    const FrameSurface& surface;
    PageComposer& composer;
    ArticleView& article;
    SelectionControl& selection;
    LinkHover& links;
    PlaceHover& places;
    ArticlePictures& pictures;
    const Connection& connection;
    const Settings& settings;
    const ScreenSnapshot& screen;
    const UnderstoodPage& page;  // what stands on it
  };
  struct Handlers {
    std::function<void(Command)> perform;
    std::function<void(const TextLink&)> open;
    // Over the screen, where the link's picture has no place of its own.
    std::function<void(const TextLink&)> showPicture;
    // kSend and kMoveCursor only; what moves the local article is done here.
    std::function<void(const MouseAction&)> act;
    // Nothing happens where the system has no clipboard of the selection.
    std::function<void()> pastePrimary;
    // What lies there: the cell (its row that of the picture) is absent outside the page, the picture where
    // there is none.
    std::function<void(QPoint globalPos, std::optional<CellPosition> cell,
                       std::optional<ArticlePictures::Place> picture)>
        contextMenu;
    std::function<void()> changed;        // the picture is different
    std::function<void()> targetChanged;  // what is told of the link or place under the pointer, too
  };
  PointerControl(Parts parts, Handlers handlers);

  void OnMove(const QMouseEvent& event);
  void OnLeave();
  // Of any button. False for a button that has no meaning here.
  bool OnPress(const QMouseEvent& event);
  // False when a click of the left button meant nothing where it was.
  bool OnRelease(const QMouseEvent& event);
  // The toolkit's second press.
  bool OnDoubleClick(const QMouseEvent& event);
  // True when the wheel is ours, even if it moved nothing.
  bool OnWheel(const QWheelEvent& event);

  // What a button beside the page is for; as a click, held back until the BBS has answered the last one.
  void Act(const MouseAction& action) { Carry(action); }

  // Somebody types: the row under the pointer is not what he means until the pointer moves again.
  void OnKey();
  // Lights up the row that a click would open.
  void Decorate(Page& page) const;
  // Another picture lies under the pointer; to be called after each.
  void OnPictureChanged();
  // The view has taken another screen over.
  void OnScreen();
  // What is held down means nothing any more: something has come over the terminal, or the focus is gone.
  void Cancel();
  // The cell (its row that of the picture) that the pointer is over.
  std::optional<CellPosition> CellUnderPointer() const;

 private:
  // What a click of the left button would do at a place; at most one of these.
  struct Target {
    Command command = Command::kNone;
    std::optional<TextLink> link;
    std::optional<ArticlePictures::Place> picture;
    MouseAction action;
    int togglesInRow = -1;    // the link shows a picture below this row, which opens or closes
    bool overScreen = false;  // the link's picture is shown over the screen
    std::string page{};       // what tells the page that it acts upon from the next one

    bool IsNothing() const {
      return command == Command::kNone && !link && !picture && action.kind == MouseActionKind::kNone;
    }
    bool operator==(const Target&) const = default;
  };
  // A button of the mouse from its press to its release.
  struct Held {
    bool down = false;
    bool isVoid = false;  // its release means nothing
    QPointF at;           // where it was pressed
  };

  bool MayAct() const { return parts_.connection.IsConnected(); }
  Picture PictureNow() const;
  PointerPlace PlaceAt(const QPointF& at) const;
  Target TargetAt(const QPointF& at, Qt::KeyboardModifiers modifiers) const;
  void DecideLink(int row, Target& target) const;
  std::optional<ArticlePictures::Place> PictureAt(const QPointF& at) const;
  std::string SignOfPage(const PointerPlace& place) const;
  static bool IsSame(const Target& one, const Target& other);

  void Hover();
  // What lights up; nothing by itself.
  struct Hovered {
    Command command = Command::kNone;
    std::optional<CellPosition> cell{};  // where links and places may be
    int row = -1;                        // of the picture
  };
  Hovered HoveredAt(const QPointF& at) const;
  void SetHovered(const Hovered& hovered);
  void SetShape(PointerShape shape);

  // `presses`: how many follow one another at one place, this one included.
  bool Press(const QMouseEvent& event, int presses);
  bool ContinuesClicks(const QMouseEvent& event) const;
  void PressLeft(const QMouseEvent& event, int presses);
  void PressCaption(Command command);
  void BeginSelection(const QMouseEvent& event);
  void Drag(const QPointF& at);
  bool ReleaseLeft(const QMouseEvent& event);
  bool Click(const Target& target);
  void ReleaseMiddle(const QPointF& at);
  void PressSide(SideButtonPressed button);

  HeldButton HeldFor(const QWheelEvent& event) const;
  void VoidHeld(HeldButton held);
  void TurnWhileSelecting(const WheelTurn& turn);
  void ZoomBy(int notches);
  void Carry(const MouseAction& action);
  void ScrollArticle(const MouseAction& action);

  Parts parts_;
  Handlers handlers_;
  std::optional<QPointF> pointer_;  // while it is over the widget
  PointerShape shape_ = PointerShape::kOrdinary;
  int hoveredRow_ = -1;  // of the picture

  Held left_, middle_, right_;
  Target pressed_;           // under the left button when it was pressed
  bool hovers_ = false;      // it has moved since something lay over the terminal
  bool meansRow_ = false;    // it has moved since somebody typed
  bool acts_ = false;        // the left button's click is more than the putting away of a selection
  bool drags_ = false;       // it selects
  bool swallows_ = false;    // a click has acted; further presses that belong to it do not
  QElapsedTimer lastPress_;  // of the left button
  int presses_ = 0;          // that belong together, 1 to 3

  WheelSteps wheel_;
  AnswerGate gate_;
};

}  // namespace quillet
