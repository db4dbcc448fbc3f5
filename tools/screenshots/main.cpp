// quillet_screenshots FOLDER: the pictures of docs/, made off-screen: a walk through the demo with every page
// at 1280x720, one article at 3840x2160 with two device pixels per unit, as a 4K screen shows it, and the
// dialogs.
#include <cstdio>

#include <QApplication>
#include <QProcess>

#include "app/quill_app.h"
#include "app/toolkit.h"

#include "tools/screenshots/dialogs.h"
#include "tools/screenshots/login_pictures.h"

namespace {

// The scale factor is a process's own, and so is the end of an event loop: each part is made by a process of
// its own.
constexpr const char* kPages = "--pages";
constexpr const char* kHighDensity = "--high-density";
constexpr const char* kDialogs = "--dialogs";

int Walk(QApplication& toolkit, const QString& folder, bool highDensity) {
  quillet::StartOptions options;
  options.demo = true;
  options.tourFolder = folder;
  quillet::TourSettings tour;
  tour.picture = quillet::TourPicture::kView;
  if (highDensity) {
    tour.view = {1920, 1080};
    tour.only = "article";
    tour.prefix = "4k-";
  }
  return quillet::CQuillApp(toolkit, options, tour).Run();
}

int MakePart(int argc, char** argv) {
  const std::string_view part = argv[1];
  if (part == kHighDensity) qputenv("QT_SCALE_FACTOR", "2");
  QApplication toolkit(argc, argv);
  const QString folder = QApplication::arguments().last();
  if (part != kDialogs) return Walk(toolkit, folder, part == kHighDensity);
  quillet::PrepareToolkit();
  if (quillet::SaveDialogPictures(folder) && quillet::SaveLoginPictures(folder)) return 0;
  std::fputs(qPrintable(QStringLiteral("No picture can be written in \"%1\".\n").arg(folder)), stderr);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 && argc != 3) {
    std::fputs("usage: quillet_screenshots FOLDER\n", stderr);
    return 2;
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (argc == 3) return MakePart(argc, argv);
  for (const char* part : {kPages, kHighDensity, kDialogs})
    if (const int code =
            QProcess::execute(QString::fromLocal8Bit(argv[0]), {part, QString::fromLocal8Bit(argv[1])});
        code != 0)
      return code;
  return 0;
}
