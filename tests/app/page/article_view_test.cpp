// The open article as a whole, in the window over the demo BBS: gathered, moved through, left.
#include "platform/clock.h"
#include "tests/app/demo_article_fixture.h"

namespace quillet {
namespace {

using ArticleViewTest = DemoArticleTest;

TEST_F(ArticleViewTest, TheKeysMoveThroughTheWholeArticle) {
  OpenWhole(talkative);
  EXPECT_EQ(Row(0), TextOf(Lines().At(0)));
  Press(Qt::Key_PageDown);
  ASSERT_TRUE(AtRest(kPageStep));
  EXPECT_EQ(Row(0), TextOf(Lines().At(kPageStep)));
  EXPECT_EQ(Row(22), TextOf(Lines().At(kPageStep + 22)));
  Press(Qt::Key_Down);
  TypeText("j");
  Press(Qt::Key_Up);
  ASSERT_TRUE(AtRest(kPageStep + 1));
  const double middle = View().Frame().progress;
  Press(Qt::Key_End);
  ASSERT_TRUE(AtRest(Last()));
  EXPECT_EQ(Row(22), TextOf(Lines().At(Lines().Count() - 1)));
  EXPECT_GT(View().Frame().progress, middle);
  EXPECT_EQ(View().Frame().progress, 1);
  const QString position = QStringLiteral("%1 / %1").arg(Article().LineCount());
  EXPECT_NE(Row(kBottomRow).find(position.toStdString()), std::string::npos) << Row(kBottomRow);
  Press(Qt::Key_PageDown);
  ASSERT_TRUE(AtRest(Last())) << "it stays";
  Press(Qt::Key_Home);
  ASSERT_TRUE(AtRest(0));
  EXPECT_TRUE(Article().IsShown());
}

// Nor is a page of it asked for: the key would be typed at another site's question.
TEST_F(ArticleViewTest, AConnectionThatBeginsKnowsNothingOfTheArticle) {
  OpenWhole(talkative);
  script->NeverConnect();
  BeginScript();
  EXPECT_FALSE(Article().IsShown() || Lines().Count() > 0 || doc->GetConnection().Seen().articleOpen);
}

TEST_F(ArticleViewTest, TheScrollBarMovesItAndFollowsIt) {
  EXPECT_TRUE(ScrollBar().isHidden());
  OpenWhole(talkative);
  ASSERT_TRUE(ScrollBar().isVisible());
  EXPECT_EQ(ScrollBar().geometry().right(), View().rect().right());
  EXPECT_EQ(ScrollBar().maximum(), Last());
  Press(Qt::Key_PageDown);
  ASSERT_TRUE(AtRest(kPageStep));
  EXPECT_EQ(ScrollBar().value(), kPageStep);

  Mouse(QEvent::MouseButtonPress, Handle().center());
  Mouse(QEvent::MouseMove, Handle().center() + QPoint(0, View().height() / 4));
  EXPECT_GT(Article().TopLine(), 2 * kPageStep) << "a dragged article does not lag behind";
  EXPECT_EQ(Article().TopLine(), ScrollBar().value());
  Mouse(QEvent::MouseMove, QPoint(Handle().center().x(), View().height() * 2));
  Mouse(QEvent::MouseButtonRelease, Handle().center());
  EXPECT_EQ(Article().TopLine(), Last());

  Mouse(QEvent::MouseButtonPress, QPoint(Handle().center().x(), 2));
  Mouse(QEvent::MouseButtonRelease, QPoint(Handle().center().x(), 2));
  ASSERT_TRUE(AtRest(Last() - kPageStep));
  EXPECT_FALSE(ScrollBar().hasFocus());
  EXPECT_TRUE(View().hasFocus()) << "the keyboard stays with the terminal";

  Press(Qt::Key_Left, {});
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_ARTICLE_LIST) != 0; }));
  EXPECT_FALSE(Article().IsShown());
  EXPECT_TRUE(ScrollBar().isHidden());
}

