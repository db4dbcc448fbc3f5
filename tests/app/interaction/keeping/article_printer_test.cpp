#include "app/interaction/keeping/article_printer.h"

#include <QFile>
#include <QLineEdit>
#include <QPrintDialog>

#include "tests/app/demo_article_fixture.h"
#include "tests/app/dialogs/dialog_answers.h"

namespace quillet {
namespace {

class ArticlePrinterTest : public DemoArticleTest {
 protected:
  void SetUp() override {
    DemoArticleTest::SetUp();
    if (!ArticlePrinter::CanAsk()) GTEST_SKIP() << "this system prints to printers only, and has none";
  }

  // Where no printer is known the dialog prints to a file.
  void Print(const QString& file) {
    AnswerDialogs([&] { View().Commands().Run(Command::kPrintArticle); }, {[&](QDialog& dialog) {
                    Find<QLineEdit>(dialog, "filename").setText(file);
                    dialog.accept();
                  }});
  }
  QString At(const char* name) { return QString::fromStdU16String((home.Path() / name).u16string()); }
};

TEST_F(ArticlePrinterTest, AnArticleThatIsStillReadIsPrintedWhole) {
  Open(longest);
  const QString file = At("article.pdf");
  Print(file);
  ASSERT_TRUE(Until([&] { return View().LastToast().Text().startsWith(u"已列印到"_qs); }))
      << View().LastToast().Text().toStdString();
  ASSERT_TRUE(Lines().IsComplete());
  QFile pdf(file);
  ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
  const QByteArray bytes = pdf.readAll();
  EXPECT_GT(bytes.count("/Type /Page\n"), 1);
  EXPECT_LT(bytes.size(), 1 << 20) << "glyphs are told once";
}

TEST_F(ArticlePrinterTest, APrinterThatTakesNothingIsTold) {
  OpenWhole(talkative);
  Print(At("no/such/folder/a.pdf"));
  EXPECT_TRUE(PanelSays(u"文章沒有印出來"_qs));
  EXPECT_TRUE(PanelLines().contains("a.pdf"));
}

}  // namespace
}  // namespace quillet
