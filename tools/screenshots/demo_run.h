// A run of the demo for pictures: a demo server, a document with settings of its own, and the real window,
// led by key presses. The first thing that goes wrong ends it: what follows does nothing, and Complaint says
// what it was. So whoever takes pictures writes down one step after the other and asks at the end. User-
// interface thread.
#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "app/document/resources.h"
#include "app/document/user_places.h"
#include "app/window/main_frame.h"
#include "app/window/tour/tour_steps.h"
#include "app/window/window_signaller.h"
#include "demo/demo_server.h"

namespace quillet {

class DemoRun {
 public:
  // The window is up, 1280x720 units large, and connecting. `folder` exists.
  explicit DemoRun(const QString& folder);

  bool IsFine() const { return complaint_.isEmpty(); }
  const QString& Complaint() const { return complaint_; }
  void Fail(const QString& complaint);

  CMainFrame& Frame() { return *frame_; }
  CQuillView& View() { return frame_->View(); }
  CQuillDoc& Doc() { return doc_; }
  // Of this run only.
  QString ScratchFolder() const { return places_.scratch->path(); }

  // Applied as the options dialog does.
  template <typename T>
  void Set(T Settings::*field, const std::type_identity_t<T>& value) {
    doc_.GetSettings().Set(field, value);
  }
  // Of the view, in widget units.
  void Resize(QSize view);
  void LogIn();
  void GoToBoard(const QString& board);
  // In the list of the board.
  void Read(const QString& titleWords);
  void LeaveArticle();
  // Presses `keys`; the page must come.
  void Press(const std::vector<TourKey>& keys, const Arrived& arrived);
  // With pictures of the steps that have names: PREFIX01-NAME.png.
  void Walk(const std::vector<TourStep>& steps, const QString& prefix = {});
  // Handles events until `done` holds. `what` names it in a complaint.
  void Await(const QString& what, const std::function<bool()>& done);

  // The view as NAME.png.
  void Save(const QString& name);
  // The view with what lies over it in a window of its own: a menu, a dialog.
  void SaveWith(QWidget* over, const QString& name);
  // The window without the system's frame.
  void SaveWindow(const QString& name);

 private:
  void Write(const QPixmap& picture, const QString& name);

  const QString folder_;
  const Resources resources_;
  DemoServer demo_;
  const UserPlaces places_;
  WindowSignaller signaller_;
  SystemOpener opener_;
  CQuillDoc doc_;
  std::unique_ptr<CMainFrame> frame_;
  QSize view_;
  QString complaint_;
};

}  // namespace quillet
