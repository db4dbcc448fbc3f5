// The view: a switchboard between the window's events and the objects that handle them. Draws only from its
// own copy of the screen. User-interface thread.
#pragma once

#include <QWidget>

#include "app/activity_badge.h"
#include "app/file_words.h"
#include "app/frame_surface.h"
#include "app/ime_adapter.h"
#include "app/key_dispatch.h"
#include "app/login_desk.h"
#include "app/quill_doc.h"
#include "app/status_panel.h"
#include "app/view_timers.h"

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
  void Paste();
  void CopyScreen();
  // A key that the client keeps for itself, for those who need it on the BBS.
  void SendControl(char code);
  void ShowNotice(const PanelText& notice);
  // Opens the login form.
  void AskLogin();

  const ScreenSnapshot& Screen() const { return frame_.screen; }
  const StatusPanel& Panel() const { return panel_; }
  const FrameSurface& Surface() const { return surface_; }
  const LoginDesk& Login() const { return login_; }
  const ActivityBadge& Badge() const { return badge_; }
  // Screens taken over so far; tells whether the picture has come to rest.
  unsigned ScreenCount() const { return screenCount_; }
  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 signals:
  // The frame's business: the address dialog, full screen.
  void CommandRequested(KeyCommand command);
  void DemoRequested();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  // Whether the view, rather than the toolkit, decides about the key.
  bool Claims(const QKeyEvent& event) const;
  // Returns true when the key was consumed.
  bool PreTranslateMessage(const QKeyEvent& event);
  bool HandlePanelKey(int virtualKey);
  void PerformPanelAction(PanelAction action);
  void OnCommand(KeyCommand command);
  void TakeMessages();
  void TellFileProblems();
  void NoteVersion();
  void ConnectLogin();
  void PlaceLogin();
  void RefreshPanel();
  void RefreshFrame();

  CQuillDoc& doc_;
  FrameState frame_;
  unsigned screenCount_ = 0;
  FrameSurface surface_;
  StatusPanel panel_;
  ActivityBadge badge_;
  LoginDesk login_;
  ToldProblems toldProblems_;
  ImeAdapter ime_;
  KeyDispatch keys_;
  ViewTimers timers_;
};

}  // namespace quillet
