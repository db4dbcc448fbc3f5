#include "settings/settings_map.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

#include "settings/files/text_lines.h"
#include "settings/setting_table.h"
#include "settings/settings_store.h"

namespace quillet {
namespace {

using Lines = std::vector<std::u16string>;

SettingsMap MapOf(std::string_view file) {
  SettingsMap map;
  map.ReadLines(ReadLines(file).lines);
  return map;
}

SettingsMap WrittenAndRead(const SettingsMap& map) {
  return MapOf(EncodeText(map.AsText(), "\n"));
}

TEST(SettingsMapTest, FileIsReadByItsRules) {
  const SettingsMap map = MapOf(
      "before=any section\n"
      "[ Basic ]\n"
      "Font = 細明體 \n"
      "Formula=a=b==c\n"
      "Bare\n"
      "Empty=\n"
      "Twice=1\n"
      "basic=other letter case\n"
      "[Own]\n"
      "[Basic]\n"
      "Twice=2\n"
      "=no key\n"
      "=\n"
      "[Cut short\n"
      "k=v\n"
      "[Pair🙂\n"
      "[\n"
      "nameless=1\n");
  EXPECT_EQ(map.All().size(), 5U);
  EXPECT_TRUE(map.All().contains(u"Pair"));
  EXPECT_EQ(map.Text(u"Basic", u"Font"), u"細明體");
  EXPECT_EQ(map.Text(u"Basic", u"Formula"), u"a=b==c");
  EXPECT_EQ(map.Text(u"Basic", u"Twice"), u"2");
  EXPECT_EQ(map.Text(u"Basic", u""), u"no key");
  EXPECT_EQ(map.Text(u"Cut shor", u"k"), u"v");
  EXPECT_EQ(map.Number(u"", u"nameless"), 1);
  ASSERT_NE(map.Find(u"Basic", u"Bare"), nullptr);
  EXPECT_TRUE(map.Find(u"Basic", u"Bare")->empty());
  EXPECT_EQ(map.Find(u"Basic", u"bare"), nullptr);
  EXPECT_EQ(map.Find(u"basic", u"Bare"), nullptr);
  EXPECT_TRUE(map.All().at(u"Own").empty());
  EXPECT_EQ(WrittenAndRead(map), map);
}

TEST(SettingsMapTest, FileIsWrittenInOrdinalOrderWithBareKeys) {
  SettingsMap map;
  map.Set(u"b", u"z", u"1");
  map.Set(u"b", u"Z", u"");
  map.Set(u"B", u"k", u"x = y");
  map.SetNumber(u"中", u"n", -5);
  map.Set(kTrackSection, u"author=a", u"");
  EXPECT_EQ(map.AsText(), u"[B]\nk=x = y\n\n[Track]\nauthor=a\n\n[b]\nZ\nz=1\n\n[中]\nn=-5\n\n");
}

TEST(SettingsMapTest, TrackingRulesAreWholeLines) {
  const SettingsMap map = MapOf(
      "[Track]\n"
      "board:gossiping && author:moss && title:a=b\n"
      "Board:X && Author:Y\n"
      "title!=帥哥 = x\n"
      "author=moss\n"
      "author:moss\n"
      "\v\n");
  EXPECT_EQ(map.TrackLines(), (Lines{u"Board=X && Author=Y", u"author=moss",
                                     u"board=gossiping && author=moss && title=a=b", u"title!=帥哥 = x"}));
  EXPECT_EQ(WrittenAndRead(map), map);
}

TEST(SettingsMapTest, TrackingRulesCannotOpenASection) {
  SettingsMap map;
  map.Set(u"Basic", u"Font", u"kept");
  map.SetTrackLines({u"old"});
  map.SetTrackLines({u"[Basic]", u" [ [title=問卷", u"author:a\r\n[Basic]\r\nFont=forged", u"\x1[x", u"",
                     u" [ ", std::u16string(600, u'x')});
  EXPECT_EQ(map.TrackLines(), (Lines{u"Basic]", u"author=a  [Basic]  Font=forged", u"title=問卷", u"x",
                                     std::u16string(kLongestLine, u'x')}));
  EXPECT_EQ(WrittenAndRead(map), map);
  map.SetTrackLines({});
  EXPECT_TRUE(map.TrackLines().empty());
}

TEST(SettingsMapTest, ValueIsCutWhereALineEnds) {
  SettingsMap map;
  map.Set(u"Basic", u"Key", std::u16string(600, u'v'));
  EXPECT_EQ(map.Text(u"Basic", u"Key").size(), kLongestLine - 4);
  // Neither half a pair nor a blank may stand at the cut.
  map.Set(u"Basic", u"Pair", std::u16string(kLongestLine - 6, u'v') + u"🙂");
  EXPECT_EQ(map.Text(u"Basic", u"Pair"), std::u16string(kLongestLine - 6, u'v'));
  map.Set(u"Basic", u"Cut", std::u16string(kLongestLine - 6, u'v') + u"   x");
  EXPECT_EQ(map.Text(u"Basic", u"Cut"), std::u16string(kLongestLine - 6, u'v'));
  map.Set(std::u16string(600, u's'), std::u16string(600, u'k'), u"no room");
  EXPECT_EQ(WrittenAndRead(map), map);
}

// Texts made of what the file's rules turn on.
std::u16string RandomText(std::mt19937& random, std::size_t longest) {
  constexpr std::u16string_view kUnits = u"ab[]= \t\r\n\x1F\0中\u0085\uFEFF:oardTrack";
  std::u16string text(random() % (longest + 1), u'x');
  for (char16_t& unit : text)
    unit = random() % 40 == 0 ? static_cast<char16_t>(0xD800 + random() % 0x800)
                              : kUnits[random() % kUnits.size()];
  return text;
}

TEST(SettingsMapTest, WhateverIsSetComesBackFromTheFile) {
  std::mt19937 random(3);
  for (int round = 0; round < 2000; ++round) {
    SettingsMap map;
    for (unsigned i = random() % 8; i > 0; --i) {
      const std::u16string section =
          random() % 4 == 0 ? std::u16string(kTrackSection) : RandomText(random, 4);
      const std::size_t longest = random() % 50 == 0 ? 1200 : 8;
      map.Set(section, RandomText(random, longest), RandomText(random, longest));
    }
    ASSERT_EQ(WrittenAndRead(map), map) << "round " << round;
    std::string file = EncodeText(map.AsText(), "\r\n");
    for (int damage = 0; damage < 3; ++damage)
      file[random() % file.size()] = "[]=\n\r x"[random() % 7];
    const SettingsMap read = MapOf(file);
    ASSERT_EQ(WrittenAndRead(read), read) << "round " << round;
  }
}

TEST(SettingTableTest, EveryRowIsSound) {
  std::set<std::pair<std::u16string_view, std::u16string_view>> seen;
  for (const SettingRow& row : SettingTable()) {
    SCOPED_TRACE(std::string(row.key.begin(), row.key.end()));
    EXPECT_TRUE(seen.emplace(row.section, row.key).second) << "twice in the table";
    EXPECT_EQ(&RowOf(row.field), &row) << "its field is another row's too";
    EXPECT_EQ(std::holds_alternative<bool Settings::*>(row.field), row.kind == SettingKind::kFlag);
    EXPECT_EQ(std::holds_alternative<std::u16string Settings::*>(row.field), row.kind == SettingKind::kText);
    EXPECT_EQ(row.choices.size(), row.kind == SettingKind::kChoice ? std::size_t(row.most) + 1 : 0);
    EXPECT_EQ(row.panel == OptionPanel::kNone, row.control == OptionControl::kNone);
    EXPECT_EQ(row.panel == OptionPanel::kNone, row.label.empty());
    EXPECT_TRUE(row.kind == SettingKind::kText || (row.initial >= row.least && row.initial <= row.most));
  }
  EXPECT_EQ(DefaultSettings("").Find(u"Basic", u"Site"), nullptr);
}

TEST(SettingTableTest, EveryValueOfEveryRowReachesItsFieldAndComesBack) {
  const auto drawn = [](const Settings& fields) { return DisplayOf(fields); };
  EXPECT_EQ(drawn(Settings()), DisplaySettings());
  for (const SettingRow& row : SettingTable()) {
    SCOPED_TRACE(std::string(row.key.begin(), row.key.end()));
    std::vector<std::u16string> values{ToText(row.least), ToText(row.most)};
    if (row.kind == SettingKind::kText) values = {u"text", u"another"};
    for (std::size_t number = 1; number + 1 < row.choices.size(); ++number)
      values.push_back(ToText(static_cast<int>(number)));
    for (const std::u16string& value : values) {
      SettingsMap map;
      map.Set(row.section, row.key, value);
      Settings fields;
      ApplySettings(map, fields);
      EXPECT_EQ(TextOf(row, fields), value);
      const bool isOther = value != InitialText(row);
      EXPECT_EQ(fields != Settings(), isOther);
      EXPECT_EQ(drawn(fields) != drawn({}), isOther && row.actedOnBy == ActedOnBy::kDrawing);
    }
  }
}

TEST(SettingTableTest, ValueOutOfRangeStaysHarmless) {
  SettingsMap map;
  map.Set(u"Basic", u"Work", u"-3");
  map.Set(u"Basic", u"PlaySound", u"yes");
  map.Set(u"Basic", u"ContentPic", u"4");
  map.Set(u"Basic", u"DownloadEngine", u"-1");
  map.Set(u"Basic", u"PushPic", u"large");
  map.Set(u"Basic", u"BackPicOpacity", u"1000000000000");
  map.Set(u"Basic", u"LineSpacing", u"-1");
  map.Set(u"AutoGiveP", u"Number", u"none");
  Settings fields;
  fields.font = u"mine";
  ApplySettings(map, fields);
  EXPECT_EQ(fields.font, u"mine") << "its key is absent";
  EXPECT_TRUE(fields.work);
  EXPECT_FALSE(fields.playSound);
  EXPECT_EQ(fields.contentPic, PictureSize::kFullWidth);
  EXPECT_EQ(fields.downloadEngine, DownloadEngine::kWinHttp);
  EXPECT_EQ(fields.pushPic, PictureSize::kNone);
  EXPECT_EQ(fields.backPicOpacity, 100);
  EXPECT_EQ(fields.lineSpacing, 0);
  EXPECT_EQ(fields.autoGiveNumber, 1);
  EXPECT_EQ(map.Text(u"Basic", u"ContentPic"), u"4");
}

}  // namespace
}  // namespace quillet
