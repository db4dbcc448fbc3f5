// quillet_make_pictures FOLDER: draws the pictures that the demo's web sites show, demo/content/pictures/.
#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QPainter>

#include "tools/pictures/animals.h"
#include "tools/pictures/gif_colours.h"
#include "tools/pictures/huge_png.h"
#include "tools/pictures/landscapes.h"
#include "tools/pictures/motion.h"
#include "tools/pictures/things.h"

namespace {

using namespace quillet;

enum class Scans { kOne, kSeveral };

struct Still {
  const char* name;  // whose ending is its format
  QSize size;
  Drawing drawing;
  int quality = -1;  // of a JPEG
  Scans scans = Scans::kOne;
};

constexpr Still kStills[] = {{"sea.jpg", {1280, 854}, DrawSea, 78, Scans::kSeveral},
                             {"mountains.jpg", {1280, 854}, DrawMountains, 72},
                             {"night.jpg", {1280, 854}, DrawNight, 72, Scans::kSeveral},
                             {"fields.jpg", {1280, 854}, DrawFields, 72},
                             {"station.jpg", {1200, 800}, DrawStation, 76, Scans::kSeveral},
                             {"road.jpg", {1200, 800}, DrawRoad, 76},
                             {"lighthouse.jpg", {800, 1067}, DrawLighthouse, 76},
                             {"noodles.jpg", {1024, 768}, DrawNoodles, 74},
                             {"flower.jpg", {960, 720}, DrawFlower, 72},
                             {"cat-window.jpg", {1024, 768}, DrawCatAtWindow, 76},
                             {"cat-roof.jpg", {1024, 768}, DrawCatOnRoof, 74},
                             {"tall.jpg", {400, 1600}, DrawWaterfall, 72},
                             {"wide.jpg", {1600, 400}, DrawMountains, 72},
                             {"small.jpg", {200, 150}, DrawFlower, 80},
                             {"large.jpg", {4000, 3000}, DrawSea, 55, Scans::kSeveral},
                             {"film.jpg", {640, 360}, DrawFilm, 76},
                             {"stage.jpg", {640, 360}, DrawStage, 76},
                             {"pattern.png", {800, 800}, DrawPattern},
                             {"chart.png", {900, 600}, DrawChart},
                             {"poster.png", {600, 900}, DrawPoster},
                             {"leaf.bmp", {160, 120}, DrawLeaf}};

struct Loop {
  const char* name;
  QSize size;
  MovingDrawing drawing;
  int frames;
  std::uint16_t hundredths;
};

constexpr Loop kLoops[] = {{"cat.gif", {320, 240}, DrawWaggingCat, 24, 6},
                           {"pendulums.gif", {240, 240}, DrawPendulums, 40, 7},
                           {"rain.gif", {300, 225}, DrawRain, 16, 7}};

constexpr const char* kStillGif = "leaf.gif";
constexpr QSize kStillGifSize(320, 240);
constexpr const char* kHugePng = "huge.png";

// `draw` is given a painter in shapes.h's units, and the size in them.
template <typename Draw>
QImage Drawn(QSize size, const Draw& draw) {
  QImage picture(size, QImage::Format_RGB32);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const double scale = size.height() / kDrawingHeight;
  painter.scale(scale, scale);
  draw(painter, QSizeF(size.width() / scale, kDrawingHeight));
  return picture;
}

bool WriteStill(const QDir& folder, const Still& still) {
  QImageWriter writer(folder.filePath(still.name));
  if (still.quality >= 0) {
    writer.setQuality(still.quality);
    writer.setOptimizedWrite(true);
    writer.setProgressiveScanWrite(still.scans == Scans::kSeveral);
  } else {
    writer.setQuality(0);  // of a PNG: as small as can be
  }
  return writer.write(Drawn(still.size, still.drawing));
}

bool WriteFile(const QDir& folder, const char* name, const QByteArray& bytes) {
  QFile file(folder.filePath(name));
  return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

bool WriteGif(const QDir& folder, const char* name, const GifPicture& picture) {
  return WriteFile(folder, name, QByteArray::fromStdString(GifFileBytes(picture)));
}

bool WriteLoop(const QDir& folder, const Loop& loop) {
  std::vector<QImage> frames;
  frames.reserve(static_cast<std::size_t>(loop.frames));
  for (int i = 0; i < loop.frames; ++i)
    frames.push_back(Drawn(loop.size, [&](QPainter& painter, QSizeF size) {
      loop.drawing(painter, size, i / static_cast<double>(loop.frames));
    }));
  return WriteGif(folder, loop.name, GifOf(frames, loop.hundredths));
}

int Fail(const char* name) {
  std::fprintf(stderr, "quillet_make_pictures: cannot write %s\n", name);
  return 1;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: quillet_make_pictures FOLDER\n", stderr);
    return 2;
  }
  const QDir folder(QString::fromLocal8Bit(arguments[1]));
  if (!folder.mkpath(".")) return Fail(arguments[1]);
  for (const Still& still : kStills)
    if (!WriteStill(folder, still)) return Fail(still.name);
  for (const Loop& loop : kLoops)
    if (!WriteLoop(folder, loop)) return Fail(loop.name);
  if (!WriteFile(folder, kHugePng, HugePngBytes())) return Fail(kHugePng);
  return WriteGif(folder, kStillGif, GifOf({Drawn(kStillGifSize, DrawLeaf)}, 0)) ? 0 : Fail(kStillGif);
}
