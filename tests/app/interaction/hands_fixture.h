// A window logged in at a demo BBS that has one more board, of known texts, and the user's hands: what mouse
// and keyboard send to the window.
#pragma once

#include <fstream>

#include <QClipboard>
#include <QGuiApplication>
#include <QWindow>

#include "tests/app/demo_article_fixture.h"
#include "tests/app/dialogs/dialog_answers.h"

namespace quillet {

inline const std::u16string kFoxLine = u"The quick brown fox 跳過了那隻懶惰的狗 over there";
inline const std::u16string kCatLine = u"貓咪喜歡曬太陽，也喜歡看雨";
inline const std::u16string kLetterLines[] = {u"abcdefghij", u"klmnopqrst", u"uvwxyzABCD"};
inline const std::u16string kWebLink = u"https://www.example.com/handbook/first-post";
inline const std::u16string kSecretLink = u"https://www.example.com/jabberwocky";
inline const std::u16string kTextTitle = u"文字與連結";
inline const std::u16string kAuthor = u"hatter";

class HandsTest : public DemoArticleTest {
 protected:
  void SetUp() override {
    DemoArticleTest::SetUp();
    ASSERT_TRUE(AtMainMenu());
    QGuiApplication::clipboard()->clear();
  }

  // ---- The board

  std::filesystem::path Content() override {
    const std::filesystem::path original = QUILLET_SOURCE_DIR "/demo/content";
    for (const demo::Board& board : demo::LoadContent(original).boards)
      if (board.info.name == "Cats") {
        linked = {.board = u"Cats", .code = FromBig5(board.articles.front()->code)};
        linkedTitle = FromBig5(board.articles.front()->title);
      }
    const std::filesystem::path content = home.Path() / "content";
    std::filesystem::copy(original, content, std::filesystem::copy_options::recursive);
    WriteBoard(content / "boards" / "Hands");
    return content;
  }
  // Pages of articles, the last one with the texts.
  void WriteBoard(const std::filesystem::path& folder) {
    std::filesystem::create_directory(folder);
    std::ofstream(folder / "board.txt")
        << "Class: 測試\nTitle: 手的練習場\nModerators: kagami\nPopularity: 7\nOrder: 1\n";
    int number = 0;
    for (int filler = 1; filler <= 43; ++filler)
      WriteArticle(folder, ++number, "filler " + std::to_string(filler), "一行而已\n");
    WriteArticle(folder, ++number, Utf8(u"[測試] " + kTextTitle), Text());
    WriteArticle(folder, ++number, "last", "最後一篇\n");
  }
  static void WriteArticle(const std::filesystem::path& folder, int number, const std::string& title,
                           const std::string& body) {
    const QString name = QStringLiteral("%1.txt").arg(number, 3, 10, QChar(u'0'));
    const QString date = QStringLiteral("2026-09-01 12:%1:00").arg(number, 2, 10, QChar(u'0'));
    std::ofstream(folder / name.toStdString())
        << "Author: " << Utf8(kAuthor) << " (帽匠)\nTitle: " << title << "\nDate: " << date.toStdString()
        << "\nFrom: 203.0.113.5\n\n"
        << body << "----- pushes\n推|dormouse|好|203.0.113.9|10/03 21:20\n"
        << "噓|jabber|" << Utf8(kSecretLink) << "|203.0.113.9|10/03 21:25\n"
        << "→|jabber|又來了|203.0.113.9|10/03 21:26\n";
  }
  std::string Text() const {
    std::u16string text = kFoxLine + u'\n' + kCatLine + u'\n';
    for (const std::u16string& line : kLetterLines)
      text += line + u'\n';
    text += u"    " + kWebLink + u"\n    見 #" + linked.code + u" (" + linked.board + u") 這一篇\n";
    for (int line = 0; line < 60; ++line)
      text += u"一行又一行\n";
    return Utf8(text);
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
  void BeginArticle(const QString& title) {
    GoToBoard();
    PressWith(Qt::ControlModifier, Qt::Key_P);
    ASSERT_TRUE(Shows(u"標題："));
    TypeText(title);
    Enter();
    ASSERT_TRUE(Until([&] { return Is(PF_EDITOR); })) << ScreenAsUtf8();
  }
  void PostAndRead(const std::u16string& title) {
    PressWith(Qt::ControlModifier, Qt::Key_X);
    ASSERT_TRUE(Shows(u"檔案處理"));
    Enter();
    ASSERT_TRUE(Shows(u"順利貼出文章"));
    Enter();
    ASSERT_TRUE(AtList());
    GoToArticle(title);
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

  void PressWith(Qt::KeyboardModifiers modifiers, int key) { Press(key, {}, modifiers); }
  void PutOnClipboard(const QString& text) { QGuiApplication::clipboard()->setText(text); }
  // With plain line ends.
  static std::u16string Clipboard() {
    return QGuiApplication::clipboard()->text().remove(u'\r').toStdU16String();
  }
  // Copying ends the selection.
  std::u16string Copied() {
    QGuiApplication::clipboard()->clear();
    PressWith(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_C);
    return Clipboard();
  }

  // What the article with the texts names.
  ArticleReference linked;
  std::u16string linkedTitle;
};

}  // namespace quillet
