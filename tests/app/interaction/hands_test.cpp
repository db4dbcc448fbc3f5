// A session by mouse and by keyboard, from the events that the window gets to what the BBS shows: browsing,
// selecting, copying, pasting, links and lists of names.
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>

#include "tests/app/interaction/hands_fixture.h"

namespace quillet {
namespace {

// ---- Browsing

TEST_F(HandsTest, TheMouseAloneLeadsFromTheMenuIntoAnArticleAndBack) {
  ClickOn(u"系統資訊");
  ASSERT_TRUE(Shows(u"【系統資訊】")) << ScreenAsUtf8();
  Click(LeftMargin());
  ASSERT_TRUE(AtMainMenu()) << ScreenAsUtf8();
  ClickOn(u"看板列表");
  ASSERT_TRUE(AtBoardList()) << ScreenAsUtf8();
  ClickOn(u"Hands");
  ASSERT_TRUE(AtList()) << ScreenAsUtf8();
  ClickOn(kTextTitle);
  ASSERT_TRUE(Reads(kTextTitle)) << ScreenAsUtf8();

  const int usual = QApplication::wheelScrollLines();
  QApplication::setWheelScrollLines(7);
  TurnWheel(-2);
  EXPECT_TRUE(AtRest(14)) << "as the system is set";
  TurnWheel(1);
  QApplication::setWheelScrollLines(usual);
  ASSERT_TRUE(AtRest(7));
  Click(LeftMargin());
  ASSERT_TRUE(AtList()) << ScreenAsUtf8();
  Click(LeftMargin());
  ASSERT_TRUE(AtBoardList()) << ScreenAsUtf8();
  Click(LeftMargin());
  ASSERT_TRUE(AtMainMenu()) << ScreenAsUtf8();
}

TEST_F(HandsTest, TheLineThatAClickWouldOpenIsShownBefore) {
  GoToBoard();
  const auto shown = [&] {
    std::vector<int> rows;
    for (int row = 0; row < kRows; ++row)
      if ((View().Frame().page[static_cast<std::size_t>(row)].cells[40].style & CS_HOVER) != 0)
        rows.push_back(row);
    return rows;
  };
  const auto shownAt = [&](const QPointF& at) {
    PointAt(at);
    return shown();
  };
  EXPECT_EQ(shownAt(At(5, 40.5)), std::vector<int>{5});
  EXPECT_EQ(shownAt(At(6, 40.5)), std::vector<int>{6});
  EXPECT_TRUE(shownAt(At(9, 40.5)).empty()) << "no line of the list";
  EXPECT_TRUE(shownAt(LeftMargin()).empty()) << "a click goes back";
  PointAt(At(6, 40.5));
  Press(Qt::Key_Up);
  EXPECT_TRUE(shown().empty()) << "the keyboard is used";
  EXPECT_EQ(shownAt(At(5, 41.5)), std::vector<int>{5});
  View().clearFocus();
  EXPECT_TRUE(shown().empty());
  View().setFocus();
  doc->GetSettings().Set(&Settings::leftButton, MouseScheme::kNothing);
  EXPECT_TRUE(shownAt(At(6, 40.5)).empty()) << "clicks do nothing";
}

// ---- Selecting and copying

TEST_F(HandsTest, ADragThroughTheMiddleOfCharactersCopiesWholeOnes) {
  ReadText();
  const auto [row, col] = Find(kCatLine);
  ASSERT_GE(row, 0);
  // A character is in when its middle is.
  for (const double first : {2.1, 2.9, 3.1, 3.9})
    for (const double last : {10.1, 10.9, 11.1, 11.9}) {
      const std::u16string meant =
          (first < 3 ? u"咪" : u"") + std::u16string(u"喜歡曬") + (last > 11 ? u"太" : u"");
      Drag(At(row, col + first), At(row, col + last));
      EXPECT_EQ(Copied(), meant) << first << ' ' << last;
      Drag(At(row, col + last), At(row, col + first));
      EXPECT_EQ(Copied(), meant) << "backwards";
    }
  EXPECT_EQ(Article().TopLine(), 0) << "a drag is no click";
}

TEST_F(HandsTest, ClicksSelectAWordAndALineAndShiftExtends) {
  ReadText();
  const auto [row, col] = Find(kFoxLine);
  ASSERT_GE(row, 0);
  DoubleClick(At(row, col + 6.5));
  EXPECT_EQ(Selected(), u"quick");
  TripleClick(At(row, col + 6.5));
  EXPECT_EQ(Selected(), kFoxLine);

  Drag(At(row, col), At(row, col + 3.0));
  EXPECT_EQ(Selected(), u"The");
  Click(At(row, col + 9.0), Qt::ShiftModifier);
  EXPECT_EQ(Selected(), u"The quick");
  Click(At(row + 1, col + 4.0), Qt::ShiftModifier);
  EXPECT_EQ(Selected(), kFoxLine + u'\n' + kCatLine.substr(0, 2));
}

TEST_F(HandsTest, AltSelectsAColumn) {
  ReadText();
  const auto [row, col] = Find(kLetterLines[0]);
  ASSERT_GE(row, 0);
  const QPointF from = At(row, col + 2.0);
  const QPointF to = At(row + 2, col + 5.0);
  Drag(from, to);
  EXPECT_EQ(Copied(), u"cdefghij\nklmnopqrst\nuvwxy");
  Drag(from, to, Qt::AltModifier);
  EXPECT_EQ(Selected(), u"cde\nmno\nwxy");
  Escape();
  EXPECT_FALSE(View().Selected().IsShown());
  EXPECT_TRUE(Article().IsShown()) << "Esc has ended the selection and nothing else";
}

TEST_F(HandsTest, WithTheOptionASelectionIsCopiedWhenTheButtonIsLetGo) {
  ReadText();
  const auto [row, col] = Find(kLetterLines[1]);
  ASSERT_GE(row, 0);
  Drag(At(row, col), At(row, col + 3.0));
  EXPECT_EQ(Clipboard(), u"");
  Escape();
  doc->GetSettings().Set(&Settings::copyWhenSelect, true);
  Drag(At(row, col + 1.0), At(row, col + 4.0));
  EXPECT_EQ(Clipboard(), u"lmn");
}

TEST_F(HandsTest, ASelectionScrollsOnlyWhileTheButtonIsDown) {
  Open(longest);
  MouseDown(At(5, 10));
  PointAt(At(kRows - 1, 10) + QPointF(0, 400), Qt::LeftButton);
  ASSERT_TRUE(Until([&] { return Article().TargetLine() > 0; }));
  MouseUp(At(kRows - 1, 10) + QPointF(0, 400));
  const int target = Article().TargetLine();
  ASSERT_TRUE(Until([&] { return Lines().IsComplete(); }));
  EXPECT_TRUE(AtRest(target)) << Article().TargetLine();
}

TEST_F(HandsTest, TheMenuDoesNotCopyWhatIsNoLongerSelected) {
  GoToBoard();
  const Spot spot = Find(kTextTitle);
  ASSERT_GE(spot.row, 0);
  Drag(At(spot.row, spot.col), At(spot.row, spot.col + 4.0));
  ASSERT_EQ(Selected(), kTextTitle.substr(0, 2));
  Click(At(spot.row, spot.col + 1.5), Qt::NoModifier, Qt::RightButton);
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_TRUE(menu);
  doc->GetConnection().Session().SendBytes("\x1B[D");
  ASSERT_TRUE(AtMainMenu());
  for (QAction* item : menu->actions())
    if (item->text().startsWith(u"複製(")) item->trigger();
  EXPECT_EQ(Clipboard(), u"");
  menu->close();
}

TEST_F(HandsTest, HtmlHasThePushLinesAsThePictureShowsThem) {
  ReadText();
  Press(Qt::Key_End);
  ASSERT_TRUE(AtRest(Last()));
  const Spot push = Find(u"好");
  ASSERT_GE(push.row, 0);
  Drag(At(push.row, 0), At(push.row + 1, 0));
  View().Edit(EditCommand::kCopyHtml);
  const QString html = QGuiApplication::clipboard()->mimeData()->html();
  const Palette& palette = PaletteOf(PaletteKind::kNormal);
  const PageCell& cell =
      View().Frame().page[static_cast<std::size_t>(push.row)].cells[static_cast<std::size_t>(push.col)];
  ASSERT_NE(cell.back, 16) << "the client's own ground";
  EXPECT_TRUE(html.contains(
      u"<span style=\"color:#%1;background-color:#%2\">: 好"_qs.arg(palette[cell.fore], 6, 16, QChar(u'0'))
          .arg(palette[cell.back], 6, 16, QChar(u'0'))))
      << html.toStdString();
  EXPECT_FALSE(html.contains(u"background-color:#%1"_qs.arg(palette[32], 6, 16, QChar(u'0'))))
      << "not the selection's";
}

// ---- What the lists hide

TEST_F(HandsTest, HiddenPushesAreNeitherCopiedNorFollowed) {
  ReadText();
  Press(Qt::Key_End);
  ASSERT_TRUE(AtRest(Last()));
  const Spot link = Find(kSecretLink);
  ASSERT_GE(link.row, 0);
  const auto copied = [&] {
    View().Edit(EditCommand::kSelectAll);
    return Copied();
  };
  const std::u16string all = copied();
  EXPECT_NE(all.find(u"噓 jabber: " + kSecretLink), all.npos);
  EXPECT_NE(all.find(u"→ jabber: 又來了"), all.npos) << "the id is merged, but no secret";
  const QPointF onLink = At(link.row, link.col + 3.5);
  TripleClick(At(link.row, 50.5));
  PointAt(onLink);
  ASSERT_TRUE(View().Links().Current());

  doc->GetSettings().Store().Names().Set(u"jabber", {.description = u"吵"});
  doc->GetSettings().Set(&Settings::blackPush, PushTreatment::kHideText);
  EXPECT_FALSE(View().Selected().IsShown()) << "it would read differently";
  EXPECT_FALSE(View().Links().Current());
  Click(onLink);
  EXPECT_TRUE(opener.opened.empty());
  const std::u16string hidden = copied();
  EXPECT_EQ(hidden.find(u"example.com/jabber"), hidden.npos);
  EXPECT_NE(hidden.find(u"→ jabber: ＊＊＊"), hidden.npos);

  doc->GetSettings().Set(&Settings::blackPush, PushTreatment::kMaskId);
  EXPECT_EQ(copied().find(u"jabber"), std::u16string::npos);
  PointAt(At(link.row, 5.5));
  EXPECT_EQ(View().IdInQuestion(), "jabber") << "who masks an id can also take it out of the lists";

  doc->GetSettings().Set(&Settings::blackPush, PushTreatment::kRemove);
  const std::u16string removed = copied();
  EXPECT_EQ(removed.find(u"jabber"), removed.npos);
  EXPECT_EQ(removed.find(u"***"), removed.npos);
  EXPECT_NE(removed.find(u"推 dormouse: 好"), removed.npos);
}

TEST_F(HandsTest, TheBbssOwnPagesAreCopiedAsTheyAreShown) {
  doc->GetSettings().Store().Names().Set(u"jabber", {.description = u"吵"});
  doc->GetSettings().Set(&Settings::blackPush, PushTreatment::kRemove);
  doc->GetSettings().Set(&Settings::webArticle, false);
  GoToBoard();
  TypeText(u"/filler 40"_qs);
  Enter();
  ASSERT_TRUE(Until([&] { return Is(PF_ARTICLE_LIST_CURSOR); }));
  Press(Qt::Key_Right);
  ASSERT_TRUE(Until([&] { return Is(PF_READING) && ScreenHolds(u"jabber"); })) << ScreenAsUtf8();
  const std::u16string page = Copied();
  EXPECT_NE(page.find(u"推 dormouse: 好"), page.npos);
  EXPECT_EQ(page.find(u"jabber"), page.npos);
  Press(Qt::Key_Left);
  ASSERT_TRUE(AtList());

  EXPECT_NE(Copied().find(u"filler 40"), std::u16string::npos);
  doc->GetSettings().Store().Names().Set(kAuthor, {.description = u"吵"});
  doc->GetSettings().Set(&Settings::blackTitle, TitleTreatment::kMaskId);
  const std::u16string list = Copied();
  EXPECT_EQ(list.find(u"filler"), list.npos);
  EXPECT_EQ(list.find(kAuthor), list.npos);
}

// ---- Writing

TEST_F(HandsTest, AClickInTheEditorGoesToTheCharacter) {
  BeginArticle("clicked");
  TypeText(u"甲乙丙丁戊"_qs);
  Enter();
  TypeText("second");
  ASSERT_TRUE(Shows(u"second"));
  const auto cursorAt = [&](int row, int col) {
    return Until([&] { return View().Screen().cursorRow == row && View().Screen().cursorCol == col; });
  };
  Click(At(0, 5.5));
  ASSERT_TRUE(cursorAt(0, 4)) << ScreenAsUtf8();
  TypeText("x");
  ASSERT_TRUE(Shows(u"甲乙x丙丁戊"));
  Click(At(0, 60.5));
  ASSERT_TRUE(cursorAt(0, 11)) << "behind the text, not in the next line";
  Click(At(1, 3.5));
  ASSERT_TRUE(cursorAt(1, 3));
}

// ---- Pasting

// Distinct ones, so that none can stand for another.
std::u16string ManyCharacters(std::size_t count) {
  std::u16string text;
  for (int lead = 0xA4; text.size() < count && lead <= 0xC6; ++lead)
    for (int trail = 0x40; text.size() < count && trail <= 0xFE; ++trail)
      if (trail <= 0x7E || trail >= 0xA1)
        text += FromBig5(std::string{static_cast<char>(lead), static_cast<char>(trail)});
  return text;
}

TEST_F(HandsTest, FiveThousandCharactersArePastedIntoAnArticleAndAllArrive) {
  const std::u16string text = ManyCharacters(5000);
  ASSERT_EQ(text.size(), 5000u);
  ASSERT_EQ(text.find(u'\0'), std::u16string::npos);
  BeginArticle("pasted");
  ASSERT_TRUE(Fields().pasteAutoChangeLine);
  PutOnClipboard(QString::fromStdU16String(text));
  PressWith(Qt::ControlModifier, Qt::Key_V);
  ASSERT_TRUE(Shows(text.substr(text.size() - 4))) << ScreenAsUtf8();
  PostAndRead(u"pasted");
  std::u16string posted;
  for (int line = 0; line < Lines().Count(); ++line) {
    const std::u16string words = FromBig5(TextOf(Lines().At(line)));
    posted += words.substr(0, words.find_last_not_of(u' ') + 1);
  }
  EXPECT_NE(posted.find(text), std::u16string::npos);
}

TEST_F(HandsTest, CopiedColoursArePostedAndShowAgain) {
  BeginArticle("coloured");
  PutOnClipboard(u"一\x1B[1;33m黃 on \x1B[44mblue\x1B[m色\n"_qs);
  PressWith(Qt::ControlModifier, Qt::Key_V);
  auto* const question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
  ASSERT_TRUE(question);
  question->defaultButton()->click();
  ASSERT_TRUE(Shows(u"黃 on *[44mblue*[m色")) << ScreenAsUtf8();
  PostAndRead(u"coloured");
  const Spot spot = Find(u"一黃 on blue色");
  ASSERT_GE(spot.row, 0) << ScreenAsUtf8();
  const auto copied = [&] {
    Drag(At(spot.row, spot.col), At(spot.row, spot.col + 15.0));
    View().Edit(EditCommand::kCopyAnsi);
    return Clipboard();
  };
  EXPECT_EQ(copied(), u"一\x1B[1;33m黃 on \x1B[44mblue\x1B[m色");
}

// ---- Links

TEST_F(HandsTest, ALinkIsUnderlinedNamedAndOpened) {
  ReadText();
  const auto [row, col] = Find(kWebLink);
  ASSERT_GE(row, 0);
  const auto lowerEdge = [&] {
    const QRect edge(0, View().height() * 9 / 10, View().width(), View().height() / 10);
    return View().grab(edge).toImage();
  };
  const auto isUnderlined = [&] {
    return (View().Frame().page[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(col)].style &
            CS_UNDERLINE) != 0;
  };
  const QImage before = lowerEdge();
  PointAt(At(row, col + 5.5));
  EXPECT_TRUE(isUnderlined());
  EXPECT_NE(lowerEdge(), before) << "where it leads";
  PointAt(At(row + 8, 70.5));
  EXPECT_FALSE(isUnderlined());
  EXPECT_EQ(lowerEdge(), before);

  EXPECT_TRUE(opener.opened.empty());
  Click(At(row, col + static_cast<int>(kWebLink.size()) - 0.5));
  EXPECT_TRUE(Until([&] { return !opener.opened.empty(); }));
  EXPECT_EQ(opener.opened, std::vector<std::u16string>{kWebLink});
  EXPECT_EQ(Article().TopLine(), 0);
}

TEST_F(HandsTest, AnArticleThatIsNamedOpensOnTheBbs) {
  ReadText();
  const auto [row, col] = Find(u'#' + linked.code);
  ASSERT_GE(row, 0);
  Click(At(row, col + 2.5));
  ASSERT_TRUE(Reads(linkedTitle)) << ScreenAsUtf8();
  EXPECT_EQ(Seen().article.board, linked.board);
  EXPECT_TRUE(opener.opened.empty());
}

// ---- Names

TEST_F(HandsTest, KeysOverAnIdChangeItsEntryInTheLists) {
  doc->GetSettings().Set(&Settings::addBlackHotKey, true);
  GoToBoard();
  const auto [row, col] = Find(kAuthor);
  ASSERT_GE(row, 0);
  const unsigned screens = View().ScreenCount();
  PointAt(At(row, col + 2.5));
  TypeText("`");
  std::ifstream file(ProgramHome() / "black.txt", std::ios::binary);
  const std::string kept{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NE(kept.find(Utf8(kAuthor)), std::string::npos);
  TypeText("`");
  EXPECT_EQ(doc->GetSettings().Store().Names().Find(kAuthor), nullptr);
  TypeText("3");
  EXPECT_NE(View().Frame().page[static_cast<std::size_t>(row)].pennants, 0) << "it is seen at once";
  EXPECT_EQ(View().ScreenCount(), screens) << "none of these keys came to the BBS";

  PointAt(At(row, 60.5));
  TypeText("3");
  EXPECT_TRUE(Shows(u"跳至第幾項")) << "elsewhere they are the BBS's";
}

}  // namespace
}  // namespace quillet
