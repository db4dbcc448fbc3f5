#include "bbs/push_run.h"

#include "bbs/auto_login.h"
#include "core/charset.h"
#include "tests/demo/demo_fixture.h"
#include "tests/demo/live_session.h"
#include "tests/support/wait_until.h"

namespace quillet {
namespace {

class DemoPushRunTest : public DemoTest {
 protected:
  // Logged in, with the second article of the sandbox open, which is bob's.
  void OpenArticle(const std::u16string& id, const std::u16string& password) {
    ASSERT_TRUE(live_.Connect(server->Address()));
    ASSERT_EQ(live_.Run([&](ScreenWaits& waits) {
      return AutoLogin(waits, {id, password});
    }),
              LoginResult::kFinished);
    ASSERT_TRUE(live_.Run([](ScreenWaits& waits) {
      waits.Send("s");
      if (!waits.WaitUntil([&](const ScreenSnapshot& screen) { return waits.Pages().IsInputField(screen); }))
        return false;
      waits.SendText(u"SandBox");
      if (!waits.EnterBoardFromPrompt(ScreenWaits::BoardName::kAtPrompt)) return false;
      waits.Send("2\r");
      return waits.WaitForListCursor() && waits.OpenArticleUnderCursor(ArticlePart::kTop);
    })) << live_.Dump();
  }
  // What has been pushed to the article by this user, mark and words.
  std::vector<std::u16string> PushesBy(const std::string& id) {
    const auto reader = Client("bob", "builder", "SandBox");
    reader->Send("2\rl$");
    EXPECT_TRUE(reader->WaitForFlags(PF_READING | PF_READ_END)) << reader->Dump();
    std::vector<std::u16string> pushes;
    for (int row = 0; row < kRows - 1; ++row) {
      const std::string text(reader->Screen().RowText(row));
      const std::string prefix = id + ": ";
      if (text.compare(3, prefix.size(), prefix) != 0) continue;
      const std::string words = text.substr(3 + prefix.size(), 45 - id.size());
      pushes.push_back(FromBig5(text.substr(0, 3) + words.substr(0, words.find_last_not_of(' ') + 1)));
    }
    return pushes;
  }

  LiveSession live_;
};

// Whatever moment the user takes over at: each piece stands there once at most, and only the one on its way
// is in doubt.
TEST_F(DemoPushRunTest, ARunThatIsTakenOverHasCountedWhatItPushed) {
  OpenArticle(u"alice", u"wonder");
  for (int round = 0; round < 8; ++round) {
    const std::size_t before = PushesBy("alice").size();
    PushRunResult last;
    const PushOrder order{.text = u"一\n二\n三\n四\n五\n六\n七\n八", .kind = PushKind::kNote};
    live_.Start([&](ScreenWaits& waits) { last = PushInPieces(waits, order, {}); });
    std::this_thread::sleep_for(std::chrono::milliseconds(3 + round * 4));  // a random moment of the run
    live_.Cancel();
    if (last.outcome == PushOutcome::kDone) break;
    EXPECT_EQ(last.outcome, PushOutcome::kClosed);
    EXPECT_EQ(last.total, 8);
    EXPECT_EQ(last.rest.size(), static_cast<std::size_t>(2 * (8 - last.pushed) - 1));
    live_.session.SendBytes("\x03");
    ASSERT_TRUE(WaitUntil([&] {
      return live_.classifier.Pages().IsReader(live_.Screen(), PageTests::ReaderForm::kStrict);
    })) << live_.Dump();
    const int more = static_cast<int>(PushesBy("alice").size() - before);
    EXPECT_GE(more, last.pushed);
    EXPECT_LE(more, last.pushed + (last.unsure ? 1 : 0));
    if (more + before > 12) break;  // they must stay on one page to be counted
  }
}

}  // namespace
}  // namespace quillet
