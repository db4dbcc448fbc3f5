#include "app/interaction/keeping/article_saver.h"

#include <fstream>
#include <sstream>

#include <QFileDialog>

#include "tests/app/demo_article_fixture.h"
#include "tests/app/dialogs/dialog_answers.h"

namespace quillet {
namespace {

class ArticleSaverTest : public DemoArticleTest {
 protected:
  static void Choose(QDialog& dialog, const std::filesystem::path& file) {
    dynamic_cast<QFileDialog&>(dialog).selectFile(QString::fromStdU16String(file.u16string()));
    dialog.accept();
  }
  void Save(const std::filesystem::path& file, const std::function<void(QFileDialog&)>& before = {}) {
    AnswerDialogs([&] { View().Commands().Run(Command::kSaveArticle); }, {[&](QDialog& dialog) {
                    if (before) before(dynamic_cast<QFileDialog&>(dialog));
                    Choose(dialog, file);
                  }});
  }
  static std::string Read(const std::filesystem::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
  }
  QString Told() { return View().LastToast().Text(); }
};

TEST_F(ArticleSaverTest, AnArticleIsSavedWholeAsItReads) {
  EXPECT_FALSE(IsEnabled(Command::kSaveArticle, View().Commands().State()));
  OpenWhole(talkative);
  const std::u16string writer = PushWriter(TextOf(Lines().At(Lines().Count() - 1)));
  doc->GetSettings().Store().Names().Set(writer, {.description = u"吵"});
  doc->GetSettings().Set(&Settings::blackPush, PushTreatment::kRemove);
  const std::filesystem::path text = home.Path() / u"文章.txt";
  QString proposed;
  Save(text, [&](QFileDialog& files) { proposed = QFileInfo(files.selectedFiles().first()).fileName(); });
  EXPECT_TRUE(proposed.endsWith(u".txt"_qs) && proposed.size() > 8) << proposed.toStdString();
  EXPECT_EQ(Told(), u"已儲存：文章.txt"_qs);
  const QString saved = QString::fromUtf8(QByteArray::fromStdString(Read(text)));
  EXPECT_EQ(saved.count(u'\n'), Article().LineCount());
  EXPECT_TRUE(saved.contains(QString::fromStdU16String(Seen().article.title)));
  EXPECT_FALSE(saved.contains(QString::fromStdU16String(writer))) << "what the lists take out";

  const std::filesystem::path page = home.Path() / "page.html";
  Save(page);
  const QString html = QString::fromUtf8(QByteArray::fromStdString(Read(page)));
  EXPECT_TRUE(html.startsWith("<!DOCTYPE html>") && html.contains("charset=\"utf-8\""));
  EXPECT_GT(html.count("<span style=\"color:#"), 20);
  EXPECT_FALSE(html.contains(QString::fromStdU16String(writer)));
}

TEST_F(ArticleSaverTest, WhatIsNotReadYetFollows) {
  Open(longest);
  ASSERT_FALSE(Lines().IsComplete());
  const std::filesystem::path file = home.Path() / "long.txt";
  // The article is read on under the question, so a key stops it first.
  Save(file, [&](QFileDialog&) { const_cast<ArticleView&>(Article()).OnUserKey(); });
  ASSERT_TRUE(Until([&] { return Lines().IsComplete() && Told() == u"已儲存：long.txt"_qs; }));
  const std::string saved = Read(file);
  EXPECT_EQ(std::count(saved.begin(), saved.end(), '\n'), Article().LineCount());
}

TEST_F(ArticleSaverTest, AFailureSaysWhatAndWhere) {
  OpenWhole(talkative);
  const std::filesystem::path folder = home.Path() / "gone";
  std::filesystem::create_directory(folder);
  Save(folder / "a.txt", [&](QFileDialog& files) {
    files.setDirectory(QString::fromStdU16String(folder.u16string()));
    std::error_code kept;
    std::filesystem::remove(folder, kept);
  });
  if (std::filesystem::exists(folder)) GTEST_SKIP() << "a folder that a dialog shows cannot be removed here";
  EXPECT_TRUE(PanelSays(u"文章沒有儲存"_qs));
  EXPECT_TRUE(PanelLines().contains("a.txt") && PanelLines().contains("gone")) << PanelLines().toStdString();
}

}  // namespace
}  // namespace quillet
