// A session by mouse and by keyboard, from the events that the window gets to what the BBS shows: browsing,
// selecting, copying, links and lists of names. The demo BBS has one more board, of the texts in
// tests/app/data.

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QWindow>

#include "tests/app/demo_article_fixture.h"

namespace quillet {
namespace {

const std::u16string kFoxLine = u"The quick brown fox 跳過了那隻懶惰的狗 over there";
const std::u16string kCatLine = u"貓咪喜歡曬太陽，也喜歡看雨";
const std::u16string kLetterLines[] = {u"abcdefghij", u"klmnopqrst", u"uvwxyzABCD"};
const std::u16string kSecretLink = u"https://www.example.com/jabberwocky";
const std::u16string kTextTitle = u"文字與連結";
const std::u16string kLinkedCode = u"1gRJZeDM";  // of the first article of the board Cats
const std::u16string kAuthor = u"hatter";

class HandsTest : public DemoArticleTest {
 protected:
  void SetUp() override {
    DemoArticleTest::SetUp();
    ASSERT_TRUE(AtMainMenu());
    QGuiApplication::clipboard()->clear();
  }

  // ---- The board

  std::filesystem::path Content() override {
    const std::filesystem::path content = home.Path() / "content";
    for (const char* part : {"/demo/content", "/tests/app/data"})
      std::filesystem::copy(std::string(QUILLET_SOURCE_DIR) + part, content,
                            std::filesystem::copy_options::recursive);
    return content;
  }
  static std::string Utf8(const std::u16string& text) {
    return QString::fromStdU16String(text).toStdString();
  }

  // ---- Where we are

  bool Is(std::uint32_t flags) { return (View().Screen().pageFlags & flags) == flags; }
  bool ScreenHolds(const std::u16string& text) {
    return ScreenAsText(View().Screen()).find(text) != std::u16string::npos;
  }
  bool Shows(const std::u16string& text) {
    return Until([&] { return ScreenHolds(text); });
  }
  bool AtMainMenu() { return Shows(u"【主功能表】") && Shows(u"離開，再見"); }
  bool AtBoardList() {
    return Until([&] { return ScreenHolds(u"【看板列表】") && Is(PF_LIST_CURSOR); });
  }
  bool AtList() {
    return Until([&] { return ScreenHolds(u"看板《Hands》") && Is(PF_ARTICLE_LIST_CURSOR); });
  }
  // An article whose title holds the words is shown whole, from its top.
  bool Reads(const std::u16string& words) {
    return Until([&] {
      return Seen().article.title.find(words) != std::u16string::npos && Article().IsShown() &&
             Lines().IsComplete() && Article().TopLine() == Article().TargetLine();
    });
  }
  void GoToBoard() {
    TypeText("sHands");
    Enter();
    ASSERT_TRUE(AtList()) << ScreenAsUtf8();
  }
  // From the list.
  void GoToArticle(const std::u16string& words) {
    TypeText('/' + QString::fromStdU16String(words));
    Enter();
    const std::string wanted = ToBig5(words);
    ASSERT_TRUE(Until([&] {
      return Is(PF_ARTICLE_LIST_CURSOR) &&
             View().Screen().RowText(View().Screen().cursorRow).find(wanted) != std::string_view::npos;
    })) << ScreenAsUtf8();
    Press(Qt::Key_Right);
    ASSERT_TRUE(Reads(words)) << ScreenAsUtf8();
  }
  void ReadText() {
    GoToBoard();
    GoToArticle(kTextTitle);
  }

  // ---- Places in the picture

  struct Spot {
    int row = -1;
    int col = -1;
  };
  // Where the text begins; none: row -1.
  Spot Find(const std::u16string& text) {
    const std::string wanted = ToBig5(text);
    for (int row = 0; row < kRows; ++row)
      if (const std::size_t col = Row(static_cast<std::size_t>(row)).find(wanted); col != std::string::npos)
        return {row, static_cast<int>(col)};
    return {};
  }
  // `col` with a fraction: 2.5 is the middle of the third cell.
  QPointF At(int row, double col) {
    const int cell = static_cast<int>(col);
    const QRectF place = View().Surface().CellRect(row, cell);
    return {place.left() + (col - cell) * place.width(), place.center().y()};
  }
  QPointF LeftMargin() { return {3.0, View().height() * 0.7}; }

