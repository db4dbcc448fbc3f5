#include "input/mouse_scheme.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "bbs/page_flags.h"
#include "input/answer_gate.h"
#include "settings/files/text_lines.h"
#include "settings/setting_table.h"
#include "tests/support/pages.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

const std::string kUp = "\x1B[A", kDown = "\x1B[B", kRight = "\x1B[C", kLeft = "\x1B[D";
const std::string kPageUp = "\x1B[5~", kPageDown = "\x1B[6~", kHome = "\x1B[1~", kEnd = "\x1B[4~";

std::string Times(int count, const std::string& keys) {
  std::string result;
  for (int i = 0; i < count; ++i)
    result += keys;
  return result;
}

class MouseSchemeTest : public WithTables {
 protected:
  // What the gesture can be set to.
  static std::vector<MouseScheme> Offered(MouseScheme Settings::*gesture) {
    std::vector<MouseScheme> schemes;
    for (const SettingChoice& choice : RowOf(gesture).choices)
      schemes.push_back(static_cast<MouseScheme>(choice.value));
    return schemes;
  }

  MouseAction Click(int row, int col, const ScreenSnapshot& screen) const {
    return DecideClick({.row = row, .col = col, .upperHalf = row < 12}, screen, Understand(screen), settings);
  }
  MouseAction Turn(int notches, const ScreenSnapshot& screen, HeldButton held = HeldButton::kNone,
                   Picture picture = Picture::kScreen) const {
    return DecideWheel({.notches = notches, .lines = 3 * notches}, held, picture, screen, Understand(screen),
                       settings);
  }
  MouseAction Side(SideButtonPressed button, const ScreenSnapshot& screen,
                   Picture picture = Picture::kScreen) const {
    return DecideSideButton(button, picture, screen, Understand(screen), settings);
  }
  static constexpr HeldButton kWithRight = HeldButton::kRight;
  static constexpr SideButtonPressed kBack = SideButtonPressed::kBack, kForward = SideButtonPressed::kForward;

  Settings settings;
};

// ---- Clicks

TEST_F(MouseSchemeTest, AClickOpensTheLineOfAList) {
  for (const ScreenSnapshot& list : {ArticleList(10, 22), BoardList(10, 22)}) {
    EXPECT_EQ(Click(13, 40, list).bytes, Times(3, kDown) + kRight);
    EXPECT_EQ(Click(3, 0, list).bytes, Times(7, kUp) + kRight);
    EXPECT_EQ(Click(10, 79, list).bytes, kRight);
  }
}

TEST_F(MouseSchemeTest, AClickBesideTheEntriesOfAListDoesNothing) {
  ScreenSnapshot list = ArticleList(5, 9);
  for (const int row : {0, 1, 2, 10, 22, 23, -1})
    EXPECT_EQ(Click(row, 20, list), MouseAction()) << row;
  const ScreenSnapshot empty = Classified(ListPage(3, 2, u" 選擇看板 ").Put(5, 10, u"信箱是空的。"));
  EXPECT_EQ(Click(5, 12, empty), MouseAction()) << "a remark is no entry";
}

TEST_F(MouseSchemeTest, AClickOpensAMenusItemByItsLetter) {
  const ScreenSnapshot menu = MenuPage(12);
  EXPECT_EQ(Click(14, 60, menu).bytes, "C\r");
  EXPECT_EQ(Click(12, 30, menu).bytes, "\r") << "some menus open an item when its letter comes again";
  for (const int row : {3, 11, 15, 23})
    EXPECT_EQ(Click(row, 29, menu), MouseAction()) << row;
}

TEST_F(MouseSchemeTest, AClickMovesTheEditorsCursor) {
  ScreenBuilder page;
  page.screen = EditorPage();
  const ScreenSnapshot editor = Classified(page.Put(7, 0, u"到底是誰 asked?"));
  const auto column = [&](int row, int col) {
    const MouseAction action = Click(row, col, editor);
    EXPECT_EQ(action, (MouseAction{.kind = MouseActionKind::kMoveCursor, .row = row, .col = action.col}));
    return action.col;
  };
  EXPECT_EQ(column(7, 4), 4);
  EXPECT_EQ(column(7, 5), 4) << "in front of the character";
  EXPECT_EQ(column(7, 10), 10);
  EXPECT_EQ(column(7, 79), 15) << "behind the text, and not on into the next line";
  EXPECT_EQ(column(9, 33), 0);
  EXPECT_EQ(Click(23, 33, editor), MouseAction());
}

TEST_F(MouseSchemeTest, AClickGoesOnWhereAnyKeyDoes) {
  EXPECT_EQ(Click(12, 12, MessagePage()).bytes, " ");
  EXPECT_EQ(Click(12, 12, StarLine(ArticleList(5, 22))).bytes, "\n");
  EXPECT_EQ(Click(12, 12, StarLine(EditorPage())), MouseAction());
}

