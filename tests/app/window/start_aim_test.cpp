#include "app/window/start_aim.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

TEST(StartAimTest, OnlyAMarkerAtTheBeginningIsAStartForALinkAndOnlyAnArticleOfTheBbsIsOurs) {
  using Kind = StartAim::Kind;
  const WebHosts hosts{.host = u"www.bbs.example", .mirror1 = u"", .mirror2 = u"mirror2.example"};
  const struct {
    std::u16string line;
    Kind kind;
    std::u16string_view board = u"";
  } cases[] = {
      {u"", Kind::kWindow},
      {u"--single-argument", Kind::kWindow},
      {u" --single-argument https://www.bbs.example/bbs/Cats/M.1700000000.A.1F3.html", Kind::kWindow},
      {u"--demo --single-argument https://www.bbs.example/bbs/Cats/M.1700000000.A.1F3.html", Kind::kWindow},
      {u"--Single-argument https://a.example", Kind::kWindow},
      {u"--single-argument ", Kind::kOtherBrowser},
      {u"--single-argument https://www.bbs.example/bbs/Cats/M.1700000000.A.1F3.html", Kind::kArticle,
       u"Cats"},
      {u"--single-argument https://mirror2.example/p/Cats.M.1700000000.A.1F3", Kind::kArticle, u"Cats"},
      {u"--single-argument https://www.bbs.example/bbs/Cats/index.html", Kind::kOtherBrowser},
      {u"--single-argument https://www.bbs.example/bbs/Cats/", Kind::kOtherBrowser},
      {u"--single-argument https://www.bbs.example/bbs//M.1700000000.A.1F3.html", Kind::kOtherBrowser},
      {u"--single-argument https://www.bbs.example/", Kind::kOtherBrowser},
      {u"--single-argument https://www.other.example/bbs/Cats/M.1700000000.A.1F3.html", Kind::kOtherBrowser},
      {u"--single-argument --demo", Kind::kOtherBrowser},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.line.begin(), c.line.end()));
    const StartAim aim = AimOfStart(c.line, [&] { return hosts; });
    EXPECT_EQ(aim.kind, c.kind);
    EXPECT_EQ(aim.article.board, c.board);
    EXPECT_EQ(aim.article.code.empty(), c.board.empty());
    EXPECT_EQ(aim.link, c.kind == Kind::kWindow ? u"" : c.line.substr(18));
  }
}

}  // namespace
}  // namespace quillet
