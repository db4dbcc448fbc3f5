// The frame painter against QPainter::drawText cell by cell, in one run: a settled screen of 900 double-width
// characters drawn whole, one changed row, and the first frame with cold glyphs. Both ways run in turn inside
// each iteration, and the ratios are those of the fastest passes, so that a busy machine does not blur them.
// Then an article with all its decorations, scrolled from end to end a row at a time.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include <QFont>
#include <QGuiApplication>
#include <QPainter>

#include "core/charset.h"
#include "render/paint/frame_painter.h"
#include "render/palette.h"

namespace quillet {
namespace {

constexpr int kWidePerRow = 38;  // 24 rows of them are 912

std::uint8_t Byte(std::size_t value) {
  return static_cast<std::uint8_t>(value);
}

// Everyday characters, a colour change every few cells as on a page of the BBS.
void FillRow(ScreenSnapshot& screen, std::size_t row, std::minstd_rand& random) {
  std::uint8_t attr = kAttrBlank;
  for (std::size_t pair = 0; pair < kWidePerRow; ++pair) {
    if (random() % 6 == 0) attr = Byte(1 + random() % 15);
    for (std::size_t half = 0; half < 2; ++half)
      screen.attr[row][2 * pair + half] = attr;
    screen.text[row][2 * pair] = Byte(0xA4 + random() % 34);
    screen.text[row][2 * pair + 1] = Byte(0xA1 + random() % 94);
  }
  screen.text[row][78] = 'o';
  screen.text[row][79] = 'k';
}

ScreenSnapshot TextScreen(unsigned seed) {
  std::minstd_rand random(seed);
  ScreenSnapshot screen;
  screen.Clear();
  for (std::size_t row = 0; row < kRows; ++row)
    FillRow(screen, row, random);
  return screen;
}

constexpr std::size_t kArticleLines = 2000;

// A line as an article's styling leaves it: every third a push line of its own size and ground, with an age;
// a flag, a tag, a link and the cursor bar here and there.
PageRow StyledLine(std::size_t line, std::minstd_rand& random) {
  ScreenSnapshot screen;
  screen.Clear();
  FillRow(screen, 0, random);
  screen.text[0][78] = screen.text[0][79] = ' ';
  PageRow row = PlainRow(screen.text[0], screen.attr[0]);
  if (line % 3 == 0) {
    row.size = RowSize::kPush;
    row.age = line % 2 == 0 ? u"1個半小時前" : u"25分鐘前";
    for (PageCell& cell : row.cells)
      cell.back = 24;
  }
  if (line % 5 == 0) row.pennants = Byte(2u << random() % 7);
  if (line % 17 == 0) {
    row.tag = u"愛吵架的人";
    row.tagCol = 20;
  }
  std::size_t style = 0;
  if (line % 7 == 0) style |= CS_UNDERLINE;
  if (line % 23 == 0) style |= CS_BAR;
  for (std::size_t col = 4; col < 16; ++col)
    row.cells[col].style = Byte(style);
  return row;
}

std::vector<PageRow> StyledArticleLines() {
  std::minstd_rand random(7);
  std::vector<PageRow> lines;
  for (std::size_t line = 0; line < kArticleLines; ++line)
    lines.push_back(StyledLine(line, random));
  return lines;
}

// A photograph is as uneven.
QImage NoisyPicture(int width, int height) {
  std::minstd_rand random(8);
  QImage picture(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      picture.setPixel(x, y, 0xFF000000u | static_cast<QRgb>(random()));
  return picture;
}

QFont GridFont(int pixelSize) {
  QFont font;
  font.setFamilies({QStringLiteral("細明體"), QStringLiteral("Noto Sans Mono CJK TC")});
  font.setPixelSize(pixelSize);
  return font;
}

QRgb Opaque(std::uint32_t colour) {
  return 0xFF000000 | colour;
}

// What one would write first: each cell's background, then its character.
void DrawPlain(QImage& image, const Layout& layout, const ScreenSnapshot& screen) {
  const Palette& palette = PaletteOf(PaletteKind::kNormal);
  image.fill(Opaque(palette[16]));
  QPainter painter(&image);
  const QFont font = GridFont(layout.fontSize);
  painter.setFont(font);
  const int ascent = layout.rowHeight * 88 / 100;
  for (int row = 0; row < kRows; ++row) {
    for (int col = 0; col < kCols;) {
      const std::uint8_t attr = screen.AttrAt(row, col);
      const std::uint8_t byte = screen.TextAt(row, col);
      const int cells = byte < 0x80 ? 1 : 2;
      const QRect rect(layout.originX + col * layout.halfCell, layout.originY + row * layout.rowHeight,
                       cells * layout.halfCell, layout.rowHeight);
      painter.fillRect(rect, QColor::fromRgb(palette[static_cast<std::size_t>(BackgroundIndex(attr))]));
      const char16_t unit =
          cells == 1 ? char16_t{byte} : Charset().big5ToUnicode[byte + 256 * screen.TextAt(row, col + 1)];
      painter.setPen(QColor::fromRgb(palette[static_cast<std::size_t>(ForegroundIndex(attr))]));
      painter.drawText(QPointF(rect.left(), rect.top() + ascent), QString(QChar(unit)));
      col += cells;
    }
  }
}

double Seconds(auto&& run) {
  const auto start = std::chrono::steady_clock::now();
  run();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

class Fastest {
 public:
  double Time(auto&& run) {
    const double time = Seconds(run);
    best_ = std::min(best_, time);
    return time;
  }
  double Best() const { return best_; }

 private:
  double best_ = std::numeric_limits<double>::max();
};

void BenchFrame(benchmark::State& state, int width, int height) {
  const DisplaySettings settings;
  FramePainter painter;
  painter.Resize(width, height);
  const ScreenSnapshot settled = TextScreen(1);
  ScreenSnapshot screen = settled;
  const FrameState frame{.page = PlainPage(screen)};
  std::minstd_rand random(2);
  FillRow(screen, 12, random);
  const FrameState rowChanged{.page = PlainPage(screen)};
  painter.Update(rowChanged);
  painter.Update(frame);

  QImage plain(width, height, QImage::Format_RGB32);
  const std::size_t imageBytes = static_cast<std::size_t>(plain.sizeInBytes());
  Fastest full, row, nothing, text, clear;
  for (auto _ : state) {
    painter.ApplySettings(settings);  // makes everything stale and keeps the glyphs
    state.SetIterationTime(full.Time([&] { painter.Update(frame); }));
    row.Time([&] { painter.Update(rowChanged); });
    row.Time([&] { painter.Update(frame); });
    nothing.Time([&] { painter.Update(frame); });
    text.Time([&] { DrawPlain(plain, painter.CurrentLayout(), settled); });
    clear.Time([&] { std::memset(plain.bits(), 0, imageBytes); });
  }
  state.counters["drawText_over_full"] = text.Best() / full.Best();
  state.counters["full_over_row"] = full.Best() / row.Best();
  state.counters["full_over_memset"] = full.Best() / clear.Best();
  std::printf(
      "%dx%d: a full repaint takes 1/%.1f of drawText and %.1f memsets; one changed row 1/%.1f of a full "
      "repaint; nothing changed 1/%.0f\n",
      width, height, text.Best() / full.Best(), full.Best() / clear.Best(), full.Best() / row.Best(),
      full.Best() / nothing.Best());
}

// Sizes that nothing was drawn at yet, in turn for both ways.
void BenchColdFrame(benchmark::State& state) {
  const ScreenSnapshot screen = TextScreen(3);
  const FrameState frame{.page = PlainPage(screen)};
  double ours = 0;
  double plain = 0;
  double warmed = 0;
  for (auto _ : state) {
    for (int height = 700; height <= 1200; height += 100) {
      const int width = height * 16 / 9;
      FramePainter painter;
      painter.Resize(width, height);
      const double time = Seconds([&] { painter.Update(frame); });
      QImage image(width, height, QImage::Format_RGB32);
      ours += time;
      plain += Seconds([&] { DrawPlain(image, painter.CurrentLayout(), screen); });
      FramePainter prepared;
      prepared.Resize(width, height);
      while (prepared.WarmUp(1000))
        continue;
      warmed += Seconds([&] { prepared.Update(frame); });
    }
    state.SetIterationTime(ours);
  }
  state.counters["of_plain"] = ours / plain;
  std::printf("first frame, cold glyphs: %.2f of drawText's; after WarmUp %.3f\n", ours / plain,
              warmed / plain);
}

struct Percentiles {
  double median, most, highest;  // `most`: 99 of 100 are below
};

Percentiles Of(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return {times[times.size() / 2], times[times.size() * 99 / 100], times.back()};
}

// Scrolls the whole article, a row per step, top to bottom; `moving`: over a picture that moves along.
void BenchScroll(benchmark::State& state, bool moving) {
  const std::vector<PageRow> lines = StyledArticleLines();
  FramePainter painter;
  DisplaySettings settings;
  settings.pushLineSpacing = 1;
  painter.ApplySettings(settings);
  if (moving) painter.SetBackdrop({NoisyPicture(1280, 1440), BackdropStyle::kMovingCrop, 40});
  painter.Resize(1280, 720);
  while (painter.WarmUp(1000))
    continue;
  const std::size_t steps = lines.size() - kRows;
  FrameState frame{.page = {}, .rightInset = 14};
  painter.Update(frame);  // the picture is scaled when the window gets its size
  std::vector<double> times;
  for (auto _ : state) {
    times.clear();
    double total = 0;
    for (std::size_t top = 0; top <= steps; ++top) {
      std::copy_n(lines.begin() + static_cast<std::ptrdiff_t>(top), kRows, frame.page.begin());
      frame.progress = static_cast<double>(top) / static_cast<double>(steps);
      times.push_back(1000 * Seconds([&] { painter.Update(frame); }));
      total += times.back();
    }
    state.SetIterationTime(total / 1000);
  }
  const auto [median, most, highest] = Of(times);
  state.counters["ms_per_step"] = median;
  std::printf(
      "scrolling %zu dressed lines by a row%s: %.2f ms a step, 99 of 100 below %.2f ms, the slowest %.2f "
      "ms\n",
      lines.size(), moving ? " over a moving picture" : "", median, most, highest);
}

// Every age is another one than in the frame before, as after a minute.
void BenchAges(benchmark::State& state) {
  const ScreenSnapshot screen = TextScreen(1);
  FrameState frame{.page = PlainPage(screen), .rightInset = 14};
  for (PageRow& row : frame.page)
    row.cells[78].byte = row.cells[79].byte = ' ';
  const FrameState without = frame;
  FramePainter painter;
  painter.Resize(1280, 720);
  painter.Update(frame);
  Fastest fresh, known;
  int minute = 0;
  for (auto _ : state) {
    for (std::size_t row = 0; row + 1 < kRows; ++row)
      frame.page[row].age = QStringLiteral("%1分鐘前").arg(minute++).toStdU16String();
    state.SetIterationTime(fresh.Time([&] { painter.Update(frame); }));
    painter.Update(without);
    known.Time([&] { painter.Update(frame); });
  }
  std::printf("23 ages: %.2f ms when all are new, %.2f ms afterwards\n", 1000 * fresh.Best(),
              1000 * known.Best());
}

void Register() {
  benchmark::RegisterBenchmark("cold_frame", BenchColdFrame)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond)
      ->Iterations(1);
  benchmark::RegisterBenchmark("frame/1280x720", BenchFrame, 1280, 720)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond)
      ->Iterations(150);
  benchmark::RegisterBenchmark("frame/2560x1440", BenchFrame, 2560, 1440)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond)
      ->Iterations(60);
  benchmark::RegisterBenchmark("ages", BenchAges)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond)
      ->Iterations(20);
  benchmark::RegisterBenchmark("scroll", BenchScroll, false)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond)
      ->Iterations(2);
  benchmark::RegisterBenchmark("scroll/moving_picture", BenchScroll, true)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond)
      ->Iterations(2);
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  quillet::LoadCharsetTables(QUILLET_SOURCE_DIR "/Data");
  benchmark::Initialize(&argc, argv);
  quillet::Register();
  benchmark::RunSpecifiedBenchmarks();
}