TEST_F(ArticleViewTest, EveryWayOfMovingCountsAsUseSoThatNoRefreshComesBetween) {
  OpenWhole(talkative);
  const auto isUse = [&](const std::function<void()>& move) {
    const std::int64_t before = Article().Reading().LastUse();
    const bool clockWentOn = Until([&] { return SteadyMilliseconds() > before; });
    move();
    return clockWentOn && Article().Reading().LastUse() > before;
  };
  EXPECT_TRUE(isUse([&] { Press(Qt::Key_PageDown); }));
  EXPECT_TRUE(isUse([&] { Wheel(-1); }));
  EXPECT_TRUE(isUse([&] {
    Mouse(QEvent::MouseButtonPress, Handle().center());
    Mouse(QEvent::MouseMove, Handle().center() + QPoint(0, View().height() / 4));
    Mouse(QEvent::MouseButtonRelease, Handle().center());
  }));
  EXPECT_FALSE(isUse([&] { View().update(); }));
}

TEST_F(ArticleViewTest, RightOnTheLastPageGoesToTheNextArticleWhereverTheBbsStands) {
  OpenWhole(talkative);
  const std::u16string title = Seen().article.title;
  // The BBS's own Page Up, behind the window's back.
  doc->GetConnection().Session().SendBytes("\x02");
  ASSERT_TRUE(AtRest(Last() - kPageStep)) << "the view goes where the BBS was sent";
  Press(Qt::Key_Home);
  Press(Qt::Key_End);
  ASSERT_TRUE(AtRest(Last()));
  Press(Qt::Key_Right);
  EXPECT_TRUE(Until(
      [&] { return Seen().article.title != title && Article().IsShown() && Article().TopLine() == 0; }));
}

TEST_F(ArticleViewTest, UpAtTheTopGoesToTheArticleBeforeUnlessArticlesAreKept) {
  OpenWhole(talkative);
  const std::u16string title = Seen().article.title;
  doc->GetSettings().Set(&Settings::preventUpDownChangeArticle, true);
  Press(Qt::Key_Up);
  Press(Qt::Key_End);
  Enter();
  ASSERT_TRUE(AtRest(Last()));
  EXPECT_EQ(Seen().article.title, title);
  doc->GetSettings().Set(&Settings::preventUpDownChangeArticle, false);
  Press(Qt::Key_Home);
  Press(Qt::Key_Up);
  EXPECT_TRUE(Until([&] { return Seen().article.title != title; }));
}

TEST_F(ArticleViewTest, TypingStopsTheReadingAndEndWaitsForIt) {
  Open(longest);
  ASSERT_FALSE(Lines().IsComplete());
  Press(Qt::Key_End);
  ASSERT_TRUE(Until([&] { return Article().TopLine() > 3 * kLinesShown; })) << "it goes along";
  TypeText("s");
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_INPUT_FIELD) != 0; }));
  ASSERT_FALSE(Lines().IsComplete());
  const int known = Lines().Count();
  TypeText("zq");
  ASSERT_TRUE(Until([&] { return ScreenAsUtf8().find("zq") != std::string::npos; })) << ScreenAsUtf8();
  EXPECT_EQ(Lines().Count(), known) << "no key of the reading's own came between";
  EXPECT_FALSE(Article().IsShown());
  Press(Qt::Key_Backspace, "\b");
  Press(Qt::Key_Backspace, "\b");
  Enter();
  ASSERT_TRUE(Until([&] { return Article().IsShown(); }));
  Press(Qt::Key_End);
  ASSERT_TRUE(Until([&] { return Lines().IsComplete(); }));
  EXPECT_GT(Article().LineCount(), static_cast<int>(longestBody));
  EXPECT_TRUE(AtRest(Last()));
}

TEST_F(ArticleViewTest, TheLineAtTheTopStaysWhenOthersAreTakenOut) {
  OpenWhole(talkative);
  Press(Qt::Key_End);
  Press(Qt::Key_PageUp);
  ASSERT_TRUE(AtRest(Last() - kPageStep));
  const int before = Article().LineCount();
  const std::string top = Row(0);
  doc->GetSettings().Store().Names().Set(SomebodyAbove(top), {});
  doc->GetSettings().Set(&Settings::blackPush, PushTreatment::kRemove);
  ASSERT_LT(Article().LineCount(), before);
  EXPECT_EQ(Row(0), top);
  doc->GetSettings().Set(&Settings::blackPush, PushTreatment::kNone);
  EXPECT_EQ(Article().LineCount(), before);
  EXPECT_EQ(Row(0), top);
}

