#include "app/window/window_place.h"

#include <algorithm>
#include <array>

#include <QMargins>
#include <QRegion>
#include <QStringList>

namespace quillet {
namespace {

constexpr int kFarthest = 100000;
enum Number {
  kLeft,
  kTop,
  kWidth,
  kHeight,
  kOtherWidth,
  kOtherHeight,
  kLayout,
  kMaximized,
  kFullScreen,
  kNumbers
};
using Numbers = std::array<int, kNumbers>;

// The thinnest title bar above a window that stays where it was, and the room that one gets which is brought
// back, whose frame is not known before it shows.
constexpr QMargins kLeastFrame(0, 20, 0, 0);
constexpr QMargins kFrame(8, 40, 8, 8);

qint64 Area(const QRect& rect) {
  return rect.isEmpty() ? 0 : qint64{rect.width()} * rect.height();
}

bool IsPossible(const Numbers& numbers) {
  const auto within = [&](Number at, int least, int most) {
    return numbers[at] >= least && numbers[at] <= most;
  };
  return within(kLeft, -kFarthest, kFarthest) && within(kTop, -kFarthest, kFarthest) &&
         within(kWidth, 1, kFarthest) && within(kHeight, 1, kFarthest) && within(kOtherWidth, 0, kFarthest) &&
         within(kOtherHeight, 0, kFarthest) && within(kLayout, 0, static_cast<int>(LayoutMode::kNarrow)) &&
         within(kMaximized, 0, 1) && within(kFullScreen, 0, 1);
}

bool IsWhollySeen(const QRect& window, const QList<QRect>& areas) {
  QRegion hidden(window);
  for (const QRect& area : areas)
    hidden -= area;
  return hidden.isEmpty();
}

}  // namespace

QString ToText(const WindowPlace& place) {
  QStringList words;
  for (const int number : {place.window.x(), place.window.y(), place.window.width(), place.window.height(),
                           std::max(place.otherSize.width(), 0), std::max(place.otherSize.height(), 0),
                           static_cast<int>(place.layout), int{place.maximized}, int{place.fullScreen}})
    words << QString::number(number);
  return words.join(u' ');
}

std::optional<WindowPlace> ReadWindowPlace(QStringView text) {
  const QList<QStringView> words = text.split(u' ');
  if (words.size() != kNumbers) return std::nullopt;
  Numbers numbers{};
  for (int i = 0; i < kNumbers; ++i) {
    bool isNumber = false;
    numbers[static_cast<std::size_t>(i)] = words[i].toInt(&isNumber);
    if (!isNumber) return std::nullopt;
  }
  if (!IsPossible(numbers)) return std::nullopt;
  return WindowPlace{.window = {numbers[kLeft], numbers[kTop], numbers[kWidth], numbers[kHeight]},
                     .layout = static_cast<LayoutMode>(numbers[kLayout]),
                     .otherSize = {numbers[kOtherWidth], numbers[kOtherHeight]},
                     .maximized = numbers[kMaximized] == 1,
                     .fullScreen = numbers[kFullScreen] == 1};
}

QRect OnScreens(const QRect& window, const QList<QRect>& areas, QSize least) {
  const QRect asLarge(window.topLeft(), window.size().expandedTo(least));
  if (areas.isEmpty() || IsWhollySeen(asLarge.marginsAdded(kLeastFrame), areas)) return asLarge;
  const QRect screen = *std::max_element(areas.begin(), areas.end(), [&](const QRect& a, const QRect& b) {
    return Area(a & asLarge) < Area(b & asLarge);
  });
  const QRect room = screen.marginsRemoved(kFrame);
  QRect brought(asLarge.topLeft(), asLarge.size().boundedTo(room.size()).expandedTo(least));
  // Where even the least does not fit, the title bar is what has to be seen.
  brought.moveRight(std::min(brought.right(), room.right()));
  brought.moveBottom(std::min(brought.bottom(), room.bottom()));
  brought.moveLeft(std::max(brought.left(), room.left()));
  brought.moveTop(std::max(brought.top(), room.top()));
  return brought;
}

}  // namespace quillet
