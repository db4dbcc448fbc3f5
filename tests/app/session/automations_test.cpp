#include "app/session/automations.h"

#include "tests/app/document_fixture.h"

namespace quillet {
namespace {

using AutomationsTest = DocumentTest;

TEST_F(AutomationsTest, OneIsAtWorkAtATimeAndTellsWhenTheUserTakesOver) {
  Automations& runs = doc->GetAutomations();
  const ArticleReference article{.board = u"Cats", .code = u"1a2B3c4_"};
  std::vector<std::string> told;
  QObject::connect(&runs, &Automations::MoneyEnded, [&](const MoneyRunResult& result) {
    told.push_back("money " + std::to_string(result.gifts.size()));
    EXPECT_EQ(result.end, MoneyRunEnd::kTakenOver);
  });
  QObject::connect(&runs, &Automations::PushesEnded, [&](const PushRunResult& result) {
    told.push_back("pushes " + std::to_string(result.total));
    EXPECT_EQ(result.outcome, PushOutcome::kTakenOver);
  });
  QObject::connect(&runs, &Automations::LogOutEnded, [&](LogOutEnd end) {
    told.push_back("log-out");
    EXPECT_EQ(end, LogOutEnd::kTakenOver);
  });
  struct Case {
    Activity activity;
    std::function<bool()> start;
    int total;
  };
  const Case cases[] = {{Activity::kJump, [&] { return runs.JumpTo(article); }, 0},
                        {Activity::kAskCode, [&] { return runs.AskCode({}); }, 0},
                        {Activity::kGiveMoney,
                         [&] {
                           return runs.GiveMoney({article, {{u"amy", 1}, {u"bob", 1}}});
                         },
                         2},
                        {Activity::kPush, [&] { return runs.PushOn({.text = u"1\n2\n3"}); }, 3},
                        {Activity::kLogOut, [&] { return runs.LogOut(); }, 0}};
  EXPECT_FALSE(std::any_of(std::begin(cases), std::end(cases), [](const Case& one) { return one.start(); }))
      << "without a connection";
  OpenScript();
  EXPECT_FALSE(runs.PushOn({.text = u"1"})) << "without an article";
  doc->OnScreen(ScreenReason::kUpdated, {.article = {.board = u"Cats", .author = u"kagami"}});
  for (const Case& one : cases) {
    ASSERT_TRUE(one.start());
    EXPECT_EQ(runs.Current(), one.activity);
    EXPECT_TRUE(Until([&] { return runs.Progress().total == one.total; }));
    EXPECT_FALSE(runs.JumpTo(article));
    EXPECT_TRUE(runs.Stop() && !runs.Stop() && runs.Current() == Activity::kNone);
    ASSERT_TRUE(Until([&] { return !runs.IsBusy(); }));
  }
  EXPECT_EQ(told, (std::vector<std::string>{"money 2", "pushes 3", "log-out"}));
}

}  // namespace
}  // namespace quillet
