#include "render/shape_glyphs.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string_view>
#include <utility>
#include <vector>

namespace quillet {
namespace {

struct Size {
  int width, height;
};

// Square, odd, spaced and hostile cells.
constexpr Size kSizes[] = {{12, 12}, {18, 19}, {24, 30}, {26, 31}, {30, 30}, {30, 31}, {32, 45}, {90, 90}};

class Drawn {
 public:
  Drawn(char16_t unit, Size size) : size_(size), stride_(static_cast<std::size_t>(size.width) + 3) {
    bytes_.resize(stride_ * static_cast<std::size_t>(size.height));
    EXPECT_TRUE(DrawShape(unit, {bytes_, stride_, size.width, size.height}));
  }
  int At(int x, int y) const {
    return bytes_[static_cast<std::size_t>(y) * stride_ + static_cast<std::size_t>(x)];
  }
  std::vector<int> Column(int x) const {
    std::vector<int> column;
    for (int y = 0; y < size_.height; ++y)
      column.push_back(At(x, y));
    return column;
  }
  std::vector<int> Row(int y) const {
    std::vector<int> row;
    for (int x = 0; x < size_.width; ++x)
      row.push_back(At(x, y));
    return row;
  }
  std::vector<int> Left() const { return Column(0); }
  std::vector<int> Right() const { return Column(size_.width - 1); }
  std::vector<int> Top() const { return Row(0); }
  std::vector<int> Bottom() const { return Row(size_.height - 1); }
  bool PaddingIsClean() const {
    for (std::size_t i = 0; i < bytes_.size(); ++i)
      if (i % stride_ >= static_cast<std::size_t>(size_.width) && bytes_[i] != 0) return false;
    return true;
  }