TEST_F(MouseSchemeTest, TheLeftMarginGoesBackButNotOutOfWhatIsWritten) {
  const auto margin = [&](const ScreenSnapshot& screen, Picture picture = Picture::kScreen) {
    const PointerPlace place{.picture = picture, .row = 5, .col = 0, .leftMargin = true};
    if (ShapeAt(place, screen, Understand(screen), settings) == PointerShape::kBack)
      return DecideClick(place, screen, Understand(screen), settings).bytes;
    return std::string();
  };
  for (const ScreenSnapshot& screen : {ArticleList(5, 22), BoardList(5, 22), MenuPage(13), ReaderMiddle()})
    EXPECT_EQ(margin(screen), kLeft);
  EXPECT_EQ(margin(MessagePage(), Picture::kArticle), kLeft) << "the client's own errands do not count";
  EXPECT_EQ(margin(EditorPage()), "");
  EXPECT_EQ(margin(TypingPage()), "");
}

TEST_F(MouseSchemeTest, TheHalvesOfTheWindowMoveUpAndDown) {
  settings.leftButton = MouseScheme::kUpDown;
  for (const ScreenSnapshot& screen : {ArticleList(5, 22), BoardList(5, 22), MenuPage(13), ReaderMiddle()}) {
    EXPECT_EQ(Click(2, 40, screen).bytes, kUp);
    EXPECT_EQ(Click(20, 40, screen).bytes, kDown);
    EXPECT_EQ(ShapeAt({.row = 2, .col = 40, .upperHalf = true}, screen, Understand(screen), settings),
              PointerShape::kUp);
    EXPECT_EQ(ShapeAt({.row = 20, .col = 40}, screen, Understand(screen), settings), PointerShape::kDown);
  }
  EXPECT_EQ(ShapeAt({.row = 20, .col = 40}, ReaderEnd(), Understand(ReaderEnd()), settings),
            PointerShape::kText);
  EXPECT_EQ(ShapeAt({.row = 20, .col = 40}, TypingPage(), Understand(TypingPage()), settings),
            PointerShape::kOrdinary);
  EXPECT_EQ(Click(2, 40, ReaderTop()), MouseAction());
  EXPECT_EQ(Click(20, 40, ReaderEnd()), MouseAction());
  EXPECT_EQ(
      DecideClick({.picture = Picture::kArticle, .row = 20}, ReaderEnd(), Understand(ReaderEnd()), settings),
      (MouseAction{.kind = MouseActionKind::kScrollLines, .lines = 1}));
}

TEST_F(MouseSchemeTest, NoChoiceClicksIntoWhatIsTyped) {
  for (const MouseScheme scheme : Offered(&Settings::leftButton)) {
    settings.leftButton = scheme;
    EXPECT_EQ(Click(2, 40, TypingPage()), MouseAction());
    EXPECT_EQ(Click(20, 6, TypingPage()), MouseAction());
  }
  settings.leftButton = MouseScheme::kNothing;
  for (const ScreenSnapshot& screen :
       {ArticleList(5, 22), MenuPage(13), ReaderMiddle(), EditorPage(), MessagePage()})
    EXPECT_EQ(Click(6, 3, screen), MouseAction());
}

// ---- The wheel

TEST_F(MouseSchemeTest, EveryChoiceOfTheWheelMovesByStepsOfItsOwn) {
  const auto inArticle = [&](int notches, HeldButton held = HeldButton::kNone) {
    return Turn(notches, ReaderMiddle(), held, Picture::kArticle);
  };
  EXPECT_EQ(inArticle(-2), (MouseAction{.kind = MouseActionKind::kScrollLines, .lines = 6}));
  EXPECT_EQ(Turn(1, ArticleList(5, 22)).bytes, kPageUp);
  EXPECT_EQ(Turn(-2, BoardList(5, 22)).bytes, kPageDown + kPageDown);
  EXPECT_EQ(Turn(-1, MenuPage(12)).bytes, kDown);
  EXPECT_EQ(Turn(1, ReaderMiddle()).bytes, Times(3, kUp));
  EXPECT_EQ(Turn(-1, EditorPage()).bytes, Times(3, kDown));
  const WheelTurn fine{.notches = 0, .lines = -1};
  for (const auto& [screen, keys] : {std::pair{ReaderMiddle(), kDown}, {ArticleList(5, 22), std::string()}})
    EXPECT_EQ(
        DecideWheel(fine, HeldButton::kNone, Picture::kScreen, screen, Understand(screen), settings).bytes,
        keys);
  settings.wheel = MouseScheme::kUpDown;
  EXPECT_EQ(Turn(2, ArticleList(5, 22)).bytes, kUp + kUp);
  EXPECT_EQ(inArticle(-1).lines, 1);
  settings.wheel = MouseScheme::kPages;
  EXPECT_EQ(Turn(-1, ReaderMiddle()).bytes, kPageDown);
  EXPECT_EQ(inArticle(2), (MouseAction{.kind = MouseActionKind::kScrollPages, .lines = -2}));
  settings.leftButtonWheel = settings.sideButton = MouseScheme::kEnds;
  EXPECT_EQ(Turn(2, ArticleList(5, 22), HeldButton::kLeft).bytes, kHome);
  EXPECT_EQ(Side(kForward, ReaderEnd()).bytes, kEnd);
  EXPECT_EQ(inArticle(-2, HeldButton::kLeft),
            (MouseAction{.kind = MouseActionKind::kScrollToEnd, .lines = 1}));
}

