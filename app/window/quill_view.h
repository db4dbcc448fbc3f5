// The view: a switchboard between the window's events and the objects that handle them. Draws only from its
// own copy of the screen. User-interface thread.
#pragma once

#include <QWidget>

#include "app/dialogs/leave_question.h"
#include "app/dialogs/login_controller.h"
#include "app/dialogs/money_controller.h"
#include "app/dialogs/push_controller.h"
#include "app/document/quill_doc.h"
#include "app/interaction/article_commands.h"
#include "app/interaction/clipboard_controller.h"
#include "app/interaction/edit_commands.h"
#include "app/interaction/ime_adapter.h"
#include "app/interaction/key_dispatch.h"
#include "app/interaction/link_hover.h"
#include "app/interaction/name_keys.h"
#include "app/interaction/pointer_control.h"
#include "app/interaction/search_controller.h"
#include "app/interaction/selection_control.h"
#include "app/interaction/web_controller.h"
#include "app/messages/file_messages.h"
#include "app/overlay/activity_badge.h"
#include "app/overlay/overlay_stack.h"
#include "app/overlay/placed_part.h"
#include "app/overlay/side_buttons.h"
#include "app/overlay/stall_sign.h"
#include "app/overlay/status_panel.h"
#include "app/overlay/toast.h"
#include "app/page/article_view.h"
#include "app/page/background_picture.h"
#include "app/page/frame_surface.h"
#include "app/page/page_composer.h"
#include "app/page/shown_text.h"
#include "app/side_list/side_list_view.h"
#include "app/window/view_timers.h"
#include "input/pre_translation.h"

namespace quillet {

class CQuillView : public QWidget {
  Q_OBJECT

 public:
  // `doc` outlives the view.
  explicit CQuillView(CQuillDoc& doc, QWidget* parent = nullptr);
  ~CQuillView() override;

  // The document's settings are different, or could not be saved.
  void OnSettingsChanged();
  void ApplyDisplaySettings();
  // On what is selected, or on what lies under the pointer or the BBS's cursor.
  void Edit(EditCommand command);
  // All links in sight, to choose one of for kOpenLink or kCopyLink.
  void ShowLinks(EditCommand use);
  // The user id under the pointer, else the one at the BBS's cursor; empty when there is none.
  QString IdInQuestion() const;
  void OpenUserPage(const QString& id) { web_.OpenUserPage(id.toStdU16String()); }
  // Shows or hides the places of push addresses.
  void TogglePlaces();
  // An entry of the lists has been made in a dialog.
  void NoteAddedName(const QString& id) { nameKeys_.NoteAdded(id.toStdU16String()); }
  // What the Tab key does on pages with ids.
  void Reveal();
  // A key that the client keeps for itself, for those who need it on the BBS.
  void SendControl(char code);
  void ShowNotice(const PanelText& notice);
  // Opens the login form.
  void AskLogin();

  void SetLayoutMode(LayoutMode mode);
  // On the article that is open; says so when there is none.
  void PerformArticleCommand(ArticleCommand command);
  // In the article that is shown; says so when there is none.
  void Search(SearchStep step);
  SideListView& SideList() { return sideList_; }
  SideButtons& Buttons() { return sideButtons_; }

  const ScreenSnapshot& Screen() const { return screen_; }
  const FrameState& Frame() const { return frame_; }
  const ArticleView& Article() const { return article_; }
  const StatusPanel& Panel() const { return panel_; }
  const FrameSurface& Surface() const { return surface_; }
  const LoginController& Login() const { return login_; }
  // To be asked before the session is given up.
  LeaveQuestion& Leaving() { return leaving_; }
  const ActivityBadge& Badge() const { return badge_; }
  const Toast& LastToast() const { return toast_; }
  const SelectionControl& Selected() const { return selection_; }
  const SearchController& Found() const { return search_; }
  const LinkHover& Links() const { return links_; }
  const WebController& Web() const { return web_; }
  const MoneyController& Money() const { return money_; }
  const PushController& Push() const { return push_; }
  // Screens taken over so far; tells whether the picture has come to rest.
  unsigned ScreenCount() const { return screenCount_; }
  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 signals:
  // The frame's business: the address dialog, full screen.
  void CommandRequested(KeyCommand command);
  // With a login, or null.
  void DemoRequested(const quillet::LoginOrder& login);
  void OptionsRequested();
  // The dialog of the black and white lists, for an id that may be empty.
  void NamesRequested(const QString& id);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  WindowState StateForKeys() const;
  KeyDecision Decide(const QKeyEvent& event) const;
  // Returns true when the key was consumed.
  bool PreTranslateMessage(const QKeyEvent& event);
  void SelectByKey(SelectStep step);
  void ChangeName(NameKey key, int colour);
  void PerformPanelAction(PanelAction action);
  void OnCommand(KeyCommand command);
  void OnSideButton(SideButton button);
  void OnUserTypes();
  void SendBytes(std::string bytes);
  void TakeMessages();
  void Tick();
  void TellFileProblems();
  void TellNews(const ArticleNews& news);
  void CallUser(SignalSound sound);
  void ConnectLogin();
  void ConnectArticle();
  void ConnectSideLists();
  void ConnectSearch();
  PointerControl::Handlers PointerHandlers();
  // Bytes for the BBS.
  void ActOnMouse(const MouseAction& action);
  void ShowMenuOfPlace(const QPoint& at, std::optional<CellPosition> cell);
  EditTarget TargetAt(CellPosition cell) const;
  std::u16string IdAtCell(int row, int col) const;
  void ApplyBackground();
  void ListOverlays();
  OverlayPlace PlaceOfOverlays() const;
  void PlaceOverlays();
  void RefreshPanel();
  void RefreshFrame();
  // The picture shows other lines than before, or the same ones elsewhere or otherwise.
  void ShowOtherLines();
  void ScrollSelecting(int lines);
  void UpdateIme(ImeAdapter::Move move);
  // An input method belongs here now; on pages of commands it would compose them.
  bool AcceptsComposedText() const;

  CQuillDoc& doc_;
  Connection& connection_;
  Automations& automations_;
  UserSettings& settings_;
  ScreenSnapshot screen_;
  UnderstoodPage page_;  // what stands on it, marked with the user's keywords
  FrameState frame_;
  unsigned screenCount_ = 0;
  bool flagsAtTop_ = false;  // in the picture; the side buttons leave them the margin
  OverlayStack overlays_;
  EmbeddedImages images_;
  FrameSurface surface_;
  StatusPanel panel_;
  ActivityBadge badge_;
  Toast toast_;
  LeaveQuestion leaving_;
  LoginController login_;
  ArticleView article_;
  PageComposer composer_;
  SideListView sideList_;
  SideButtons sideButtons_;
  PlacedPart buttonsPart_;
  PlacedPart scrollBarPart_;
  StallSign stallSign_;
  BackgroundPicture background_;
  ToldProblems toldProblems_;
  ImeAdapter ime_;
  KeyDispatch keys_;
  ArticleCommands commands_;
  ShownText shown_;
  SelectionControl selection_;
  SearchController search_;
  LinkHover links_;
  ClipboardController clipboard_;
  WebController web_;
  EditCommands edit_;
  NameKeys nameKeys_;
  MoneyController money_;
  PushController push_;
  PointerControl pointer_;
  ViewTimers timers_;
};

}  // namespace quillet
