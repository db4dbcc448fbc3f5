// Any numbers: grids, pictures behind them, compositions, lists, articles and wheels keep what is shown
// inside what there is, whatever the window's size and whatever comes.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "core/key_sequence.h"
#include "input/article_paging.h"
#include "input/side_list.h"
#include "input/wheel_steps.h"
#include "render/backdrop_fit.h"
#include "render/composition_fit.h"
#include "render/layout.h"

#include "fuzz/drawing.h"

namespace quillet {
namespace {

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();
constexpr int kKeys[] = {kKeyUp,  kKeyDown,  kKeyPageUp, kKeyPageDown, kKeyHome,
                         kKeyEnd, kKeyEnter, kKeyRight,  kKeyBackspace};

class Numbers {
 public:
  explicit Numbers(std::string_view bytes) : input_(bytes) {}
  bool Empty() const { return input_.Empty(); }
  // Mostly small ones, some of many digits, and now and then an extreme.
  int Any() {
    const std::uint8_t kind = input_.Byte();
    if (kind >= 250) return kind % 2 == 0 ? kLeast : kMost;
    const int number = static_cast<int>(kind % 3 == 0 ? input_.Word() : input_.Byte());
    return kind % 5 == 0 ? -number : number;
  }
  int Within(int least, int most) {
    return least + static_cast<int>(input_.Word() % static_cast<std::uint32_t>(most - least + 1));
  }
  int Key() { return kKeys[input_.Byte() % std::size(kKeys)]; }

 private:
  Input input_;
};

void CheckAnyLayout(const LayoutInput& input) {
  const Layout layout = RecalcLayout(input);
  Require(layout.rowHeight >= 0 && layout.fontSize >= 12 && layout.pushFontSize >= 12);
  Require(layout.fontSize % 2 == 0 && layout.halfCell * 2 == layout.fontSize);
}

void CheckLayout(const LayoutInput& input) {
  const Layout layout = RecalcLayout(input);
  if (input.mode == LayoutMode::kNarrow && input.width == 660 && input.height >= 12) {
    // A low window shows the lowest rows whole.
    const int first = FirstInSight(layout);
    Require(first < kRows - 1 && RowTop(layout, first) >= 0 && RowTop(layout, kRows) <= input.height);
    Require(first == 0 || RowTop(layout, first - 1) < 0);
    for (int row = 0; row < kRows; ++row)
      Require(RowAt(layout, RowTop(layout, row)) == row && RowAt(layout, RowTop(layout, row + 1) - 1) == row);
  }
  if (input.mode != LayoutMode::kOrdinary || input.atTopLeft) return;
  Require(kRows * layout.rowHeight <= input.height);
  Require(input.lineSpacing < 0 || layout.fontSize == 12 || layout.fontSize <= layout.rowHeight);
  // Push lines never end further right than the grid or the window, as far as the window is wide enough.
  Require(layout.pushOriginX <= layout.originX);
  Require(40 * layout.pushFontSize > input.width ||
          layout.pushOriginX + 40 * layout.pushFontSize <= input.width);
  // Centred: both margins are equal up to the odd pixel.
  Require(std::abs(input.width - 40 * layout.fontSize - 2 * layout.originX) <= 1);
  Require(std::abs(input.height - kRows * layout.rowHeight - 2 * layout.originY) <= 1);
}

void CheckBackdrop(Numbers& numbers) {
  const double width = numbers.Within(1, 20000), height = numbers.Within(1, 20000);
  const double windowWidth = numbers.Within(1, 8000), windowHeight = numbers.Within(1, 8000);
  const double progress = numbers.Any() / 100.0;
  const auto fit = [&](BackdropStyle style) {
    return VisibleBackdrop(style, width, height, windowWidth, windowHeight, progress);
  };
  for (const BackdropStyle style : {BackdropStyle::kCrop, BackdropStyle::kMovingCrop}) {
    const BackdropRect rect = fit(style);
    Require(rect.width > 0 && rect.height > 0 && rect.x >= 0 && rect.y >= 0);
    Require(rect.x + rect.width <= width * (1 + 1e-12) && rect.y + rect.height <= height * (1 + 1e-12));
    Require(std::abs(rect.width * windowHeight / (rect.height * windowWidth) - 1) < 1e-9);
  }
}

// Whatever the numbers, the part that is shown lies in the window and holds the input method's cursor.
void CheckComposition(Numbers& numbers) {
  const int cells = numbers.Within(1, 5000), caret = numbers.Within(0, cells),
            first = numbers.Within(0, kCols);
  const ColumnRange visible{first, numbers.Within(first, kCols)};
  const CompositionFit fit = FitComposition(cells, caret, numbers.Within(0, kCols - 1), visible);
  Require(fit.shown == std::min(cells, visible.last - visible.first));
  Require(fit.col >= visible.first && fit.col + fit.shown <= visible.last);
  Require(fit.skipped >= 0 && fit.skipped + fit.shown <= cells && fit.skipped <= caret);
  Require(fit.shown == 0 || fit.skipped + fit.shown >= caret);
}

void CheckSideList(Numbers& numbers) {
  SideListState state{.shown = numbers.Within(1, 12), .count = numbers.Within(0, 30)};
  for (int step = 0; step < 20; ++step) {
    ScrollSideList(state, numbers.Within(-20, 20));
    Require(state.first >= 0 && state.first <= std::max(0, state.count - state.shown));
    OnSideListKey(numbers.Key(), ArticleListKind::kTracked, state);
    Require(state.selected >= 0 && state.selected <= std::max(0, state.count - 1));
  }
  OnSideListKey(kKeyUp, ArticleListKind::kTracked, state);
  Require(state.selected >= state.first && state.selected < state.first + state.shown);
}

void CheckPaging(Numbers& numbers) {
  const int count = numbers.Any(), top = numbers.Any();
  const PagingAction action =
      DecidePaging({.virtualKey = numbers.Key()}, false, {.top = top, .count = count});
  Require(action.top >= 0 && action.top <= LastTop(count));
}

void CheckWheel(Numbers& numbers) {
  const WheelDelta delta{.angle = numbers.Any(), .pixels = numbers.Any()};
  WheelSteps wheel;
  const WheelTurn turn =
      wheel.Add(delta, {.linesPerNotch = std::min(numbers.Any(), 100), .pixelsPerLine = numbers.Any()}, 0);
  Require((delta.pixels != 0 ? delta.pixels : delta.angle) >= 0 ? turn.lines >= 0 : turn.lines <= 0);
}

void RunInput(std::string_view bytes) {
  Numbers numbers(bytes);
  for (int round = 0; round < 8 && !numbers.Empty(); ++round) {
    const auto mode = static_cast<LayoutMode>(numbers.Within(0, 2));
    CheckAnyLayout({numbers.Any(), numbers.Any(), numbers.Any(), numbers.Any(), mode});
    CheckLayout({.width = numbers.Within(0, 3) == 0 ? 660 : numbers.Within(1, 8000),
                 .height = numbers.Within(1, 4500),
                 .lineSpacing = numbers.Within(-5, 55),
                 .pushLineSpacing = numbers.Within(-5, 55),
                 .mode = mode,
                 .atTopLeft = numbers.Within(0, 1) == 1});
    CheckBackdrop(numbers);
    CheckComposition(numbers);
    CheckSideList(numbers);
    CheckPaging(numbers);
    CheckWheel(numbers);
  }
}

}  // namespace
}  // namespace quillet

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillet::RunInput({reinterpret_cast<const char*>(data), size});
  return 0;
}
