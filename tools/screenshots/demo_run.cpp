#include "tools/screenshots/demo_run.h"

#include <QCoreApplication>
#include <QDir>
#include <QPainter>

#include "app/window/demo_host.h"

namespace quillet {
namespace {

constexpr int kPatienceMs = 30000;  // generous: a busy machine may be slow, a missing page never comes

DemoOptions OptionsFor(const Endpoints& endpoints) {
  DemoOptions options;
  options.contentFolder = DefaultDemoContent();
  options.picturePort = 0;
  options.UseNames(endpoints);
  return options;
}

}  // namespace

DemoRun::DemoRun(const QString& folder)
    : folder_(folder),
      resources_(LoadResources()),
      demo_(OptionsFor(resources_.endpoints)),
      places_(PlacesForOneRun()),
      doc_({.endpoints = resources_.endpoints,
            .signaller = signaller_,
            .registry = *places_.registry,
            .opener = opener_,
            .folders = places_.folders}) {
  doc_.Load();
  frame_ = std::make_unique<CMainFrame>(doc_);
  complaint_ = QString::fromStdString(demo_.Error());
  if (!IsFine()) return;
  frame_->show();
  Resize({1280, 720});
  doc_.GetConnection().Open({.address = QString::fromStdString(demo_.Address()),
                             .name = u"示範站台"_qs,
                             .placesFolder = PlacesOfDemo(DefaultDemoContent()),
                             .webSites = WebSitesOf(demo_, DefaultDemoContent()),
                             .isBbs = true});
}

void DemoRun::Fail(const QString& complaint) {
  if (IsFine()) complaint_ = complaint;
}

void DemoRun::Resize(QSize view) {
  view_ = view;
  frame_->SizeForView(view);
  Await(QStringLiteral("the view of %1x%2").arg(view.width()).arg(view.height()),
        [&] { return View().size() == view; });
}

void DemoRun::LogIn() {
  Walk(StepsToMainMenu());
}

void DemoRun::GoToBoard(const QString& board) {
  Walk(StepsToBoard(board));
}

void DemoRun::Read(const QString& titleWords) {
  Walk(StepsToArticle(titleWords));
}

void DemoRun::LeaveArticle() {
  Walk(StepsOutOfArticle());
}

void DemoRun::Press(const std::vector<TourKey>& keys, const Arrived& arrived) {
  Walk({{{}, keys, arrived, {}}});
}

void DemoRun::Walk(const std::vector<TourStep>& steps, const QString& prefix) {
  if (!IsFine()) return;
  TourSettings settings;
  settings.folder = folder_;
  settings.picture = TourPicture::kView;
  settings.view = view_;
  settings.prefix = prefix;
  std::vector<TourStep> walked = steps;
  if (prefix.isEmpty())
    for (TourStep& step : walked)
      step.name.clear();
  const TourResult result = WalkTour(*frame_, settings, walked);
  if (!result.ok) Fail(result.message);
}

void DemoRun::Await(const QString& what, const std::function<bool()>& done) {
  if (IsFine() && !HandleEventsUntil(done, kPatienceMs))
    Fail(QStringLiteral("This did not come: %1").arg(what));
}

void DemoRun::Save(const QString& name) {
  QCoreApplication::processEvents();
  Write(View().grab(), name);
}

void DemoRun::SaveWith(QWidget* over, const QString& name) {
  if (over == nullptr) return;
  QCoreApplication::processEvents();
  QPixmap picture = View().grab();
  // No window manager puts a dialog in its place here.
  QRect place(View().mapFromGlobal(over->mapToGlobal(QPoint(0, 0))), over->size());
  if (over->isModal()) place.moveCenter(View().rect().center());
  QPainter(&picture).drawPixmap(place.topLeft(), over->grab());
  Write(picture, name);
}

void DemoRun::SaveWindow(const QString& name) {
  QCoreApplication::processEvents();
  Write(frame_->grab(), name);
}

void DemoRun::Write(const QPixmap& picture, const QString& name) {
  if (!IsFine()) return;
  const QString file = QDir(folder_).filePath(name + ".png");
  if (!picture.save(file)) Fail(QStringLiteral("\"%1\" cannot be written.").arg(file));
}

}  // namespace quillet
