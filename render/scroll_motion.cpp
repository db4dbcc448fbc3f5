#include "render/scroll_motion.h"

#include <cstdint>
#include <cstdlib>

namespace quillet {
namespace {

// Over longer distances than a page each tick moves a larger share of what is left: divisor is
// weight / distance + base.
constexpr int kPage = 22;
constexpr double kNearDivisor = 3.0;

struct FarDivisor {
  double weight;
  double base;
};
constexpr FarDivisor kArticle = {39.6, 1.2};
constexpr FarDivisor kSideList = {33.0, 1.5};

int Step(int from, int target, const FarDivisor& far) {
  const std::int64_t way = std::int64_t{target} - from;
  if (way == 0) return from;
  const auto distance = static_cast<double>(std::abs(way));
  const double divisor = distance > kPage ? far.weight / distance + far.base : kNearDivisor;
  // The 2 makes short distances move by at least one; no step is longer than the way.
  const auto step = static_cast<std::int64_t>((distance + 2) / divisor);
  return static_cast<int>(from + (way > 0 ? step : -step));
}

}  // namespace

int ScrollAnimationStep(int top, int target) {
  return Step(top, target, kArticle);
}

int SideListScrollStep(int first, int target) {
  return Step(first, target, kSideList);
}

}  // namespace quillet