 private:
  Size size_;
  std::size_t stride_;
  std::vector<std::uint8_t> bytes_;
};

// Characters that reach an edge with the same kind of line, by edge.
struct Family {
  char16_t horizontal;
  char16_t vertical;
  std::u16string_view left, right, up, down;
};

constexpr Family kFamilies[] = {
    {u'─', u'│', u"─┐┘┤┬┴┼╮╯╴╖╜╢╥╨╫┒┚┨┰┸╂╼", u"─┌└├┬┴┼╭╰╶╓╙╟╥╨╫┎┖┠┰┸╂╾", u"│└┘├┤┴┼╯╰╵╘╛╞╡╧╪┕┙┝┥┷┿╽",
     u"│┌┐├┤┬┼╭╮╷╒╕╞╡╤╪┍┑┝┥┯┿╿"},
    {u'━', u'┃', u"━┓┛┫┳┻╋╸┑┙┥┯┷┿╾", u"━┏┗┣┳┻╋╺┍┕┝┯┷┿╼", u"┃┗┛┣┫┻╋╹┖┚┠┨┸╂╿", u"┃┏┓┣┫┳╋╻┎┒┠┨┰╂╽"},
    {u'═', u'║', u"═╗╝╣╦╩╬╕╛╡╤╧╪", u"═╔╚╠╦╩╬╒╘╞╤╧╪", u"║╚╝╠╣╩╬╙╜╟╢╨╫", u"║╔╗╠╣╦╬╓╖╟╢╥╫"},
};

TEST(ShapeGlyphsTest, LinesOfOneKindMeetAtEveryEdgeOfEverySize) {
  for (const Size size : kSizes)
    for (const Family& family : kFamilies) {
      SCOPED_TRACE(testing::Message() << size.width << "x" << size.height);
      const Drawn horizontal(family.horizontal, size);
      const Drawn vertical(family.vertical, size);
      EXPECT_EQ(horizontal.Left(), horizontal.Right());
      EXPECT_EQ(vertical.Top(), vertical.Bottom());
      EXPECT_NE(horizontal.Left(), std::vector<int>(static_cast<std::size_t>(size.height), 0));
      for (const char16_t unit : family.left)
        EXPECT_EQ(Drawn(unit, size).Left(), horizontal.Left()) << int{unit};
      for (const char16_t unit : family.right)
        EXPECT_EQ(Drawn(unit, size).Right(), horizontal.Right()) << int{unit};
      for (const char16_t unit : family.up)
        EXPECT_EQ(Drawn(unit, size).Top(), vertical.Top()) << int{unit};
      for (const char16_t unit : family.down)
        EXPECT_EQ(Drawn(unit, size).Bottom(), vertical.Bottom()) << int{unit};
      const std::vector<int> none(static_cast<std::size_t>(size.height), 0);
      for (const char16_t unit : std::u16string_view(u"┌├└╔╠╚╭╰╒╘╞╓╙╟┏┗"))
        EXPECT_EQ(Drawn(unit, size).Left(), none) << int{unit};
    }
}

TEST(ShapeGlyphsTest, HalvesAndTrianglesFillTheCellTogether) {
  constexpr std::pair<char16_t, char16_t> kComplements[] = {
      {u'▀', u'▄'}, {u'▌', u'▐'}, {u'◢', u'◤'}, {u'◣', u'◥'}, {u'▚', u'▞'}, {u'▙', u'▝'}, {u'▛', u'▗'}};
  for (const Size size : kSizes)
    for (const auto& [one, other] : kComplements) {
      const Drawn first(one, size);
      const Drawn second(other, size);
      for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
          ASSERT_LE(std::abs(first.At(x, y) + second.At(x, y) - 255), 1) << int{one} << " " << x << "," << y;
    }
}

TEST(ShapeGlyphsTest, BlocksGrowStepByStepToTheWholeCell) {
  const auto ink = [](char16_t unit, Size size) {
    const Drawn drawn(unit, size);
    int sum = 0;
    for (int y = 0; y < size.height; ++y)
      for (int x = 0; x < size.width; ++x)
        sum += drawn.At(x, y);
    return sum;
  };
  for (const Size size : kSizes) {
    const int whole = 255 * size.width * size.height;
    for (const std::u16string_view steps : {u"▁▂▃▄▅▆▇█", u"▏▎▍▌▋▊▉█", u"░▒▓█"}) {
      int before = 0;
      for (const char16_t unit : steps) {
        EXPECT_GT(ink(unit, size), before) << int{unit};
        before = ink(unit, size);
      }
      EXPECT_EQ(before, whole);
    }
  }
}

TEST(ShapeGlyphsTest, EveryShapeFitsEveryCell) {
  for (const Size size :
       {Size{1, 1}, Size{2, 1}, Size{1, 40}, Size{12, 2}, Size{12, 5}, Size{30, 31}, Size{180, 180}})
    for (int unit = 1; unit < 0x10000; ++unit) {
      const auto character = static_cast<char16_t>(unit);
      if (!IsShape(character)) continue;
      const Drawn drawn(character, size);
      EXPECT_TRUE(drawn.PaddingIsClean()) << unit;
    }
  std::uint8_t byte = 0;
  EXPECT_FALSE(DrawShape(u'A', {{&byte, 1}, 1, 1, 1}));
  EXPECT_EQ(byte, 0);
}

TEST(ShapeGlyphsTest, DiagonalsRunIntoTheCorners) {
  for (const Size size : kSizes) {
    const int right = size.width - 1;
    const int bottom = size.height - 1;
    const Drawn rising(u'╱', size), falling(u'╲', size), both(u'╳', size);
    for (const Drawn* drawn : {&rising, &both}) {
      EXPECT_GT(drawn->At(right, 0), 128);
      EXPECT_GT(drawn->At(0, bottom), 128);
    }
    for (const Drawn* drawn : {&falling, &both}) {
      EXPECT_GT(drawn->At(0, 0), 128);
      EXPECT_GT(drawn->At(right, bottom), 128);
    }
    EXPECT_EQ(rising.At(0, 0) + rising.At(right, bottom) + falling.At(right, 0) + falling.At(0, bottom), 0);
  }
}

}  // namespace
}  // namespace quillet
