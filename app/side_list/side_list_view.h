// A side list over the terminal: the hot, tracked or bookmarked articles as cards, with folders. Takes the
// keys while it is open, opens an article by its code, scrolls smoothly. User-interface thread.
#pragma once

#include <optional>
#include <vector>

#include <QTimer>
#include <QWidget>

#include "app/document/bookmarks.h"
#include "app/document/user_settings.h"
#include "app/overlay/overlay.h"
#include "app/side_list/side_list_frame.h"
#include "input/side_list.h"
#include "render/paint/embedded_images.h"

namespace quillet {

class SideListView : public QWidget, public Overlay {
  Q_OBJECT

 public:
  // All three outlive the view.
  SideListView(Bookmarks& lists, const UserSettings& settings, EmbeddedImages& images, QWidget* parent);
  ~SideListView() override;

  void Open(ArticleListKind kind);
  void Close();
  // Open the same list again closes it.
  void Toggle(ArticleListKind kind);
  std::optional<ArticleListKind> Shown() const { return shown_; }
  // Settings, palette or lists are different. Their own signals lead here too.
  void Refresh();
  // At the right edge, over the whole height.
  void Place(const OverlayPlace& place) override;
  bool KeepsTyping() const override { return shown_.has_value(); }
  void TellKeys(WindowState& state) const override { state.sideListShown = shown_.has_value(); }
  KeyRoute OwnKeys() const override { return KeyRoute::kSideList; }
  // Windows virtual-key code of a key pressed alone. True when consumed: every key but Tab while a list is
  // open.
  bool OnKey(int virtualKey) override;
  // One row per card instead of two, on a light ground.
  void SetCompact(bool compact);
  bool IsCompact() const { return compact_; }

  const SideListState& State() const { return state_; }
  // The entry that is drawn first; on its way to State().first.
  int Top() const { return top_; }
  // The cards' place within the widget.
  const SideListFrame& Frame() const { return frame_; }

 signals:
  // The list closes itself behind it.
  void ArticleChosen(const quillet::ArticleReference& article);
  void Opened();
  void Closed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  const ArticleFolder& Root() const;
  // After the entries were made anew: the same article stays selected, and where it is seen.
  void FindSelectedAgain();
  // Null when the list is empty.
  const SideListEntry* Selected() const;
  // Null when it is no folder.
  const ArticleFolder* SelectedFolder() const;
  std::optional<int> EntryUnder(const QPointF& at) const;

  void Perform(SideListAction action);
  void Press(SideListButton button);
  void OpenSelected();
  // At once, or for a folder that holds something: when it is asked for once more soon.
  void RemoveSelected();
  bool IsAskingToRemove() const { return removalQuestion_.isActive(); }
  // The question was not answered, or is about something else now.
  void DropQuestion();
  void ScrollAlong(double y);
  std::vector<SideListFrame::Hint> Hints() const;
  // After anything that moved the state: hints, motion, picture.
  void FollowState();
  void Arrange();
  void StepMotion();

  CardLook Look() const;

  Bookmarks& lists_;
  const UserSettings& settings_;
  EmbeddedImages& images_;
  std::optional<ArticleListKind> shown_;
  bool compact_ = false;
  qreal unit_ = 16;
  SideListFrame frame_;
  std::vector<SideListEntry> entries_;
  SideListState state_;
  std::u16string selectedName_;  // what was selected, while the tree may change
  int top_ = 0;
  int wheelRest_ = 0;           // eighths of a degree that make no entry yet
  std::optional<double> held_;  // the scroll mark, that far below its upper end
  QTimer motion_;
  QTimer removalQuestion_;
  QTimer ages_;
};

}  // namespace quillet
