#include "tools/screenshots/palette_pictures.h"

namespace quillet {

void ShootDimPictures(DemoRun& run) {
  run.Set(&Settings::darkColor, true);
  run.Walk(DemoTour(), "dim-");
}

void ShootDisguisePictures(DemoRun& run) {
  run.Set(&Settings::work, true);
  run.Await("the first page", [&] { return run.View().ScreenCount() > 0; });
  run.SaveWindow("work-window");
  run.Walk(DemoTour(), "work-");
}

}  // namespace quillet