TEST_F(MouseSchemeTest, TheWheelNeverLeavesTheArticle) {
  for (const MouseScheme scheme : Offered(&Settings::wheel)) {
    settings.wheel = scheme;
    EXPECT_EQ(Turn(5, ReaderTop()), MouseAction()) << static_cast<int>(scheme);
    EXPECT_EQ(Turn(-5, ReaderEnd()), MouseAction()) << static_cast<int>(scheme);
  }
  settings.wheel = MouseScheme::kWeb;
  const std::u16string_view nearTop = u"  瀏覽 第 1/9 頁 ( 12%)  目前顯示: 第 03~24 行";
  EXPECT_EQ(Turn(3, ReaderPage(nearTop, kFooterMiddle)).bytes, Times(2, kUp));
  EXPECT_EQ(Turn(-3, ReaderPage(u"  瀏覽 第 1 頁", kFooterMiddle)).bytes, kDown)
      << "what is not told is not risked";
  settings.wheel = MouseScheme::kPages;
  EXPECT_EQ(Turn(-3, ReaderPage(u"  瀏覽 第 8/9 頁 ( 96%)  目前顯示: 第 27~48 行", kFooterMiddle)).bytes,
            kPageDown);
  EXPECT_EQ(Turn(1, ReaderMiddle()).repeat, Repeat::kAfterAnswer);
}

TEST_F(MouseSchemeTest, TheLastLinesOfAnyArticleAreReachedAndNotPassed) {
  for (int count = 24; count < 400; ++count) {
    int last = 23;
    for (int turns = 0; last < count; ++turns) {
      ASSERT_LT(turns, 400) << "stuck in " << count << " lines";
      const std::u16string footer = u"  瀏覽 第 2/9 頁 (" + ToText(last * 100 / count) +
                                    u"%)  目前顯示: 第 " + ToText(last - 22) + u"~" + ToText(last) + u" 行";
      const std::string keys = Turn(-1, ReaderPage(footer, kFooterMiddle)).bytes;
      last += static_cast<int>(keys.size() / kDown.size());
      ASSERT_LE(last, count);
    }
  }
}

TEST_F(MouseSchemeTest, NoWheelAndNoSideButtonActsOnWhatIsTypedOrAsked) {
  for (int choice = 0; choice <= static_cast<int>(MouseScheme::kRead); ++choice) {
    settings.wheel = settings.leftButtonWheel = settings.rightButtonWheel = settings.sideButton =
        static_cast<MouseScheme>(choice);
    for (const ScreenSnapshot& screen : {TypingPage(), MessagePage(), StarLine(ArticleList(5, 22)),
                                         Classified(ScreenBuilder().Put(3, 3, u"歡迎"))}) {
      for (const HeldButton held : {HeldButton::kNone, HeldButton::kLeft, HeldButton::kRight})
        for (const int notches : {-1, 0, 1})
          EXPECT_EQ(Turn(notches, screen, held), MouseAction()) << choice;
      EXPECT_EQ(Side(kBack, screen), MouseAction()) << choice;
      EXPECT_EQ(Side(kForward, screen), MouseAction()) << choice;
    }
  }
}

TEST_F(MouseSchemeTest, AnUnheardOfTurnSendsABoundedNumberOfKeys) {
  const WheelTurn huge{.notches = -9000, .lines = -27000};
  for (const ScreenSnapshot& screen : {ArticleList(5, 22), MenuPage(12), EditorPage(), ReaderMiddle()})
    EXPECT_LT(DecideWheel(huge, HeldButton::kNone, Picture::kScreen, screen, Understand(screen), settings)
                  .bytes.size(),
              500u);
}

// ---- The wheel with a button, and the side buttons

