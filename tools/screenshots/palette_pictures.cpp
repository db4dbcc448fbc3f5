#include "tools/screenshots/palette_pictures.h"

namespace quillet {

void ShootDimPictures(DemoRun& run) {
  run.Set(u"DarkColor", u"1");
  run.Walk(DemoTour(), "dim-");
}

void ShootDisguisePictures(DemoRun& run) {
  run.Set(u"Work", u"1");
  run.Await("the first page", [&] { return run.View().ScreenCount() > 0; });
  run.SaveWindow("work-window");
  run.Walk(DemoTour(), "work-");
}

}  // namespace quillet