TEST_F(ArticleViewTest, WhoStandsAtTheEndGoesAlongWithNewPushes) {
  OpenWhole(talkative);
  Press(Qt::Key_End);
  ASSERT_TRUE(AtRest(Last()));
  const int before = Article().LineCount();
  doc->GetSettings().Set(&Settings::markAfterPush, true);
  TypeText("X");
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_PUSH_LINE) != 0; }));
  TypeText("1");
  TypeText("new");
  Enter();
  TypeText("y");
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_PUSH_CONFIRM) != 0; })) << ScreenAsUtf8();
  EXPECT_FALSE(Article().IsShown()) << "what is asked is seen";
  Enter();
  ASSERT_TRUE(Until([&] { return Article().LineCount() == before + 1; }));
  ASSERT_TRUE(AtRest(Last()));
  EXPECT_NE(Row(22).find("new"), std::string::npos);
  EXPECT_TRUE(Until([&] { return doc->GetBookmarks().HasOpenArticle(); })) << "as the user wants it";
  ASSERT_EQ(PushWriter(Row(22)), u"reader");
  const QImage coloured = View().grab().toImage();
  doc->GetSettings().Set(&Settings::colorMyId, false);
  EXPECT_NE(View().grab().toImage(), coloured);
}

TEST_F(ArticleViewTest, WithoutAnimationItMovesAtOnceAndTheWheelNeverLeavesIt) {
  OpenWhole(talkative);
  const std::u16string title = Seen().article.title;
  doc->GetSettings().Set(&Settings::noScrollAnimation, true);
  Wheel(-1000);
  EXPECT_EQ(Article().TopLine(), Last()) << "without any step between";
  Wheel(-1);
  ASSERT_TRUE(AtRest(Last()));
  EXPECT_EQ(Seen().article.title, title);
  doc->GetSettings().Set(&Settings::hideTopLeftIcons, true);
  EXPECT_TRUE(Article().Captions().empty());
  EXPECT_NE(Row(kBottomRow).find(ToBig5(u"行")), std::string::npos) << "the position stays";
}

TEST_F(ArticleViewTest, AShortArticleIsShownWithoutAScrollBar) {
  Open(shortest);
  ASSERT_TRUE(Until([&] { return Lines().IsComplete(); }));
  ASSERT_LT(Article().LineCount(), kLinesShown);
  EXPECT_TRUE(ScrollBar().isHidden());
  EXPECT_EQ(Row(22), std::string(kCols, ' '));
  Wheel(-3);
  EXPECT_EQ(Article().TargetLine(), 0);
}

TEST_F(ArticleViewTest, ABookmarkAsksTheBbsForTheCodeAndThePageStaysMeanwhile) {
  OpenWhole(talkative);
  // Opened as from a list: the code is not known then.
  Press(Qt::Key_Left);
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_ARTICLE_LIST_CURSOR) != 0; }));
  Press(Qt::Key_Right);
  ASSERT_TRUE(Until([&] { return Article().IsShown() && Lines().IsComplete(); }));
  ASSERT_EQ(Seen().article.code, u"");
  Press(Qt::Key_PageDown);
  ASSERT_TRUE(AtRest(kPageStep));
  const auto& bookmarks = doc->GetBookmarks().List(ArticleListKind::kBookmarks).children;
  bool stayed = true;
  TypeText("m");
  ASSERT_TRUE(Until([&] {
    stayed = stayed && Article().IsShown();
    return !bookmarks.empty();
  }));
  EXPECT_TRUE(stayed);
  EXPECT_EQ(Article().TopLine(), kPageStep);
  const auto& item = std::get<ArticleItem>(bookmarks.front());
  EXPECT_EQ(item.code, talkative.code);
  EXPECT_EQ(item.board, talkative.board);
  ASSERT_TRUE(Until([&] { return IsIdle(); }));
  EXPECT_NE(FromBig5(Row(kBottomRow)).find(u"移除書籤"), std::u16string::npos);
  EXPECT_FALSE(View().LastToast().Text().isEmpty());
  TypeText("m");
  ASSERT_TRUE(Until([&] { return bookmarks.empty(); }));
  EXPECT_NE(FromBig5(Row(kBottomRow)).find(u"加入書籤"), std::u16string::npos);
}