  // ---- The mouse

  void SendMouse(QEvent::Type type, const QPointF& at, Qt::MouseButton button, Qt::MouseButtons held,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QPointF inWindow = View().mapTo(frame.get(), at);
    QMouseEvent event(type, inWindow, inWindow, frame->mapToGlobal(inWindow), button, held, modifiers);
    QCoreApplication::sendEvent(frame->windowHandle(), &event);
  }
  void PointAt(const QPointF& at, Qt::MouseButtons held = Qt::NoButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    SendMouse(QEvent::MouseMove, at, Qt::NoButton, held, modifiers);
  }
  void MouseDown(const QPointF& at, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                 Qt::MouseButton button = Qt::LeftButton) {
    SendMouse(QEvent::MouseButtonPress, at, button, button, modifiers);
  }
  void MouseUp(const QPointF& at, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               Qt::MouseButton button = Qt::LeftButton) {
    SendMouse(QEvent::MouseButtonRelease, at, button, Qt::NoButton, modifiers);
  }
  void Click(const QPointF& at, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
             Qt::MouseButton button = Qt::LeftButton) {
    PointAt(at, Qt::NoButton, modifiers);
    MouseDown(at, modifiers, button);
    MouseUp(at, modifiers, button);
  }
  void ClickOn(const std::u16string& text) {
    const Spot spot = Find(text);
    ASSERT_GE(spot.row, 0) << Utf8(text) << " is not in sight:\n" << ScreenAsUtf8();
    Click(At(spot.row, spot.col + 1.5));
  }
  void DoubleClick(const QPointF& at) {
    Click(at);
    SendMouse(QEvent::MouseButtonDblClick, at, Qt::LeftButton, Qt::LeftButton);
    MouseUp(at);
  }
  void TripleClick(const QPointF& at) {
    DoubleClick(at);
    MouseDown(at);
    MouseUp(at);
  }
  void Drag(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    PointAt(from, Qt::NoButton, modifiers);
    MouseDown(from, modifiers);
    PointAt((from + to) / 2, Qt::LeftButton, modifiers);
    PointAt(to, Qt::LeftButton, modifiers);
    MouseUp(to, modifiers);
  }
  // Notches, positive away from the user.
  void TurnWheel(int notches) {
    const QPointF inWindow = View().mapTo(frame.get(), QRectF(View().rect()).center());
    QWheelEvent event(inWindow, frame->mapToGlobal(inWindow), {}, QPoint(0, notches * 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(frame->windowHandle(), &event);
  }

  // ---- Selection and clipboard

  std::u16string Selected() {
    return QString::fromStdU16String(View().Selected().Text()).remove(u'\r').toStdU16String();
  }

  // With plain line ends.
  static std::u16string Clipboard() {
    return QGuiApplication::clipboard()->text().remove(u'\r').toStdU16String();
  }
  // Copying ends the selection.
  std::u16string Copied() {
    QGuiApplication::clipboard()->clear();
    Press(Qt::Key_C, {}, Qt::ControlModifier | Qt::ShiftModifier);
    return Clipboard();
  }
};

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

TEST_F(HandsTest, TheButtonsBesideThePageAreItsOwnAndWorkByKeyboard) {
  frame->SizeForView({1280, 720});
  const auto offers = [&](const QString& name) {
    QCoreApplication::processEvents();
    for (const auto* const button : View().findChildren<QAbstractButton*>())
      if (button->text() == name && button->isVisible()) return button->isEnabled();
    return false;
  };
  EXPECT_TRUE(offers(u"打開"_qs) && offers(u"熱門文章"_qs) && !offers(u"發表文章"_qs));
  GoToBoard();
  EXPECT_TRUE(offers(u"發表文章"_qs) && !offers(u"加入書籤"_qs));
  GoToArticle(kTextTitle);
  EXPECT_TRUE(offers(u"加入書籤"_qs) && !offers(u"發表文章"_qs));
  Press(Qt::Key_F6);
  Press(Qt::Key_Down);
  Press(Qt::Key_Down);
  Enter();
  EXPECT_TRUE(Until([&] { return Article().TopLine() > 0; })) << "to the end";
  EXPECT_TRUE(View().hasFocus());
  Press(Qt::Key_F6);
  Enter();
  ASSERT_TRUE(AtList()) << ScreenAsUtf8();
  Press(Qt::Key_F6);
  TypeText("q");
  ASSERT_TRUE(AtMainMenu()) << "who types means the terminal";
  doc->GetSettings().Set(&Settings::hideTopLeftIcons, true);
  EXPECT_FALSE(offers(u"打開"_qs));
}

// ---- Selecting and copying

TEST_F(HandsTest, PlacesStandForAddressesWhichComeBackUnderThePointerAndInCopies) {
  OpenWhole(talkative);
  View().Commands().Run(Command::kFirstPush);
  ASSERT_TRUE(AtRest(Article().TargetLine()));
  const int line = Article().TopLine();
  const CellRange cells = Article().ShownLine(line)->push->address;
  const std::string address =
      TextOf(*Article().ShownLine(line))
          .substr(static_cast<std::size_t>(cells.first), static_cast<std::size_t>(cells.last - cells.first));
  doc->GetSettings().Set(&Settings::ipToName, true);
  const auto isShown = [&] { return Row(0).find(address) != std::string::npos; };
  EXPECT_FALSE(isShown());
  EXPECT_EQ(Row(0).substr(static_cast<std::size_t>(cells.last)),
            TextOf(*Article().ShownLine(line)).substr(static_cast<std::size_t>(cells.last)))
      << "nothing moves";
  PointAt(At(0, cells.last - 0.5));
  EXPECT_TRUE(isShown());
  EXPECT_TRUE(View().Places().HasLabel());
  PointAt(At(0, 3.5));
  EXPECT_FALSE(isShown() || View().Places().HasLabel());
  Drag(At(0, 0.5), At(0, 79.5));
  View().Commands().Run(Command::kCopy);
  EXPECT_NE(QGuiApplication::clipboard()->text().indexOf(QString::fromStdString(address)), -1);
  TypeText("i");
  EXPECT_TRUE(isShown());
  EXPECT_FALSE(Fields().ipToName);
  TypeText("i");
  EXPECT_FALSE(isShown());

  int relayed = line;
  while (TextOf(*Article().ShownLine(relayed)).find("203.0.113.28 ") == std::string::npos)
    ++relayed;
  const_cast<ArticleView&>(Article()).ScrollTo(relayed);
  ASSERT_TRUE(AtRest(relayed));
  EXPECT_NE(Row(0).find(ToBig5(u" *VPN日本 ")), std::string::npos);
  doc->GetSettings().Set(&Settings::ipDetectProxy, false);
  EXPECT_NE(Row(0).find(ToBig5(u"     日本 ")), std::string::npos);
}

TEST_F(HandsTest, ADragThroughTheMiddleOfCharactersCopiesWholeOnes) {
  ReadText();
  const auto [row, col] = Find(kCatLine);
  ASSERT_GE(row, 0);
  // A character is in when its middle is.
  for (const double first : {2.9, 3.1})
    for (const double last : {10.9, 11.1}) {
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
  View().Commands().Run(Command::kCopyHtml);
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
    View().Commands().Run(Command::kSelectAll);
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

// ---- Links

TEST_F(HandsTest, AnArticleThatIsNamedOpensOnTheBbs) {
  ReadText();
  const auto [row, col] = Find(u'#' + kLinkedCode);
  ASSERT_GE(row, 0);
  Click(At(row, col + 2.5));
  ASSERT_TRUE(Reads(u"板主（貓）")) << ScreenAsUtf8();
  EXPECT_EQ(Seen().article.board, u"Cats");
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
  EXPECT_NE(FileAt(ProgramHome() / "black.txt").find(Utf8(kAuthor)), std::string::npos);
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