TEST_F(MouseSchemeTest, LettersGoToTheArticlesPagesOnly) {
  const std::pair<MouseScheme, std::string> pairs[] = {
      {MouseScheme::kThread, "[]"}, {MouseScheme::kAuthor, "Aa"}, {MouseScheme::kRead, "{}"}};
  for (const auto& [choice, letters] : pairs) {
    settings.rightButtonWheel = settings.sideButton = choice;
    for (const ScreenSnapshot& screen : {ArticleList(5, 22), ReaderMiddle()}) {
      EXPECT_EQ(Turn(1, screen, kWithRight).bytes, letters.substr(0, 1));
      EXPECT_EQ(Turn(-1, screen, kWithRight).bytes, letters.substr(1));
      EXPECT_EQ(Side(kBack, screen).bytes, letters.substr(0, 1));
      EXPECT_EQ(Side(kForward, screen).bytes, letters.substr(1));
    }
    for (const ScreenSnapshot& screen : {BoardList(5, 22), MenuPage(12), EditorPage()})
      EXPECT_EQ(Turn(1, screen, kWithRight), MouseAction());
  }
  EXPECT_EQ(Turn(-3, ArticleList(5, 22), kWithRight).bytes, "}}}");
  EXPECT_EQ(Turn(-3, ReaderMiddle(), kWithRight).bytes, "}") << "one article at a time";
}

TEST_F(MouseSchemeTest, TheArticlesBeforeAndAfterAreReachedFromListAndReader) {
  settings.rightButtonWheel = MouseScheme::kBF;
  EXPECT_EQ(Turn(1, ReaderMiddle(), kWithRight).bytes, "b");
  EXPECT_EQ(Turn(-1, ReaderEnd(), kWithRight).bytes, "f");
  EXPECT_EQ(Turn(1, ArticleList(5, 22), kWithRight).bytes, kUp) << "b shows the board's notes there";
  settings.sideButton = MouseScheme::kNeighbour;
  EXPECT_EQ(Side(kBack, ReaderTop(), Picture::kArticle).bytes, "b");
  EXPECT_EQ(Side(kForward, ReaderMiddle()).bytes, "f");
  EXPECT_EQ(Side(kBack, ArticleList(5, 22)).bytes, kUp + kRight);
  EXPECT_EQ(Side(kForward, ArticleList(5, 22)).bytes, kDown + kRight);
  EXPECT_EQ(Side(kForward, BoardList(5, 22)), MouseAction());
}

TEST_F(MouseSchemeTest, AHeldButtonCanLeaveTheWheelAsItIs) {
  settings.rightButtonWheel = MouseScheme::kWheel;
  for (const MouseScheme scheme : Offered(&Settings::wheel)) {
    settings.wheel = scheme;
    for (const ScreenSnapshot& screen : {ArticleList(5, 22), ReaderMiddle(), EditorPage()})
      EXPECT_EQ(Turn(-1, screen, kWithRight), Turn(-1, screen));
  }
}

TEST_F(MouseSchemeTest, EveryChoiceOfEveryGestureIsFelt) {
  const auto felt = [&] {
    std::vector<MouseAction> actions;
    for (const ScreenSnapshot& screen : {ArticleList(5, 22), ReaderMiddle()}) {
      actions.push_back(Click(13, 40, screen));
      for (const HeldButton held : {HeldButton::kNone, HeldButton::kLeft, kWithRight})
        actions.push_back(Turn(-2, screen, held));
      actions.push_back(Side(kBack, screen));
    }
    return actions;
  };
  for (const SettingRow& row : SettingTable()) {
    if (row.actedOnBy != ActedOnBy::kMouse) continue;
    std::vector<std::vector<MouseAction>> seen;
    for (std::size_t number = 0; number < row.choices.size(); ++number) {
      settings = Settings();
      ApplyRow(row, ToText(static_cast<int>(number)), settings);
      EXPECT_EQ(std::count(seen.begin(), seen.end(), felt()), 0)
          << std::string(row.key.begin(), row.key.end()) << number;
      seen.push_back(felt());
    }
  }
}

// ---- Waiting for the answer

TEST_F(MouseSchemeTest, WhatIsAskedAgainWaitsForTheAnswerButNotForEver) {
  AnswerGate gate;
  const ScreenSnapshot list = ArticleList(5, 22);
  EXPECT_FALSE(gate.IsWaiting(list, 0));
  gate.Sent(list, 100);
  EXPECT_TRUE(gate.IsWaiting(list, 500));
  EXPECT_FALSE(gate.IsWaiting(ReaderTop(), 500));
  EXPECT_FALSE(gate.IsWaiting(ArticleList(6, 22), 500));
  EXPECT_FALSE(gate.IsWaiting(list, 1100));
}

}  // namespace
}  // namespace quillet
