// A session by mouse and by keyboard, from the events that the window gets to what the BBS shows: browsing,
// selecting, copying, pasting, links and lists of names.
#include <set>

#include "tests/app/hands_fixture.h"

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

  const int lines = QApplication::wheelScrollLines();
  TurnWheel(-2, Middle());
  ASSERT_TRUE(AtRest(2 * lines));
  TurnWheel(1, Middle());
  ASSERT_TRUE(AtRest(lines));
  Click(LeftMargin());
  ASSERT_TRUE(AtList()) << ScreenAsUtf8();
  Click(LeftMargin());
  ASSERT_TRUE(AtBoardList()) << ScreenAsUtf8();
  Click(LeftMargin());
  ASSERT_TRUE(AtMainMenu()) << ScreenAsUtf8();
}

TEST_F(HandsTest, TheKeyboardAloneDoesTheSame) {
  TypeText("x");
  Press(Qt::Key_Right);
  ASSERT_TRUE(Shows(u"【系統資訊】")) << ScreenAsUtf8();
  Press(Qt::Key_Left);
  ASSERT_TRUE(AtMainMenu()) << ScreenAsUtf8();
  TypeText("b");
  Enter();
  ASSERT_TRUE(AtBoardList()) << ScreenAsUtf8();
  Press(Qt::Key_Home);
  Press(Qt::Key_Right);
  ASSERT_TRUE(AtList()) << ScreenAsUtf8();
  Press(Qt::Key_End);
  Press(Qt::Key_Up);
  Press(Qt::Key_Right);
  ASSERT_TRUE(Reads(kTextTitle)) << ScreenAsUtf8();

  Press(Qt::Key_PageDown);
  ASSERT_TRUE(AtRest(kPageStep));
  Press(Qt::Key_Up);
  ASSERT_TRUE(AtRest(kPageStep - 1));
  Press(Qt::Key_Left);
  ASSERT_TRUE(AtList()) << ScreenAsUtf8();
  Press(Qt::Key_Left);
  ASSERT_TRUE(AtBoardList()) << ScreenAsUtf8();
  Press(Qt::Key_Left);
  ASSERT_TRUE(AtMainMenu()) << ScreenAsUtf8();
}

TEST_F(HandsTest, TheWheelTurnsThePagesOfAList) {
  GoToBoard();
  ASSERT_EQ(Find(u"filler 39").row, -1) << "the list opens at its last page";
  TurnWheel(1, Middle());
  ASSERT_TRUE(Shows(u"filler 39")) << ScreenAsUtf8();
  EXPECT_FALSE(ScreenHolds(kTextTitle));
  TurnWheel(-1, Middle());
  ASSERT_TRUE(Shows(kTextTitle)) << ScreenAsUtf8();
}

// What both stand for at first: "[" and "]", the articles of the same thread.
TEST_F(HandsTest, SideButtonsAndTheWheelWithTheLeftButtonFollowTheThread) {
  GoToBoard();
  GoToArticle(kThreadTitle);
  // The articles are a minute apart.
  const auto moves = [&](const std::function<void()>& act) {
    const std::int64_t before = doc->OpenArticle().postTime;
    act();
    EXPECT_TRUE(Until([&] { return doc->OpenArticle().postTime != before; })) << ScreenAsUtf8();
    EXPECT_TRUE(Reads(kThreadTitle)) << ScreenAsUtf8();
    return (doc->OpenArticle().postTime - before) / 60;
  };
  // The search has found the first of three.
  EXPECT_EQ(moves([&] { TurnWheelHolding(Qt::LeftButton, -1); }), 1);
  EXPECT_EQ(moves([&] { Click(Middle(), Qt::NoModifier, Qt::ForwardButton); }), 1);
  EXPECT_EQ(moves([&] { Click(Middle(), Qt::NoModifier, Qt::BackButton); }), -1);
  EXPECT_EQ(moves([&] { TurnWheelHolding(Qt::LeftButton, 1); }), -1);
  EXPECT_EQ(Article().TopLine(), 0) << "letting go of the button is no click";
}

// ---- Selecting and copying

TEST_F(HandsTest, ADragThroughTheMiddleOfCharactersCopiesWholeOnes) {
  ReadText();
  const auto [row, col] = Find(kCatLine);
  ASSERT_GE(row, 0);
  std::set<std::u16string> copies;
  for (const double first : {2.1, 2.9, 3.1, 3.9})
    for (const double last : {10.1, 10.9, 11.1, 11.9}) {
      Drag(At(row, col + first), At(row, col + last));
      const std::u16string forwards = Selected();
      EXPECT_EQ(Copied(), forwards);
      copies.insert(forwards);
      Drag(At(row, col + last), At(row, col + first));
      EXPECT_EQ(Copied(), forwards) << first << ' ' << last;
    }
  // With the two characters at the ends or without them.
  for (const std::u16string& copy : copies)
    EXPECT_TRUE((std::set<std::u16string>{u"咪喜歡曬太", u"咪喜歡曬", u"喜歡曬太", u"喜歡曬"}).count(copy))
        << Utf8(copy);
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
  doc->Change(u"Basic", u"CopyWhenSelect", u"1");
  Drag(At(row, col + 1.0), At(row, col + 4.0));
  EXPECT_EQ(Clipboard(), u"lmn");
}

