// What the right button offers on pictures and on links that show them, and what comes of it.
#include <fstream>
#include <sstream>

#include <QClipboard>
#include <QFileDialog>
#include <QMenu>
#include <QMimeData>

#include "tests/app/dialogs/dialog_answers.h"
#include "tests/app/picture_article_fixture.h"

namespace quillet {
namespace {

class PictureCommandsTest : public PictureArticleTest {
 protected:
  // Entries of the menu under the right button, grey ones in brackets; nothing is chosen.
  QString MenuAt(QWidget& widget, const QPointF& at) {
    OpenMenu(widget, at);
    QStringList texts;
    for (const QAction* const entry : menu->actions())
      if (!entry->isSeparator()) texts << (entry->isEnabled() ? entry->text() : '[' + entry->text() + ']');
    menu->close();
    return texts.join(' ').remove(QRegularExpression("\\(&.\\)"));
  }
  void Choose(QWidget& widget, const QPointF& at, const QString& words) {
    OpenMenu(widget, at);
    const QList<QAction*> entries = menu->actions();
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const QAction* entry) { return entry->text().startsWith(words); });
    ASSERT_NE(found, entries.end()) << words.toStdString();
    menu->close();
    (*found)->trigger();
  }
  void OpenMenu(QWidget& widget, const QPointF& at) {
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, at, widget.mapToGlobal(at), Qt::RightButton,
                        type == QEvent::MouseButtonPress ? Qt::RightButton : Qt::NoButton, {});
      QCoreApplication::sendEvent(&widget, &event);
    }
    menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
  }
  int RowWith(std::u16string_view words) {
    for (int row = 0; row < kRows; ++row)
      if (FromBig5(Row(static_cast<std::size_t>(row))).find(words) != std::u16string::npos) return row;
    return -1;
  }
  QPointF InCell(int row) { return View().Surface().CellRect(row, 3).center(); }
  PictureViewer& OpenViewer() {
    Click(kLink + 2, 3);
    EXPECT_TRUE(View().Viewer().IsOpen());
    return *View().findChild<PictureViewer*>();
  }
  void OpenPicture() {
    Click(kLink, 3);
    ASSERT_TRUE(Shows(1));
  }

  QPointer<QMenu> menu;
};

TEST_F(PictureCommandsTest, AClosedLinkOpensAndAPictureCloses) {
  const QString closed = MenuAt(View(), InCell(kLink));
  EXPECT_TRUE(closed.startsWith(u"開啟圖片 開啟連結 複製連結網址 "_qs)) << closed.toStdString();
  Choose(View(), InCell(kLink), u"開啟圖片"_qs);
  ASSERT_TRUE(Shows(1));
  EXPECT_TRUE(MenuAt(View(), InCell(kLink)).startsWith(u"關閉圖片 開啟連結 "_qs));
  const QString all = u"另存圖片… 複製圖片 複製圖片網址 在瀏覽器開啟 關閉圖片"_qs;
  EXPECT_TRUE(MenuAt(View(), InCell(kLink + 2)).startsWith(all + ' '));
  Choose(View(), InCell(kLink + 2), u"在瀏覽器開啟"_qs);
  EXPECT_EQ(opener.opened, std::vector<std::u16string>{u"https://pictures.example/a.png"});
  Choose(View(), InCell(kLink + 2), u"複製圖片網址"_qs);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "https://pictures.example/a.png");

  PictureViewer& viewer = OpenViewer();
  EXPECT_EQ(MenuAt(viewer, {50, 50}), all);
  Choose(viewer, {50, 50}, u"關閉圖片"_qs);
  EXPECT_FALSE(viewer.IsOpen());
  EXPECT_EQ(Shown().size(), 1U);
  Choose(View(), InCell(kLink + 2), u"關閉圖片"_qs);
  EXPECT_TRUE(Shown().empty());

  files.clear();
  Press(Qt::Key_End);
  ASSERT_TRUE(AtRest(Last()));
  Click(RowWith(u"e.png"), 20);
  ASSERT_TRUE(Until([&] { return RowWith(u"按一下再試") >= 0; }));
  EXPECT_TRUE(
      MenuAt(View(), InCell(RowWith(u"按一下再試"))).startsWith(u"[另存圖片…] [複製圖片] 複製圖片網址 "_qs));
}

TEST_F(PictureCommandsTest, TheFileIsSavedAsItCameAndAFailureIsTold) {
  OpenPicture();
  QString proposed;
  const auto save = [&](const std::filesystem::path& file, const std::function<void()>& before = {}) {
    return [&, file, before](QDialog& dialog) {
      auto& question = dynamic_cast<QFileDialog&>(dialog);
      proposed = QFileInfo(question.selectedFiles().first()).fileName();
      question.setDirectory(QString::fromStdString(file.parent_path().string()));
      question.selectFile(QString::fromStdString(file.string()));
      if (before) before();
      dialog.accept();
    };
  };
  const std::filesystem::path file = home.Path() / "kept.png";
  AnswerDialogs([&] { Choose(View(), InCell(kLink + 2), u"另存圖片"_qs); }, {save(file)});
  EXPECT_EQ(proposed, "picture-a.png");
  std::ostringstream saved;
  saved << std::ifstream(file, std::ios::binary).rdbuf();
  EXPECT_EQ(QByteArray::fromStdString(saved.str()), files["/a.png"]);
  EXPECT_EQ(View().LastToast().Text(), u"已儲存：kept.png"_qs);

  PictureViewer& viewer = OpenViewer();
  const std::filesystem::path gone = home.Path() / "gone";
  std::filesystem::create_directory(gone);
  AnswerDialogs([&] { Press(Qt::Key_S, {}, Qt::ControlModifier); },
                {save(gone / "a.png", [&] { std::filesystem::remove(gone); })});
  EXPECT_TRUE(viewer.IsOpen());
  EXPECT_TRUE(viewer.Caption().startsWith(u"圖片沒有儲存　a.png"_qs)) << viewer.Caption().toStdString();
  EXPECT_TRUE(viewer.Caption().contains("gone"));
}

TEST_F(PictureCommandsTest, NothingButThePixelsGoesToTheClipboard) {
  QImage noted = DrawnPicture(300, 200);
  noted.setText("Location", "at home");
  files["/a.png"] = PictureFileBytes(noted, "PNG");
  OpenPicture();
  QGuiApplication::clipboard()->clear();
  OpenViewer();
  Press(Qt::Key_C, {}, Qt::ControlModifier);
  const auto image = [] { return QGuiApplication::clipboard()->image(); };
  ASSERT_TRUE(Until([&] { return !image().isNull(); }));
  EXPECT_EQ(image().convertToFormat(QImage::Format_RGB32), DrawnPicture(300, 200));
  EXPECT_TRUE(image().textKeys().isEmpty());
  const QMimeData& data = *QGuiApplication::clipboard()->mimeData();
  EXPECT_FALSE(data.hasText() || data.hasUrls() || data.hasHtml());
}

}  // namespace
}  // namespace quillet
