#include "bbs/automation/dialogue.h"

#include "bbs/automation/board_entry.h"
#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

using Answer = Dialogue::Answer;
class DialogueTest : public AutomationTest {
 protected:
  const Turn ask_{"", kClearScreen + BoardPrompt()};
};

TEST_F(DialogueTest, AKeyThatAMessageSwallowsIsRepeatedWhereTheBbsStillAsksForIt) {
  const Turn swallowed{"\r", StarLine(23)}, dismissed{"\n", ask_.page};
  const struct {
    Turns turns;
    Answer answer;
  } cases[] = {
      {{ask_, {"\r", MainMenu()}}, Answer::kAtOnce},
      {{ask_, swallowed, dismissed, {"\r", MainMenu()}}, Answer::kAfterMessage},
      // Another message behind the first.
      {{ask_, swallowed, {"\n", kClearScreen}, {"", StarLine(22)}, dismissed, {"\r", MainMenu()}},
       Answer::kAfterMessage},
      {{ask_, {"\r", MainMenu() + StarLine(22)}, {"\n", MainMenu()}}, Answer::kAfterMessage},
      // Another page than either: nothing more is pressed there.
      {{ask_, swallowed, {"\n", Message(u"別的事")}}, Answer::kNone},
      {{ask_, swallowed, dismissed, swallowed, dismissed, swallowed, dismissed}, Answer::kNone},
      {{ask_, {"\r", ""}}, Answer::kNone},
  };
  const auto isAsking = [&](const ScreenSnapshot& screen) { return pages_.IsInputField(screen); };
  const auto isMenu = [&](const ScreenSnapshot& screen) { return pages_.IsListCursor(screen); };
  const auto press = [&](ScreenWaits& waits) {
    waits.WaitUntil(isAsking);
    return Dialogue(waits, Dialogue::Limits{std::chrono::milliseconds(250), 3}).Press("\r", isMenu, isAsking);
  };
  for (const auto& each : cases)
    EXPECT_EQ(Follow(each.turns, press, 20), each.answer) << &each - cases;
}

TEST_F(DialogueTest, ABoardIsEnteredWhateverComesBefore) {
  const Turns ways[] = {
      {ask_, {"\r", ArticleList()}},
      // The greeting of a board, and then the list.
      {ask_, {"\r", kClearScreen + Banner()}, {"\x03", ArticleList()}},
      // In the board list the name only selects.
      {{"", BoardList()}, ask_, {"\r", BoardList()}, {"\r\x03", ArticleList()}},
      {ask_, {"\r", StarLine(22)}, {"\n", ask_.page}, {"\r", ArticleList()}},
      {{"", BoardList()}, {"\r\x03", ArticleList()}},
  };
  for (const auto& turns : ways) {
    const auto name = &turns == std::end(ways) - 1 ? BoardName::kAlreadyEntered : BoardName::kAtPrompt;
    EXPECT_TRUE(Follow(turns, [&](ScreenWaits& waits) { return EnterBoardFromPrompt(waits, name); }));
  }
}

}  // namespace
}  // namespace quillet
