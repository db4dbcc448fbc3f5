// quillet_screenshots FOLDER: the pictures of docs/, made by walking through the demo off-screen: every page
// at 1280x720, and one article at 3840x2160 with two device pixels per unit, as a 4K screen shows it.
#include <cstdio>

#include <QApplication>
#include <QProcess>

#include "app/quill_app.h"

namespace {

// The scale factor is a process's own, so the second kind of picture is made by a second process.
constexpr const char* kHighDensity = "--high-density";

int Walk(int argc, char** argv, bool highDensity) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (highDensity) qputenv("QT_SCALE_FACTOR", "2");
  QApplication toolkit(argc, argv);
  quillet::StartOptions options;
  options.demo = true;
  options.tourFolder = QApplication::arguments().last();
  quillet::TourSettings tour;
  tour.picture = quillet::TourPicture::kView;
  if (highDensity) {
    tour.view = {1920, 1080};
    tour.only = "article";
    tour.prefix = "4k-";
  }
  return quillet::CQuillApp(toolkit, options, tour).Run();
}

}  // namespace

int main(int argc, char** argv) {
  const bool highDensity = argc == 3 && std::string_view(argv[1]) == kHighDensity;
  if (argc != 2 && !highDensity) {
    std::fputs("usage: quillet_screenshots FOLDER\n", stderr);
    return 2;
  }
  if (const int code = Walk(argc, argv, highDensity); code != 0 || highDensity) return code;
  return QProcess::execute(QString::fromLocal8Bit(argv[0]), {kHighDensity, QString::fromLocal8Bit(argv[1])});
}