TEST_F(ArticleViewTest, APromptStandsBelowThePageThatTheBbsShows) {
  OpenWhole(talkative);
  const std::string top = Row(0);
  for (const bool atEnd : {false, true}) {
    if (atEnd) {
      Press(Qt::Key_End);
      ASSERT_TRUE(AtRest(Last()));
    }
    TypeText("p");
    ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_PUSH_LINE) != 0; }));
    EXPECT_NE(Row(0), top);
    EXPECT_EQ(Row(21), std::string(View().Screen().RowText(21)));
    EXPECT_NE(FromBig5(Row(kBottomRow)).find(u"您覺得這篇文章"), std::u16string::npos);
    View().setFocus();
    EXPECT_TRUE(Until([&] { return View().Frame().caretRow == View().Screen().cursorRow; }));
    Enter();
    Enter();
    ASSERT_TRUE(Until([&] { return Article().IsShown(); })) << ScreenAsUtf8();
    EXPECT_EQ(Article().TopLine(), atEnd ? Last() : 0) << "one is back where one was";
  }
}

TEST_F(ArticleViewTest, InTheMiniWindowAPageIsItsRows) {
  OpenWhole(talkative);
  View().SetLayoutMode(LayoutMode::kNarrow);
  frame->setMinimumSize(0, 0);
  frame->resize(528, 200);
  ASSERT_TRUE(Until([&] { return Article().LinesInSight() < kLinesShown; }));
  const int lines = Article().LinesInSight();
  const auto topRow = static_cast<std::size_t>(kLinesShown - lines);
  EXPECT_GE(View().Surface().CellRect(static_cast<int>(topRow), 0).top(), 0);
  EXPECT_LT(View().Surface().CellRect(static_cast<int>(topRow) - 1, 0).top(), 0);
  EXPECT_EQ(Row(topRow), TextOf(Lines().At(0))) << "the first line is in sight";
  Press(Qt::Key_PageDown);
  ASSERT_TRUE(AtRest(lines - 1));
  EXPECT_EQ(Row(topRow), TextOf(Lines().At(lines - 1))) << "none is skipped";
  Press(Qt::Key_End);
  ASSERT_TRUE(AtRest(Lines().Count() - lines));
  EXPECT_EQ(Row(22), TextOf(Lines().At(Lines().Count() - 1)));

  Press(Qt::Key_Left);
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_ARTICLE_LIST_CURSOR) != 0; }));
  const int cursor = View().Screen().cursorRow;
  EXPECT_TRUE(Until([&] { return View().Frame().caretRow >= static_cast<int>(topRow); }));
  Press(Qt::Key_PageUp);
  EXPECT_TRUE(Until([&] { return View().Screen().cursorRow != cursor; })) << ScreenAsUtf8();
  EXPECT_TRUE(Until([&] { return View().Frame().caretRow >= static_cast<int>(topRow); }));
  View().SetLayoutMode(LayoutMode::kOrdinary);
  EXPECT_TRUE(Until([&] { return Row(0) == std::string(View().Screen().RowText(0)); }));
}

