#include "render/style/article_parts.h"

#include "tests/render/style/styling.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using ArticlePartsTest = WithTables;

// A page of an article whose lines from the fifth row on are these.
std::string PartsOfPage(const std::vector<std::u16string_view>& body) {
  ScreenBuilder page;
  page.screen = ArticleHeader();
  int row = 4;
  for (const std::u16string_view line : body) {
    if (line == u"push")
      PutPush(page, row++, u"推", u"alice", u"http://a");
    else
      page.Put(row++, 0, line);
  }
  const ScreenSnapshot screen =
      Classified(WithReaderFooter(page.screen, u"  瀏覽 第 1/1 頁 (100%)  目前顯示: 第 01~22 行", 0x8F));
  ArticleLines lines;
  lines.Add(screen, Understand(screen));
  std::string parts;
  for (const LinePart part : PartsOf(lines))
    parts += "tqsp"[static_cast<int>(part)];
  return parts.substr(4, body.size());
}

TEST_F(ArticlePartsTest, EachLineIsSomebodys) {
  const std::u16string_view origin = u"※ 發信站: 奧拉拉文藝坊(ourbbs.example), 來自: 140.112.8.8";
  struct Case {
    std::vector<std::u16string_view> body;
    std::string parts;
  };
  for (const Case& of :
       {Case{{u"※ 引述《a (b)》之銘言：", u": http://a", u"> http://a", u"http://a"}, "qqqt"},
        Case{{u"http://a", u"--", u"x", u"--", u"http://b", origin, u"push", u"http://c"}, "ttttstpt"},
        Case{{u"--", u"http://b", u"push"}, "ttp"}})
    EXPECT_EQ(PartsOfPage(of.body), of.parts);
}

TEST_F(ArticlePartsTest, EachPartHasItsSetting) {
  Settings settings;
  settings.quotePic = PictureSize::kNone;
  settings.contentPic = PictureSize::kFullWidth;
  settings.signPic = PictureSize::kThumbnail;
  settings.pushPic = PictureSize::kNormal;
  EXPECT_EQ(PictureSizeOf(LinePart::kQuote, settings), PictureSize::kNone);
  EXPECT_EQ(PictureSizeOf(LinePart::kText, settings), PictureSize::kFullWidth);
  EXPECT_EQ(PictureSizeOf(LinePart::kSignature, settings), PictureSize::kThumbnail);
  EXPECT_EQ(PictureSizeOf(LinePart::kPush, settings), PictureSize::kNormal);
}

}  // namespace
}  // namespace quillet
