// The view: a switchboard between the window's events and the objects that handle them. Draws only from its
// own copy of the screen. User-interface thread.
#pragma once

#include <functional>
#include <vector>

#include <QPointer>
#include <QWidget>

#include "app/dialogs/leave_question.h"
#include "app/dialogs/login_controller.h"
#include "app/document/place_book.h"
#include "app/document/quill_doc.h"
#include "app/interaction/ime_adapter.h"
#include "app/messages/file_messages.h"
#include "app/overlay/activity_badge.h"
#include "app/overlay/overlay_stack.h"
#include "app/overlay/picture_question.h"
#include "app/overlay/placed_part.h"
#include "app/overlay/screen_picture.h"
#include "app/overlay/side_buttons.h"
#include "app/overlay/stall_sign.h"
#include "app/overlay/status_panel.h"
#include "app/overlay/toast.h"
#include "app/page/article_pictures.h"
#include "app/page/article_view.h"
#include "app/page/background_picture.h"
#include "app/page/frame_surface.h"
#include "app/page/link_marks.h"
#include "app/page/page_composer.h"
#include "app/side_list/side_list_view.h"
#include "app/viewer/picture_viewer.h"
#include "app/viewer/video_dialog.h"
#include "app/window/view_hands.h"
#include "app/window/view_timers.h"

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
  // Every command that the menus, keys and buttons give; the window adds its own.
  CommandRunner& Commands() { return hands_.Commands(); }
  // For the menus' words.
  CommandWords WordsForMenus() const { return hands_.WordsForCommands({}); }
  // The user id under the pointer, else the one at the BBS's cursor; empty when there is none.
  QString IdInQuestion() const { return QString::fromStdU16String(hands_.Targets().IdInQuestion()); }
  void OpenUserPage(const QString& id) { hands_.Web().OpenUserPage(id.toStdU16String()); }
  // An entry of the lists has been made in a dialog.
  void NoteAddedName(const QString& id) { hands_.Names().NoteAdded(id.toStdU16String()); }
  void ShowNotice(const PanelText& notice);
  // On the BBS, as soon as that can be done.
  void WantArticle(const ArticleReference& article) { hands_.Wanted().Want(article); }
  // In a line that goes by itself.
  void Tell(const QString& words) { toast_.Show(words); }
  // Opens the login form.
  void AskLogin() { login_.Show(); }
  // At one of the user's sites.
  void AskLogin(const RecentSite& site) { login_.ShowFor(site); }

  // Behind the first frame, so that it does not wait for it; soon where that has been painted.
  void WhenSeen(std::function<void()> action);
  // In a line over the page, until it is answered or put away: which pictures open by themselves.
  void AskAboutPictures() { pictureQuestion_.Ask(); }

  void SetLayoutMode(LayoutMode mode);
  SideListView& SideList() { return sideList_; }

  const ScreenSnapshot& Screen() const { return screen_; }
  const FrameState& Frame() const { return frame_; }
  const ArticleView& Article() const { return article_; }
  ArticlePictures& Pictures() { return pictures_; }
  PictureStore& FetchedPictures() { return pictureStore_; }
  const PictureViewer& Viewer() const { return viewer_; }
  const ScreenPicture& PictureOverScreen() const { return screenPicture_; }
  const StatusPanel& Panel() const { return panel_; }
  const FrameSurface& Surface() const { return surface_; }
  const LoginController& Login() const { return login_; }
  // To be asked before the session is given up.
  LeaveQuestion& Leaving() { return leaving_; }
  const ActivityBadge& Badge() const { return badge_; }
  const Toast& LastToast() const { return toast_; }
  const SelectionControl& Selected() const { return hands_.Selected(); }
  const SearchController& Found() const { return hands_.Search(); }
  const LinkHover& Links() const { return hands_.Links(); }
  const PlaceHover& Places() const { return hands_.Places(); }
  const MoneyController& Money() const { return hands_.Money(); }
  const PushController& Push() const { return hands_.Push(); }
  const SessionLogControl& Log() const { return hands_.Log(); }
  // Screens taken over so far; tells whether the picture has come to rest.
  unsigned ScreenCount() const { return screenCount_; }
  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 signals:
  // With a login, or null.
  void DemoRequested(const quillet::LoginOrder& login, quillet::TransportKind way);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
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
  void PerformPanelAction(PanelAction action);
  void TakeMessages();
  void Tick();
  void TellFileProblems();
  void TellNews(const ArticleNews& news);
  void CallUser(SignalSound sound);
  void OpenWebSites(const Site& site);
  void ConnectLogin();
  void ConnectPicture();
  void ConnectViewer();
  void ApplyBackground();
  void ListOverlays();
  OverlayPlace PlaceOfOverlays() const;
  void PlaceOverlays();
  void PlaceSideButtons();
  void RefreshPanel();
  void ReviewPanel();
  void RefreshFrame();
  void FollowPictures();
  // The user wants to see it large, or what is known of the video.
  void LookAt(const QString& link);
  void ShowVideo(const QString& link);
  // A key that the window keeps while a picture is looked at.
  static bool StaysWindows(const QKeyEvent& event);
  // Brings the picture up to date where nothing but the time may have changed it.
  void OnClock();
  bool ShowsCaret() const;
  // The picture shows other lines than before, or the same ones elsewhere or otherwise.
  void ShowOtherLines();
  void UpdateIme(ImeAdapter::Move move);
  // An input method belongs here now; on pages of commands it would compose them.
  bool AcceptsComposedText() const;

  CQuillDoc& doc_;
  Connection& connection_;
  Automations& automations_;
  UserSettings& settings_;
  ScreenSnapshot screen_;
  UnderstoodPage page_;  // what stands on it, marked with the user's keywords and with what its links show
  LinkMarks linkMarks_;
  PlaceBook places_;
  FrameState frame_;
  bool isSeen_ = false;  // a frame has been painted
  std::vector<std::function<void()>> whenSeen_;
  unsigned screenCount_ = 0;
  std::int64_t composedAt_ = 0;  // the frame, in seconds since 1970
  OverlayStack overlays_;
  EmbeddedImages images_;
  FrameSurface surface_;
  StatusPanel panel_;
  ActivityBadge badge_;
  Toast toast_;
  LeaveQuestion leaving_;
  LoginController login_;
  ArticleView article_;
  PictureStore pictureStore_;
  ArticlePictures pictures_;
  ScreenPicture screenPicture_;
  PictureViewer viewer_;
  PictureQuestion pictureQuestion_;
  QPointer<VideoDlg> videoDialog_;
  PageComposer composer_;
  SideListView sideList_;
  SideButtons sideButtons_;
  PlacedPart buttonsPart_;
  PlacedPart scrollBarPart_;
  StallSign stallSign_;
  BackgroundPicture background_;
  ToldProblems toldProblems_;
  ImeAdapter ime_;
  ViewHands hands_;
  ViewTimers timers_;
};

}  // namespace quillet
