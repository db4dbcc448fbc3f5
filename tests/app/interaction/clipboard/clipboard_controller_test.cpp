#include "app/interaction/clipboard/clipboard_controller.h"

#include <gtest/gtest.h>
#include <vector>

#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QWindow>

#include "app/interaction/clipboard/clipboard_device.h"
#include "app/window/tour/tour.h"
#include "input/paste_plan.h"
#include "tests/app/document_fixture.h"
#include "tests/support/picture_server.h"

namespace quillet {
namespace {

QMessageBox* BoxOf(const QWidget& window) {
  const auto boxes = window.findChildren<QMessageBox*>();
  for (QMessageBox* const box : boxes)
    if (box->isVisible()) return box;
  return nullptr;
}

// Leads requests for the shortener to a server on loopback.
class LoopbackNetwork : public QNetworkAccessManager {
 public:
  explicit LoopbackNetwork(const PictureServer& server) : server_(server) {}

 protected:
  QNetworkReply* createRequest(Operation operation, const QNetworkRequest& original,
                               QIODevice* outgoing) override {
    EXPECT_EQ(original.url().scheme(), u"https");
    EXPECT_EQ(original.url().host(), u"short.test");
    QNetworkRequest request(original);
    request.setUrl(server_.Address(original.url().toString(QUrl::RemoveScheme | QUrl::RemoveAuthority)));
    return QNetworkAccessManager::createRequest(operation, request, outgoing);
  }

 private:
  const PictureServer& server_;
};

// A desk over a connected document, with a window of its own.
class ClipboardControllerTest : public DocumentTest {
 protected:
  struct Sent {
    std::u16string text;
    Wrap wrap;
    bool operator==(const Sent&) const = default;
  };

  void SetUp() override {
    endpoints.values["shortener/host"] = "short.test";
    DocumentTest::SetUp();
    desk = std::make_unique<ClipboardController>(
        ClipboardController::Parts{.connection = doc->GetConnection(),
                                   .automations = doc->GetAutomations(),
                                   .settings = Fields(),
                                   .hosts = doc->Hosts(),
                                   .window = window},
        ClipboardController::Handlers{.send =
                                          [this](std::u16string_view text, Wrap wrap) {
                                            sent.push_back({std::u16string(text), wrap});
                                          },
                                      .pageKind = [this] { return page; }},
        &network);
    Connect();
    QObject::connect(desk.get(), &ClipboardController::Working, [this](bool now) { working.push_back(now); });
    QObject::connect(desk.get(), &ClipboardController::Said, [this](const QString& words) { said = words; });
    window.show();
    window.activateWindow();
  }

  void Connect() {
    script = std::make_shared<Script>();
    OpenScript();
    ASSERT_TRUE(doc->GetConnection().IsConnected());
  }
  void EndConnection() {
    script->End(EndReason::kClosedByPeer);
    ASSERT_TRUE(Until([&] { return !doc->GetConnection().IsConnected(); }));
    doc->OnScreen(ScreenReason::kDisconnected, {});
    desk->OnScreen();
  }

  void ShowPage(PageKind kind) {
    page = kind;
    desk->OnScreen();
  }
  void Paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    desk->Paste();
  }
  void Click(const QString& caption) {
    QMessageBox* const box = BoxOf(window);
    ASSERT_NE(box, nullptr);
    const auto buttons = box->buttons();
    for (QAbstractButton* const button : buttons)
      if (button->text() == caption) return button->click();
    FAIL() << "no button " << caption.toStdString();
  }
  void PasteShortLink(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    desk->PasteShortLink();
  }
  bool Worked() {
    return Until([&] { return working == std::vector{true, false}; });
  }

  QByteArray asked;
  QByteArray answer = "https://s.test/a\n";
  QPointer<QTcpSocket> held;  // a question that waits for its answer
  bool holds = false;
  QString said;
  PictureServer server{[this](QTcpSocket& client, const QByteArray& path) {
    asked = path;
    held = &client;
    if (!holds) PictureServer::Answer(client, "200 OK", {}, answer);
  }};
  LoopbackNetwork network{server};
  QWidget window;
  PageKind page = PageKind::kOther;
  std::vector<Sent> sent;
  std::vector<bool> working;
  std::unique_ptr<ClipboardController> desk;
};

TEST_F(ClipboardControllerTest, TextIsCopiedWithOrWithoutItsClosingNul) {
  EXPECT_TRUE(desk->CopyText(u"看板 😀\r\n"));
  EXPECT_EQ(QGuiApplication::clipboard()->text(), u"看板 😀\r\n"_qs);
  const std::u16string text = u"中文";
  EXPECT_TRUE(desk->SetClipboard(ClipboardFormat::kUnicodeText, text.c_str(), 6));
  EXPECT_EQ(QGuiApplication::clipboard()->text(), u"中文"_qs);
  EXPECT_TRUE(desk->SetClipboard(ClipboardFormat::kUnicodeText, text.c_str(), 2));
  EXPECT_EQ(QGuiApplication::clipboard()->text(), u"中"_qs);
  // Nothing selected: what was copied before stays.
  EXPECT_FALSE(desk->CopyText({}));
  EXPECT_EQ(QGuiApplication::clipboard()->text(), u"中"_qs);
}

TEST_F(ClipboardControllerTest, HtmlComesWithItsText) {
  EXPECT_TRUE(desk->CopyHtml(u"<b>看板</b>", u"看板"));
  const QMimeData& data = *QGuiApplication::clipboard()->mimeData();
  EXPECT_EQ(data.html(), u"<b>看板</b>"_qs);
  EXPECT_EQ(data.text(), u"看板"_qs);
  EXPECT_TRUE(desk->SetClipboard(ClipboardFormat::kHtml, "<i>\xE4\xB8\xAD", 6));
  EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->html(), u"<i>中"_qs);
}