TEST_F(ArticleViewTest, TheMiniWindowShowsTheSameRowsInDisguise) {
  OpenWhole(talkative);
  doc->GetSettings().Set(&Settings::work, true);
  View().SetLayoutMode(LayoutMode::kNarrow);
  frame->setMinimumSize(0, 0);
  frame->resize(528, 207);
  ASSERT_TRUE(Until([&] { return Article().LinesInSight() < kLinesShown; }));
  const int topRow = kLinesShown - Article().LinesInSight();
  EXPECT_EQ(View().Surface().CellAt({1, 1}), (CellPosition{topRow, 0}));
  const QPoint foot(1, qFloor(View().Surface().CellRect(kBottomRow, 0).bottom()) - 1);
  EXPECT_TRUE(View().rect().contains(foot));
  EXPECT_EQ(View().Surface().CellAt(foot), (CellPosition{kBottomRow, 0}));
  EXPECT_EQ(View().Surface().PlaceAt({1, -20}).row, topRow);
  EXPECT_LT(View().Surface().PlaceAt({1, -20}).rowsOutside, 0);
  TypeText("X");
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_PUSH_LINE) != 0; }));
  EXPECT_TRUE(View().rect().contains(View().inputMethodQuery(Qt::ImCursorRectangle).toRect()));
}

TEST_F(ArticleViewTest, ATextIsLookedForInWhatIsShownAndTheBbsKnowsNothingOfIt) {
  OpenWhole(talkative);
  const auto marks = [&] {
    int cells = 0;
    for (const PageRow& row : View().Frame().page)
      cells += static_cast<int>(std::count_if(row.cells.begin(), row.cells.end(), [](const PageCell& cell) {
        return (cell.style & (CS_FOUND | CS_FOUND_HERE)) != 0;
      }));
    return cells;
  };
  const auto said = [&] { return View().LastToast().Text(); };
  Press(Qt::Key_PageDown);
  ASSERT_TRUE(AtRest(kPageStep));
  const std::u16string id = PushWriter(TextOf(Lines().At(Lines().Count() - 1)));
  const unsigned screens = View().ScreenCount();

  TypeText("/");
  ASSERT_TRUE(View().Found().IsAsking());
  TypeText(QString::fromStdU16String(id).toUpper());
  EXPECT_GT(marks(), 0);
  EXPECT_GE(Article().TargetLine(), kPageStep) << "from here on";
  const int first = Article().TargetLine();
  Escape();
  EXPECT_FALSE(View().Found().IsAsking());
  EXPECT_TRUE(AtRest(kPageStep)) << "back to where one was";
  EXPECT_EQ(marks(), 0);

  Press(Qt::Key_F, "\x06", Qt::ControlModifier);
  Enter();
  EXPECT_TRUE(View().hasFocus());
  EXPECT_EQ(Article().TargetLine(), first) << "the text was kept";
  EXPECT_TRUE(said().startsWith(u"第 "_qs)) << said().toStdString();
  EXPECT_GT(marks(), 0);
  const QString before = said();
  Enter();
  EXPECT_NE(said(), before);
  Press(Qt::Key_F3, {}, Qt::ShiftModifier);
  EXPECT_EQ(said(), before);
  Press(Qt::Key_Home);
  Enter();
  EXPECT_EQ(Article().TargetLine(), 1) << "Enter is the article's again";
  Escape();
  EXPECT_EQ(marks(), 0);

  // What an input method commits; nobody finds what is taken out.
  TypeText("/");
  QInputMethodEvent commit;
  commit.setCommitString(u"推 "_qs + QString::fromStdU16String(id));
  QCoreApplication::sendEvent(frame->focusWidget(), &commit);
  const int shown = marks();
  doc->GetSettings().Store().Names().Set(id, {});
  doc->GetSettings().Set(&Settings::blackPush, PushTreatment::kRemove);
  EXPECT_GT(shown, 0);
  EXPECT_EQ(marks(), 0);
  EXPECT_EQ(View().ScreenCount(), screens) << "nothing was sent";

  Press(Qt::Key_PageUp);
  Enter();
  Press(Qt::Key_Left);
  ASSERT_TRUE(Until([&] { return (View().Screen().pageFlags & PF_ARTICLE_LIST_CURSOR) != 0; }));
  doc->GetSettings().Set(&Settings::blackPush, PushTreatment::kNone);
  Press(Qt::Key_Right);
  ASSERT_TRUE(Until([&] { return Article().IsShown() && Lines().IsComplete(); }));
  EXPECT_EQ(marks(), 0);
  TypeText("n");
  EXPECT_TRUE(Until([&] { return marks() > 0; })) << "the same text in the article that is open now";
  TypeText("/");
  doc->GetConnection().Disconnect();
  EXPECT_TRUE(Until([&] { return !View().Found().IsAsking() && View().hasFocus(); }));
}

