#include "demo/write_splitter.h"

#include <algorithm>

namespace quillet::demo {
namespace {

constexpr std::size_t kShortFrame = 256;
constexpr int kMostCuts = 4;

}  // namespace

std::vector<std::string_view> WriteSplitter::Split(std::string_view frame) {
  if (frame.empty()) return {};
  std::vector<std::size_t> cuts;
  if (writes_ == DemoOptions::Writes::kEveryByte) {
    for (std::size_t at = 1; at < frame.size(); ++at)
      cuts.push_back(at);
  } else if (writes_ == DemoOptions::Writes::kAsBbs && frame.size() >= kShortFrame) {
    const unsigned count = 1 + random_() % kMostCuts;
    for (unsigned i = 0; i < count; ++i)
      cuts.push_back(PickCut(frame));
    std::sort(cuts.begin(), cuts.end());
  }
  cuts.push_back(frame.size());
  std::vector<std::string_view> pieces;
  std::size_t from = 0;
  for (const std::size_t cut : cuts) {
    if (cut > from) pieces.push_back(frame.substr(from, cut - from));
    from = cut;
  }
  return pieces;
}

// Half of the cuts go right behind an ESC, the most awkward place; the others fall where they fall, which on
// Chinese text is within a character every second time.
std::size_t WriteSplitter::PickCut(std::string_view frame) {
  const std::size_t at = 1 + random_() % (frame.size() - 1);
  if (random_() % 2 == 0) return at;
  const std::size_t escape = frame.find('\x1b', at);
  return escape == std::string_view::npos ? at : escape + 1;
}

}  // namespace quillet::demo