TEST_F(ClipboardControllerTest, TheEditorGetsLinesBrokenAsTheUserWants) {
  ShowPage(PageKind::kEditor);
  Paste(u"一\n二\n"_qs);
  doc->GetSettings().Set(&Settings::pasteAutoChangeLine, false);
  Paste(u"三"_qs);
  EXPECT_EQ(sent, (std::vector<Sent>{{u"一\r二\r", Wrap::kAt78ColumnsLeftOpen}, {u"三", Wrap::kNone}}));
  EXPECT_FALSE(desk->IsAsking());
}

TEST_F(ClipboardControllerTest, TheEditorGetsColoursAsTheUserWants) {
  ShowPage(PageKind::kEditor);
  for (const QString& caption : {u"連同色彩"_qs, u"只貼文字"_qs, u"取消"_qs}) {
    Paste(u"\x1B[1;31m紅\x1B[m\n"_qs);
    Click(caption);
  }
  EXPECT_EQ(sent, (std::vector<Sent>{{u"\x15[1;31m紅\x15[m\r", Wrap::kNone},
                                     {u"紅\r", Wrap::kAt78ColumnsLeftOpen}}));
}

TEST_F(ClipboardControllerTest, SeveralLinesWaitForTheUsersWord) {
  ShowPage(PageKind::kArticleList);
  const QString lines = u"<b>一</b> & b\n二\n三\n四\n"_qs;
  Paste(lines);
  Click(u"只貼第一行"_qs);
  EXPECT_EQ(std::exchange(sent, {}), (std::vector<Sent>{{u"<b>一</b> & b", Wrap::kNone}}));
  Paste(lines);
  QMessageBox* const box = BoxOf(window);
  ASSERT_NE(box, nullptr);
  EXPECT_TRUE(desk->IsAsking());
  EXPECT_EQ(box->text(), u"要貼上 4 行文字嗎？"_qs);
  EXPECT_TRUE(box->informativeText().contains(u"每一行都會像按下 Enter 一樣送出"_qs));
  EXPECT_TRUE(box->informativeText().contains(u"<b>一</b> & b\n二\n三\n…"_qs));
  const auto labels = box->findChildren<QLabel*>();
  for (const QLabel* const label : labels) {
    const bool isPlain = label->text().isEmpty() || label->textFormat() == Qt::PlainText;
    EXPECT_TRUE(isPlain) << label->text().toStdString();
  }
  EXPECT_TRUE(sent.empty());
  Click(u"貼上"_qs);
  EXPECT_EQ(sent, (std::vector<Sent>{{u"<b>一</b> & b\r二\r三\r四", Wrap::kNone}}));
  EXPECT_FALSE(desk->IsAsking());
}

TEST_F(ClipboardControllerTest, EnterAndEscapeDecline) {
  for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
    Paste(u"一\n二"_qs);
    QMessageBox* const box = BoxOf(window);
    ASSERT_NE(box, nullptr);
    ASSERT_TRUE(Until([&] { return box->isActiveWindow(); }));
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(box->windowHandle(), &press);
    EXPECT_FALSE(desk->IsAsking());
    EXPECT_TRUE(sent.empty());
  }
}

TEST_F(ClipboardControllerTest, TheQuestionGoesWithItsPage) {
  ShowPage(PageKind::kReader);
  Paste(u"一\n二"_qs);
  ShowPage(PageKind::kReader);
  EXPECT_TRUE(desk->IsAsking()) << "still a reader";
  ShowPage(PageKind::kArticleList);
  EXPECT_FALSE(desk->IsAsking());
  EXPECT_EQ(BoxOf(window), nullptr);
  Paste(u"一\n二"_qs);
  // The page has changed, but nobody has said so yet.
  page = PageKind::kReader;
  Click(u"貼上"_qs);
  EXPECT_TRUE(sent.empty());
}

