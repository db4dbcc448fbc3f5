#include "bbs/automation/dialogue.h"

#include "bbs/automation/board_entry.h"
#include "tests/bbs/automation/automation_fixture.h"

namespace quillet {
namespace {

using Answer = Dialogue::Answer;
using DialogueTest = AutomationTest;

TEST_F(DialogueTest, AKeyThatAMessageSwallowsIsRepeatedWhereTheBbsStillAsksForIt) {
  const std::string asking = kClearScreen + BoardPrompt();
  const Turn ask{"", asking}, swallowed{"\r", StarLine(23)}, dismissed{"\n", asking};
  const struct {
    std::vector<Turn> turns;
    Answer answer;
  } cases[] = {
      {{ask, {"\r", MainMenu()}}, Answer::kAtOnce},
      {{ask, swallowed, dismissed, {"\r", MainMenu()}}, Answer::kAfterMessage},
      {{ask, swallowed, {"\n", StarLine(22)}, dismissed, {"\r", MainMenu()}}, Answer::kAfterMessage},
      {{ask, {"\r", MainMenu() + StarLine(22)}, {"\n", MainMenu()}}, Answer::kAfterMessage},
      // Another page than either: nothing more is pressed there.
      {{ask, swallowed, {"\n", Message(u"別的事")}}, Answer::kNone},
      {{ask, swallowed, dismissed, swallowed, dismissed, swallowed, dismissed}, Answer::kNone},
      {{ask, {"\r", ""}}, Answer::kNone},
  };
  const PageTests& pages = classifier_.Pages();
  for (const auto& each : cases) {
    const auto isAsking = [&](const ScreenSnapshot& screen) { return pages.IsInputField(screen); };
    const auto isMenu = [&](const ScreenSnapshot& screen) { return pages.IsListCursor(screen); };
    EXPECT_EQ(Follow(
                  each.turns,
                  [&](ScreenWaits& waits) {
                    waits.WaitUntil(isAsking);
                    return Dialogue(waits, Dialogue::Limits{std::chrono::milliseconds(250), 3})
                        .Press("\r", isMenu, isAsking);
                  },
                  20),
              each.answer)
        << &each - cases;
  }
}

TEST_F(DialogueTest, ABoardIsEnteredFromThePromptWhateverComesBefore) {
  const Turn prompt{"", BoardPrompt()};
  const std::vector<Turn> ways[] = {
      {prompt, {"\r", ArticleList()}},
      // The greeting of a board, and then the list.
      {prompt, {"\r", kClearScreen + Banner()}, {"\x03", ArticleList()}},
      // In the board list the name only selects.
      {{"", BoardList()}, prompt, {"\r", BoardList()}, {"\r\x03", ArticleList()}},
      {prompt, {"\r", StarLine(22)}, {"\n", kClearScreen + BoardPrompt()}, {"\r", ArticleList()}},
  };
  for (const auto& turns : ways)
    EXPECT_TRUE(
        Follow(turns, [](ScreenWaits& waits) { return EnterBoardFromPrompt(waits, BoardName::kAtPrompt); }));
  EXPECT_TRUE(Follow({{"", MainMenu()}, {"\r\x03", ArticleList()}}, [](ScreenWaits& waits) {
    return EnterBoardFromPrompt(waits, BoardName::kAlreadyEntered);
  }));
}

}  // namespace
}  // namespace quillet
