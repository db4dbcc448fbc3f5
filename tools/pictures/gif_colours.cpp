#include "tools/pictures/gif_colours.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

#include <QRgb>

namespace quillet {
namespace {

constexpr std::size_t kMostColours = 256;
// What is told apart of a colour's red, green and blue: the upper five bits.
constexpr QRgb kKept = 0xF8F8F8;

QRgb Coarse(QRgb colour) {
  return colour & kKept;
}

template <typename Function>
void ForEachPixel(const QImage& frame, const Function& function) {
  for (int y = 0; y < frame.height(); ++y)
    for (int x = 0; x < frame.width(); ++x)
      function(frame.pixel(x, y));
}

std::vector<QRgb> MostFrequent(const std::vector<QImage>& frames) {
  std::map<QRgb, std::size_t> counts;
  for (const QImage& frame : frames)
    ForEachPixel(frame, [&](QRgb pixel) { ++counts[Coarse(pixel)]; });
  std::vector<std::pair<std::size_t, QRgb>> ranking;
  ranking.reserve(counts.size());
  for (const auto& [colour, count] : counts)
    ranking.emplace_back(count, colour);
  std::sort(ranking.rbegin(), ranking.rend());
  ranking.resize(std::min(ranking.size(), kMostColours));
  std::vector<QRgb> colours;
  colours.reserve(ranking.size());
  for (const auto& [count, colour] : ranking)
    colours.push_back(colour);
  return colours;
}

int DistanceOf(QRgb a, QRgb b) {
  const int red = qRed(a) - qRed(b);
  const int green = qGreen(a) - qGreen(b);
  const int blue = qBlue(a) - qBlue(b);
  return red * red + 2 * green * green + blue * blue;
}

std::uint8_t NearestOf(QRgb colour, const std::vector<QRgb>& colours) {
  const auto nearest = std::min_element(colours.begin(), colours.end(), [&](QRgb a, QRgb b) {
    return DistanceOf(a, colour) < DistanceOf(b, colour);
  });
  return static_cast<std::uint8_t>(nearest - colours.begin());
}

}  // namespace

GifPicture GifOf(const std::vector<QImage>& frames, std::uint16_t hundredths) {
  const std::vector<QRgb> colours = MostFrequent(frames);
  GifPicture picture;
  picture.width = static_cast<std::uint16_t>(frames.front().width());
  picture.height = static_cast<std::uint16_t>(frames.front().height());
  for (const QRgb colour : colours)
    picture.palette.push_back({static_cast<std::uint8_t>(qRed(colour)),
                               static_cast<std::uint8_t>(qGreen(colour)),
                               static_cast<std::uint8_t>(qBlue(colour))});
  std::map<QRgb, std::uint8_t> places;
  for (const QImage& frame : frames) {
    GifFrame made{.pixels = {}, .hundredths = hundredths};
    ForEachPixel(frame, [&](QRgb pixel) {
      const auto [place, isNew] = places.try_emplace(Coarse(pixel));
      if (isNew) place->second = NearestOf(place->first, colours);
      made.pixels.push_back(place->second);
    });
    picture.frames.push_back(std::move(made));
  }
  return picture;
}

}  // namespace quillet