TEST_F(ArticleViewTest, AHitThatIsSeenStaysInSightWhereFewerLinesAre) {
  OpenWhole(talkative);
  Press(Qt::Key_PageDown);
  ASSERT_TRUE(AtRest(kPageStep));
  TypeText("/");
  TypeText(u"推"_qs);
  View().SetLayoutMode(LayoutMode::kNarrow);
  frame->setMinimumSize(0, 0);
  for (const int height : {300, 200, 120}) {
    frame->resize(528, height);
    EXPECT_TRUE(Until([&] {
      for (int row = kLinesShown - Article().LinesInSight(); row < kLinesShown - 1; ++row)
        for (const PageCell& cell : View().Frame().page[static_cast<std::size_t>(row)].cells)
          if ((cell.style & CS_FOUND_HERE) != 0) return true;
      return false;
    })) << height;
  }
}

TEST_F(ArticleViewTest, ACaptionGivesItsCommandOnAClick) {
  OpenWhole(talkative);
  const auto& captions = Article().Captions();
  const auto push = std::find_if(captions.begin(), captions.end(), [](const CaptionArea& area) {
    return area.command == ArticleCommand::kFirstPush;
  });
  ASSERT_NE(push, captions.end());
  const QPointF at = View().Surface().CellRect(kRows - 1, push->first + 1).center();
  QMouseEvent click(QEvent::MouseButtonPress, at, View().mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                    Qt::NoModifier);
  QCoreApplication::sendEvent(&View(), &click);
  ASSERT_TRUE(
      Until([&] { return Article().TopLine() > 0 && Article().TopLine() == Article().TargetLine(); }));
  EXPECT_NE(PushWriter(TextOf(Lines().At(Article().TopLine()))), u"");
}

TEST_F(ArticleViewTest, TabShowsDescriptionsAndTwiceWhatIsHidden) {
  doc->GetSettings().Set(&Settings::blackPush, PushTreatment::kHideText);
  OpenWhole(talkative);
  Press(Qt::Key_End);
  ASSERT_TRUE(AtRest(Last()));
  const std::string plain = Row(22);
  const std::u16string id = PushWriter(plain);
  ASSERT_NE(id, u"");
  doc->GetSettings().Store().Names().Set(id, {.description = u"愛吵架"});
  doc->GetSettings().Apply();
  EXPECT_NE(Row(22), plain) << "its words are hidden";
  EXPECT_TRUE(View().Frame().page[22].tag.empty());
  Press(Qt::Key_Tab, "\t");
  EXPECT_EQ(View().Frame().page[22].tag, u"愛吵架");
  EXPECT_NE(Row(22), plain);
  Press(Qt::Key_Tab, "\t");
  EXPECT_EQ(Row(22), plain);
  Escape();
  EXPECT_TRUE(View().Frame().page[22].tag.empty());
  EXPECT_NE(Row(22), plain);
}

TEST_F(ArticleViewTest, PagesAskedForBeforeTheyHaveComeAreShownWhenTheyCome) {
  Open(longest);
  for (int i = 0; i < 3; ++i)
    Press(Qt::Key_PageDown);
  EXPECT_TRUE(AtRest(3 * kPageStep)) << Article().TopLine();
  Press(Qt::Key_Home);
  EXPECT_TRUE(AtRest(0));
}

TEST_F(ArticleViewTest, TheEndThatIsYetToComeIsReachedWhateverGoesForwardMeanwhile) {
  Open(longest);
  Press(Qt::Key_End);
  Press(Qt::Key_PageDown);
  Press(Qt::Key_Down);
  ASSERT_TRUE(Until([&] { return Lines().IsComplete(); }));
  EXPECT_TRUE(AtRest(Last())) << Article().TopLine();
}

}  // namespace
}  // namespace quillet