TEST_F(ClipboardControllerTest, TheQuestionGoesWithItsConnection) {
  Paste(u"一\n二"_qs);
  EndConnection();
  EXPECT_FALSE(desk->IsAsking());
  Paste(u"一\n二"_qs);
  EXPECT_FALSE(desk->IsAsking()) << "nowhere to paste to";
  Connect();
  Paste(u"一\n二"_qs);
  // Ended and made anew within one turn of the window.
  Connect();
  desk->OnScreen();
  EXPECT_FALSE(desk->IsAsking());
  EXPECT_TRUE(sent.empty());
}

TEST_F(ClipboardControllerTest, OnlyTextIsPasted) {
  const auto paste = [this] {
    desk->Paste();
    desk->PasteShortLink();
  };
  QGuiApplication::clipboard()->setImage(QImage(2, 2, QImage::Format_RGB32));
  paste();
  auto* const files = new QMimeData;
  files->setUrls({QUrl::fromLocalFile("/tmp/a"), QUrl::fromLocalFile("/tmp/b")});
  QGuiApplication::clipboard()->setMimeData(files);
  paste();
  QGuiApplication::clipboard()->clear();
  paste();
  Paste(QString(kLongestPaste + 1, u'字'));
  ASSERT_NE(BoxOf(window), nullptr);
  EXPECT_EQ(BoxOf(window)->text(), u"剪貼簿裡的文字太長 (%1 字)"_qs.arg(kLongestPaste + 1));
  Paste(QString(u"a\0\x1B[0mb"_qs));
  EXPECT_EQ(sent, (std::vector<Sent>{{u"ab", Wrap::kNone}}));
  EXPECT_FALSE(desk->IsAsking());
  EXPECT_EQ(server.Requests(), 0);
}

TEST_F(ClipboardControllerTest, TheShortLinkTakesThePlaceOfTheLink) {
  ShowPage(PageKind::kTyping);
  PasteShortLink(u"https://www.bbs.example/a?b=c&d=e\n"_qs);
  EXPECT_TRUE(sent.empty());
  ASSERT_TRUE(Worked());
  EXPECT_EQ(asked, "/api-create.php?url=https://www.bbs.example/a?b=c&d=e");
  EXPECT_EQ(sent, (std::vector<Sent>{{u"https://s.test/a", Wrap::kNone}}));
}

TEST_F(ClipboardControllerTest, WithoutAShortLinkTheTextItselfIsPasted) {
  ShowPage(PageKind::kEditor);
  answer = "<html>Error</html>";
  PasteShortLink(u"https://www.bbs.example/長\r\n"_qs);
  ASSERT_TRUE(Worked());
  EXPECT_EQ(sent, (std::vector<Sent>{{u"https://www.bbs.example/長", Wrap::kAt78ColumnsLeftOpen}}));
}

TEST_F(ClipboardControllerTest, TheShortenerIsNotBotheredWithWhatIsNoLink) {
  ShowPage(PageKind::kEditor);
  PasteShortLink(u"一\n二"_qs);
  PasteShortLink(QString(10000, u'x'));
  ASSERT_EQ(sent.size(), 2U);
  EXPECT_EQ(sent[0].text, u"一\r二");
  EXPECT_TRUE(working.empty());
  EXPECT_EQ(server.Requests(), 0);
}

TEST_F(ClipboardControllerTest, AShortLinkThatComesTooLateIsDropped) {
  holds = true;
  ShowPage(PageKind::kTyping);
  PasteShortLink(u"https://a.example/"_qs);
  ASSERT_TRUE(Until([&] { return !held.isNull(); }));
  ShowPage(PageKind::kArticleList);
  PictureServer::Answer(*held, "200 OK", {}, answer);
  ASSERT_TRUE(Worked());
  EXPECT_TRUE(sent.empty()) << "its letters would be commands here";
  EXPECT_EQ(said, u"畫面已經不同，短網址沒有貼上"_qs);

  working.clear();
  PasteShortLink(u"https://a.example/"_qs);
  EndConnection();
  EXPECT_EQ(working, (std::vector{true, false})) << "nothing is left to wait for";
}

TEST_F(ClipboardControllerTest, AShortLinkDoesNotComeBetweenTheKeysOfAnAutomation) {
  holds = true;
  ShowPage(PageKind::kTyping);
  PasteShortLink(u"https://a.example/"_qs);
  ASSERT_TRUE(Until([&] { return !held.isNull(); }));
  ASSERT_TRUE(doc->GetAutomations().JumpTo({.board = u"Test", .code = u"1a2B3c4_"}));
  PictureServer::Answer(*held, "200 OK", {}, answer);
  ASSERT_TRUE(Worked());
  EXPECT_TRUE(sent.empty());
  EXPECT_EQ(doc->GetAutomations().Current(), Activity::kJump);
  EXPECT_FALSE(said.isEmpty());
}

}  // namespace
}  // namespace quillet
