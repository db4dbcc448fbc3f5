#include "app/interaction/pointer/link_hover.h"

#include <gtest/gtest.h>
#include <utility>

#include <QImage>

#include "tests/app/interaction/fake_picture.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

constexpr qreal kUnit = 30;
const QRect kArea(0, 0, 900, 720);

class LinkHoverTest : public WithTables {
 protected:
  LinkHoverTest() {
    lines_.isArticle = true;
    lines_.text.lines.resize(40, LineOf(u""));
    Put(2, 4, u"看 http://a.example/b 與 http://c.example");
    Put(3, 0, u"http://a.example/b 與 #1a2B3c4_ (Test)");
    Put(30, 0, u"http://d.example");
  }
  void Put(std::size_t line, int col, std::u16string_view text) {
    lines_.text.lines[line] = LineOf(u"");
    PutInLine(lines_.text.lines[line], col, text);
  }
  static WebHosts Hosts() { return {.host = u"www.bbs.example", .mirror1 = {}, .mirror2 = {}}; }

  // The underlined cells, as "row:first-last".
  std::string Underlined() const {
    Page page{};
    hover_.Decorate(page);
    std::string all;
    for (std::size_t row = 0; row < page.size(); ++row) {
      int first = -1;
      for (int col = 0; col <= kCols; ++col) {
        const bool marked =
            col < kCols && (page[row].cells[static_cast<std::size_t>(col)].style & CS_UNDERLINE) != 0;
        if (marked && first < 0) first = col;
        if (!marked && first >= 0) {
          all += std::to_string(row) + ":" + std::to_string(first) + "-" + std::to_string(col) + " ";
          first = -1;
        }
      }
    }
    return all;
  }
  // The part of the area that is painted on.
  QRect Painted() {
    QImage paper(kArea.size(), QImage::Format_RGB32);
    paper.fill(Qt::magenta);
    QPainter painter(&paper);
    hover_.Paint(painter, {.area = kArea, .unit = kUnit});
    QRect painted;
    for (int y = 0; y < paper.height(); ++y)
      for (int x = 0; x < paper.width(); ++x)
        if (paper.pixelColor(x, y) != QColor(Qt::magenta)) painted |= QRect(x, y, 1, 1);
    return painted;
  }

  FakePicture lines_;
  LinkHover hover_{lines_, Hosts()};
};

TEST_F(LinkHoverTest, TheLinkUnderThePointerIsUnderlined) {
  EXPECT_EQ(Underlined(), "");
  EXPECT_TRUE(hover_.SetPointer(CellPosition{2, 7}));
  EXPECT_EQ(Underlined(), "2:7-25 ");
  EXPECT_FALSE(hover_.SetPointer(CellPosition{2, 24})) << "the same link";
  EXPECT_TRUE(hover_.SetPointer(CellPosition{2, 40}));
  EXPECT_EQ(hover_.Current()->address, u"http://c.example");
  EXPECT_TRUE(hover_.SetPointer(CellPosition{2, 25}));
  EXPECT_EQ(Underlined(), "");
  for (const std::optional<CellPosition> none :
       {std::optional<CellPosition>(), {{2, -1}}, {{2, 80}}, {{-1, 5}}, {{23, 5}}})
    EXPECT_FALSE(hover_.SetPointer(none));
}

TEST_F(LinkHoverTest, TheSameAddressInAnotherRowIsAnotherLink) {
  Put(4, 0, u"http://a.example/b");
  EXPECT_TRUE(hover_.SetPointer(CellPosition{3, 0}));
  EXPECT_TRUE(hover_.SetPointer(CellPosition{4, 0}));
  EXPECT_EQ(Underlined(), "4:0-18 ");
}

TEST_F(LinkHoverTest, WhenTheTextMovesWhatLiesUnderThePointerCounts) {
  hover_.SetPointer(CellPosition{2, 10});
  EXPECT_FALSE(hover_.Refresh());
  lines_.top = 1;
  EXPECT_TRUE(hover_.Refresh());
  EXPECT_EQ(hover_.Current()->first, 0);
  lines_.top = 28;
  EXPECT_TRUE(hover_.Refresh());
  EXPECT_EQ(hover_.Current()->address, u"http://d.example");
  lines_.top = 20;
  EXPECT_TRUE(hover_.Refresh());
  EXPECT_FALSE(hover_.Current());
  EXPECT_EQ(Underlined(), "");
}

TEST_F(LinkHoverTest, LinksInSightAreEachTargetOnce) {
  Put(5, 0, u"#1a2B3c4_ (Test) https://www.bbs.example/bbs/Test/" + AidToFileName(u"1a2B3c4_"));
  std::vector<QString> targets;
  for (const TextLink& link : hover_.LinksInSight())
    targets.push_back(LinkHover::TargetOf(link));
  EXPECT_EQ(targets, (std::vector<QString>{u"http://a.example/b"_qs, u"http://c.example"_qs,
                                           u"在站台上開啟文章 #1a2B3c4_ (Test)"_qs}));
}

TEST_F(LinkHoverTest, TheTargetStandsAtTheLowerEdgeAwayFromTheLink) {
  EXPECT_TRUE(Painted().isNull());
  hover_.SetPointer(CellPosition{2, 7});
  const QRect label = Painted();
  EXPECT_LT(label.left(), kUnit);
  EXPECT_LT(kArea.bottom() - label.bottom(), kUnit);
  EXPECT_GT(label.width(), 100);
  EXPECT_LT(label.height(), 2 * kUnit);

  Put(22, 0, u"http://a.example/b");
  hover_.SetPointer(CellPosition{22, 0});
  const QRect other = Painted();
  EXPECT_EQ(other.size(), label.size());
  EXPECT_LT(kArea.right() - other.right(), kUnit);
}

TEST_F(LinkHoverTest, ALongTargetLeavesRoom) {
  Put(2, 0, u"http://a.example/" + std::u16string(60, u'W'));
  hover_.SetPointer(CellPosition{2, 7});
  const int width = Painted().width();
  EXPECT_LE(width, kArea.width() * 0.6);
  EXPECT_GT(width, kArea.width() * 0.5);
}

TEST(LinkTargetTest, WhatIsShownIsWhatIsOpened) {
  const auto targetOf = [](std::u16string address) {
    return LinkHover::TargetOf({.first = 0, .last = 1, .address = std::move(address), .article = {}});
  };
  EXPECT_EQ(targetOf(u"HTTP://a.example/b|c"), u"http://a.example/b%7Cc"_qs);
  EXPECT_EQ(targetOf(u"http://a.example/\u202Eb c"), u"http://a.example/%E2%80%AEb%20c"_qs);
  EXPECT_EQ(targetOf(u"javascript:x"), QString());
}

}  // namespace
}  // namespace quillet