TEST_F(HandsTest, ASelectionOfTheArticleGoesOnAsItScrolls) {
  ReadText();
  const auto [row, col] = Find(kFoxLine);
  ASSERT_GE(row, 0);
  Drag(At(row, col), At(row, col + 3.0));
  TurnWheel(-1, Middle());
  ASSERT_TRUE(AtRest(QApplication::wheelScrollLines()));
  EXPECT_EQ(Selected(), u"The");
  Press(Qt::Key_Left);
  ASSERT_TRUE(AtList());
  EXPECT_FALSE(View().Selected().IsShown()) << "the text is gone";
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
  GoToBoard();
  PressWith(Qt::ControlModifier, Qt::Key_P);
  ASSERT_TRUE(Shows(u"標題："));
  TypeText("pasted");
  Enter();
  ASSERT_TRUE(Until([&] { return Is(PF_EDITOR); })) << ScreenAsUtf8();
  ASSERT_TRUE(doc->Fields().pasteAutoChangeLine);
  PutOnClipboard(QString::fromStdU16String(text));
  PressWith(Qt::ControlModifier, Qt::Key_V);
  ASSERT_TRUE(Shows(text.substr(text.size() - 4))) << ScreenAsUtf8();
  PressWith(Qt::ControlModifier, Qt::Key_X);
  ASSERT_TRUE(Shows(u"檔案處理"));
  Enter();
  ASSERT_TRUE(Shows(u"順利貼出文章"));
  Enter();
  ASSERT_TRUE(AtList());
  GoToArticle(u"pasted");
  std::u16string posted;
  for (int line = 0; line < Lines().Count(); ++line) {
    const std::u16string words = FromBig5(TextOf(Lines().At(line)));
    posted += words.substr(0, words.find_last_not_of(u' ') + 1);
  }
  EXPECT_NE(posted.find(text), std::u16string::npos);
}

TEST_F(HandsTest, SeveralLinesForAMenuAreAskedAboutFirst) {
  TypeText("t");
  ASSERT_TRUE(Until([&] { return View().Screen().cursorRow == 14; })) << ScreenAsUtf8();
  PutOnClipboard("m\nx\ng\n");
  bool asked = false;
  AnswerDialogs(
      [&] {
        PressWith(Qt::ControlModifier, Qt::Key_V);
        Until([&] { return asked; });
      },
      {[&](QDialog& dialog) {
        asked = true;
        dialog.reject();
      }});
  // What is typed afterwards comes to the page that was there before.
  Press(Qt::Key_Up);
  ASSERT_TRUE(Until([&] { return View().Screen().cursorRow == 13; })) << ScreenAsUtf8();
  EXPECT_TRUE(AtMainMenu());
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
  const auto isUnderlined = [&](int at) {
    return (View().Frame().page[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(at)].style &
            CS_UNDERLINE) != 0;
  };
  const int end = col + static_cast<int>(kWebLink.size());
  PointAt(At(row + 8, 70.5));
  const QImage before = lowerEdge();
  PointAt(At(row, col + 5.5));
  ASSERT_TRUE(View().Links().Current());
  EXPECT_EQ(View().Links().Current()->address, kWebLink);
  EXPECT_TRUE(isUnderlined(col) && isUnderlined(end - 1));
  EXPECT_FALSE(isUnderlined(col - 1) || isUnderlined(end));
  EXPECT_NE(lowerEdge(), before) << "where it leads";
  PointAt(At(row + 8, 70.5));
  EXPECT_FALSE(isUnderlined(col));
  EXPECT_EQ(lowerEdge(), before);

  EXPECT_TRUE(opener.opened.empty());
  Click(At(row, end - 0.5));
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
  EXPECT_EQ(doc->OpenArticle().board, linked.board);
  EXPECT_TRUE(opener.opened.empty());
}

// ---- Names

TEST_F(HandsTest, KeysOverAnIdChangeItsEntryInTheLists) {
  doc->Change(u"Basic", u"AddBlackHotKey", u"1");
  GoToBoard();
  const auto [row, col] = Find(kAuthor);
  ASSERT_GE(row, 0);
  const auto entry = [&] { return doc->Store().Names().Find(kAuthor); };
  const std::string page = ScreenAsUtf8();
  const unsigned screens = View().ScreenCount();
  PointAt(At(row, col + 2.5));
  TypeText("`");
  ASSERT_TRUE(entry() && entry()->kind == ListKind::kBlack);
  std::ifstream file(ProgramHome() / "black.txt", std::ios::binary);
  const std::string kept{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NE(kept.find(Utf8(kAuthor)), std::string::npos);
  TypeText("`");
  EXPECT_EQ(entry(), nullptr);
  TypeText("3");
  ASSERT_TRUE(entry());
  EXPECT_NE(View().Frame().page[static_cast<std::size_t>(row)].pennants, 0) << "and it is seen at once";
  TypeText("u");
  EXPECT_TRUE(entry() && entry()->underline);
  TypeText("0");
  TypeText("u");
  EXPECT_FALSE(entry());
  TypeText("~");
  EXPECT_TRUE(entry());
  EXPECT_EQ(View().ScreenCount(), screens) << "none of these keys came to the BBS";
  EXPECT_EQ(ScreenAsUtf8(), page);

  PointAt(At(row, 60.5));
  TypeText("3");
  EXPECT_TRUE(Shows(u"跳至第幾項")) << "elsewhere they are the BBS's";
}

}  // namespace
}  // namespace quillet
