#include "tools/screenshots/viewer_pictures.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>

namespace quillet {
namespace {

void SaveScaled(DemoRun& run, const char* name) {
  run.Save(QStringLiteral("viewer-%1@%2").arg(name).arg(run.View().devicePixelRatioF()));
}

void LookAtFirst(DemoRun& run) {
  run.Await(u"a picture in sight"_qs, [&] {
    const std::vector<FramePicture>& pictures = run.View().Frame().pictures;
    return !pictures.empty() && !pictures.front().image.isNull();
  });
  const std::vector<QString> links = run.View().Pictures().OpenLinks();
  if (!links.empty()) run.View().Pictures().Click({.link = links.front()});
}

void AwaitWhole(DemoRun& run) {
  const PictureViewer& viewer = run.View().Viewer();
  run.Await(u"the picture in its size"_qs, [&] {
    const PixelSize wanted = viewer.Zoom().WantedBounds();
    return viewer.Now().stage == PictureStage::kReady && viewer.Now().image.width() >= wanted.width - 1;
  });
}

void PressInViewer(DemoRun& run, Qt::Key key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QCoreApplication::sendEvent(run.View().findChild<PictureViewer*>(), &press);
}

void ShootVideo(DemoRun& run) {
  run.Read(u"慢慢看的影片"_qs);
  LookAtFirst(run);
  run.Await(u"the video's dialog"_qs, [] {
    QWidget* const dialog = QApplication::activeModalWidget();
    const auto labels = dialog == nullptr ? QList<QLabel*>() : dialog->findChildren<QLabel*>();
    return !labels.isEmpty() && !labels.front()->pixmap().isNull();
  });
  run.SaveWith(QApplication::activeModalWidget(),
               QStringLiteral("viewer-video@%1").arg(run.View().devicePixelRatioF()));
  if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) dialog->reject();
  run.LeaveArticle();
}

}  // namespace

void ShootViewerPictures(DemoRun& run) {
  run.View().AskAboutPictures();
  SaveScaled(run, "question");
  run.View().findChild<QPushButton*>("later")->click();
  run.LogIn();
  run.GoToBoard("Photo");
  run.Read(u"沿著海走"_qs);
  LookAtFirst(run);
  AwaitWhole(run);
  SaveScaled(run, "fitted");
  PressInViewer(run, Qt::Key_Space);
  AwaitWhole(run);
  SaveScaled(run, "actual");
  PressInViewer(run, Qt::Key_Right);
  AwaitWhole(run);
  SaveScaled(run, "next");
  run.Resize({480, 288});
  SaveScaled(run, "small");
  PressInViewer(run, Qt::Key_Escape);
  run.Resize({1280, 720});
  run.LeaveArticle();
  ShootVideo(run);
}

}  // namespace quillet
