// quillet_screenshots FOLDER: the pictures of docs/, made off-screen from the real program on its demo BBS.
// With "--PART" before the folder, one part of them; with QT_SCALE_FACTOR at that scale.
#include <cstdio>

#include <QApplication>
#include <QProcess>

#include "app/window/quill_app.h"
#include "app/window/toolkit.h"

#include "tools/screenshots/art_pictures.h"
#include "tools/screenshots/article_pictures.h"
#include "tools/screenshots/backdrop_pictures.h"
#include "tools/screenshots/dialogs.h"
#include "tools/screenshots/hands_pictures.h"
#include "tools/screenshots/layout_pictures.h"
#include "tools/screenshots/linked_pictures.h"
#include "tools/screenshots/login_pictures.h"
#include "tools/screenshots/name_list_pictures.h"
#include "tools/screenshots/palette_pictures.h"
#include "tools/screenshots/side_list_pictures.h"
#include "tools/screenshots/viewer_pictures.h"

namespace {

using quillet::DemoRun;

int Complain(const QString& what) {
  std::fputs(qPrintable(what + '\n'), stderr);
  return 1;
}

// What the program's own "--tour" walks through, and one page of it as a 4K screen shows it.
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

int ShootPages(QApplication& toolkit, const QString& folder) {
  return Walk(toolkit, folder, false);
}

int ShootHighDensity(QApplication& toolkit, const QString& folder) {
  return Walk(toolkit, folder, true);
}

int ShootDialogs(QApplication& /*toolkit*/, const QString& folder) {
  quillet::PrepareToolkit();
  return quillet::SaveDialogPictures(folder)
             ? 0
             : Complain(QStringLiteral("No picture can be written in \"%1\".").arg(folder));
}

template <void (*kTake)(DemoRun&)>
int Take(QApplication& /*toolkit*/, const QString& folder) {
  quillet::PrepareToolkit();
  DemoRun run(folder);
  kTake(run);
  return run.IsFine() ? 0 : Complain(run.Complaint());
}

// The scale factor is a process's own, and so is the end of an event loop: each row is made by a process of
// its own.
struct Part {
  const char* name;
  int (*take)(QApplication&, const QString& folder);
  const char* scaleFactor = "1";
};

constexpr Part kParts[] = {
    {"--pages", ShootPages},
    {"--high-density", ShootHighDensity, "2"},
    {"--dialogs", ShootDialogs},
    {"--login", Take<quillet::ShootLoginPictures>},
    {"--dim", Take<quillet::ShootDimPictures>},
    {"--disguise", Take<quillet::ShootDisguisePictures>},
    {"--article", Take<quillet::ShootArticlePictures>},
    {"--side-lists", Take<quillet::ShootSideListPictures>},
    {"--name-lists", Take<quillet::ShootNameListPictures>},
    {"--backdrop", Take<quillet::ShootBackdropPictures>},
    {"--hands", Take<quillet::ShootHandsPictures>},
    {"--layouts", Take<quillet::ShootLayoutPictures>},
    {"--linked", Take<quillet::ShootLinkedPictures>},
    {"--linked", Take<quillet::ShootLinkedPictures>, "1.25"},
    {"--linked", Take<quillet::ShootLinkedPictures>, "1.5"},
    {"--linked", Take<quillet::ShootLinkedPictures>, "2"},
    {"--viewer", Take<quillet::ShootViewerPictures>},
    {"--viewer", Take<quillet::ShootViewerPictures>, "1.5"},
    {"--art", Take<quillet::ShootArtPictures>},
    {"--art", Take<quillet::ShootArtPictures>, "1.25"},
    {"--art", Take<quillet::ShootArtPictures>, "1.5"},
    {"--art", Take<quillet::ShootArtPictures>, "2"},
};

int ShootPart(int argc, char** argv) {
  for (const Part& part : kParts) {
    if (std::string_view(argv[1]) != part.name) continue;
    QApplication toolkit(argc, argv);
    return part.take(toolkit, QApplication::arguments().last());
  }
  return Complain(QStringLiteral("There is no part %1.").arg(QString::fromLocal8Bit(argv[1])));
}

int ShootAll(const char* program, const char* folder) {
  for (const Part& part : kParts) {
    qputenv("QT_SCALE_FACTOR", part.scaleFactor);
    const QStringList arguments = {part.name, QString::fromLocal8Bit(folder)};
    if (const int code = QProcess::execute(QString::fromLocal8Bit(program), arguments); code != 0)
      return Complain(QStringLiteral("The part %1 failed.").arg(part.name));
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 && argc != 3) {
    std::fputs("usage: quillet_screenshots [--PART] FOLDER\n", stderr);
    return 2;
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  return argc == 3 ? ShootPart(argc, argv) : ShootAll(argv[0], argv[1]);
}
