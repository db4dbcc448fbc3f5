// Links that other runs of the program hand to the window, and the button that makes it the program for them.
#include "app/messages/link_messages.h"
#include "app/window/link_intake.h"
#include "tests/app/demo_article_fixture.h"
#include "tests/support/variable.h"

namespace quillet {
namespace {

class HandedLinksTest : public DemoArticleTest {
 protected:
  void SetUp() override {
    endpoints.values["web/host"] = "www.bbs.example";
    DemoArticleTest::SetUp();
  }
  std::u16string LineFor(const ArticleReference& article) const {
    return u"--single-argument " + ArticleUrl(article.board, article.code, WebHostsOf(endpoints));
  }
  bool Shows(const ArticleReference& article) {
    return Until([&] { return IsIdle() && Seen().articleOpen && Seen().article.board == article.board; });
  }

  const Variable runtime_{"XDG_RUNTIME_DIR", home.Path().c_str()};
};

TEST_F(HandedLinksTest, TheNewestLinkOpensItsArticleInAWindowThatComesForward) {
  LinkIntake intake(WebHostsOf(endpoints));
  QObject::connect(&intake, &LinkIntake::Arrived, frame.get(), &CMainFrame::ShowArticle);
  frame->showMinimized();
  EXPECT_TRUE(SendToInstance(LineFor(talkative)));
  EXPECT_TRUE(SendToInstance(LineFor(shortest)));
  EXPECT_FALSE(SendToInstance(u"--single-argument https://www.bbs.example/bbs/Cats/index.html"));
  EXPECT_FALSE(SendToInstance(LineFor(talkative).substr(1)));
  EXPECT_TRUE(Shows(shortest));
  EXPECT_FALSE(frame->isMinimized());
  EXPECT_FALSE(View().Panel().IsActive());
}

TEST_F(HandedLinksTest, WhoIsNotLoggedInGetsTheNewestOneAfterHisLogin) {
  doc->GetConnection().Disconnect();
  ASSERT_TRUE(Until([&] { return doc->GetConnection().IsClosed(); }));
  frame->ShowArticle(talkative);
  frame->ShowArticle(shortest);
  EXPECT_EQ(View().LastToast().Text(), DescribeWaitingArticle(shortest, ArticleWaitsFor::kLogin));
  doc->GetConnection().Reconnect(MakeLoginOrder({.account = u"reader", .password = u"quillet"}));
  EXPECT_TRUE(Shows(shortest));
}

TEST_F(HandedLinksTest, WhatIsDoneForTheUserIsDoneFirst) {
  ASSERT_TRUE(doc->GetAutomations().JumpTo(talkative));
  frame->ShowArticle(shortest);
  EXPECT_EQ(View().LastToast().Text(), DescribeWaitingArticle(shortest, ArticleWaitsFor::kAutomation));
  EXPECT_TRUE(Shows(shortest));
}

}  // namespace
}  // namespace quillet
