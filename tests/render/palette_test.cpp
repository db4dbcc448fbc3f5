#include "render/palette.h"

#include <gtest/gtest.h>

#include "core/screen_snapshot.h"

namespace quillet {
namespace {

TEST(PaletteTest, AttributeBitsChooseTheColours) {
  const Palette& normal = PaletteOf(PaletteKind::kNormal);
  const auto foreground = [&](int attr) {
    return normal[static_cast<std::size_t>(ForegroundIndex(static_cast<std::uint8_t>(attr)))];
  };
  const auto background = [&](int attr) {
    return normal[static_cast<std::size_t>(BackgroundIndex(static_cast<std::uint8_t>(attr)))];
  };
  EXPECT_EQ(foreground(kAttrBlank), 0xC0C0C0u);
  EXPECT_EQ(foreground(kAttrBlank | kAttrBold), 0xFFFFFFu);
  EXPECT_EQ(foreground(kAttrBlank | kAttrBlink), 0xC0C0C0u);
  EXPECT_EQ(background(kAttrBlank), 0x000000u);
  EXPECT_EQ(background(kAttrInputField), 0xC0C0C0u);
  EXPECT_EQ(foreground(kAttrInputField), 0x000000u);
  EXPECT_EQ(foreground(3), 0x808000u);
  EXPECT_EQ(background(6 << 5), 0x008080u);
}

TEST(PaletteTest, DarkPaletteDimsEveryBrightColourButBlue) {
  const Palette& normal = PaletteOf(PaletteKind::kNormal);
  const Palette& dark = PaletteOf(PaletteKind::kDark);
  EXPECT_EQ(dark[12], 0x0000FFu);
  for (const std::size_t index : {9u, 10u, 11u, 13u, 14u, 15u})
    EXPECT_EQ(dark[index], normal[index] & 0xD0D0D0u) << index;
  for (std::size_t index = 0; index < normal.size(); ++index)
    for (const int shift : {0, 8, 16})
      EXPECT_LE(dark[index] >> shift & 0xFF, normal[index] >> shift & 0xFF) << index;
}

TEST(PaletteTest, DisguiseIsBlackOnWhiteWhateverTheAttribute) {
  const Palette& disguise = PaletteOf(PaletteKind::kDisguise);
  for (unsigned attr = 0; attr < 256; ++attr) {
    EXPECT_EQ(disguise[static_cast<std::size_t>(ForegroundIndex(static_cast<std::uint8_t>(attr)))],
              0x000000u);
    EXPECT_EQ(disguise[static_cast<std::size_t>(BackgroundIndex(static_cast<std::uint8_t>(attr)))],
              0xFFFFFFu);
  }
  EXPECT_EQ(disguise[25], 0xFFFFFFu);
  EXPECT_EQ(disguise[31], 0x808080u);
  EXPECT_EQ(disguise[35], 0xFFFFFFu);
  EXPECT_EQ(disguise[41], 0xFFFFFFu);
  EXPECT_EQ(disguise[43], 0x000000u);
}

}  // namespace
}  // namespace quillet
