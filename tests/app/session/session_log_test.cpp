#include "app/session/session_log.h"

#include <fstream>
#include <sstream>

#include <QFileDialog>

#include "tests/app/demo_article_fixture.h"
#include "tests/app/dialogs/dialog_answers.h"

namespace quillet {
namespace {

ScreenRows Page(const std::vector<std::string>& lines) {
  ScreenSnapshot screen;
  screen.Clear();
  for (std::size_t row = 0; row < lines.size(); ++row)
    std::copy(lines[row].begin(), lines[row].end(), screen.text[row].begin());
  return screen.text;
}

TEST(PageTranscriptTest, PagesAreWrittenOnceAndLittleChangesAlone) {
  PageTranscript transcript([] { return std::u16string(u"noon"); });
  const ScreenRows menu = Page({"menu", "one", "", "three"});
  EXPECT_EQ(transcript.Take(menu, 0), u"");
  EXPECT_EQ(transcript.Settle(PageTranscript::kSettleMs - 1), u"");
  EXPECT_EQ(transcript.Settle(PageTranscript::kSettleMs), u"──── noon\nmenu\none\n\nthree\n");
  EXPECT_EQ(transcript.Take(menu, 500), u"");
  EXPECT_EQ(transcript.SettlesAt(), std::nullopt);
  transcript.Take(Page({"menu", "one!", "", "three"}), 600);
  EXPECT_EQ(transcript.Settle(2000), u"── noon\none!\n");

  transcript.Take(Page({"alpha", "beta", "gamma"}), 3000);
  EXPECT_EQ(transcript.Take(Page({"delta", "beta", "gamma"}), 3100), u"") << "one line of three";
  EXPECT_EQ(transcript.Take(Page({"x", "y", "z"}), 3200), u"──── noon\ndelta\nbeta\ngamma\n");
  EXPECT_EQ(transcript.Take(Page({"1", "2", "3"}), 3201), u"") << "half drawn";
  EXPECT_EQ(transcript.Finish(), u"──── noon\n1\n2\n3\n");
  EXPECT_EQ(transcript.Finish(), u"");
}

class SessionLogTest : public DemoArticleTest {
 protected:
  void Toggle(const std::filesystem::path& file) {
    AnswerDialogs([&] { View().Commands().Run(Command::kSessionLog); }, {[&](QDialog& dialog) {
                    auto& files = dynamic_cast<QFileDialog&>(dialog);
                    files.setOption(QFileDialog::DontConfirmOverwrite);
                    files.setDirectory(QString::fromStdU16String(file.parent_path().u16string()));
                    files.selectFile(QString::fromStdU16String(file.u16string()));
                    dialog.accept();
                  }});
  }
  static std::string Read(const std::filesystem::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
  }
  // The site shows the id that is typed, and nothing of the password.
  std::string LogALogin(const char* name) {
    const std::filesystem::path file = home.Path() / name;
    doc->GetConnection().Disconnect();
    Toggle(file);
    EXPECT_TRUE(View().Log().IsOn() && frame->windowTitle().contains(u"記錄中"_qs));
    EXPECT_TRUE(IsMarked(Command::kSessionLog, View().Commands().State()));
    doc->GetConnection().Open({.address = QString::fromStdString(demo->Address()), .name = {}, .isBbs = true},
                              MakeLoginOrder({.account = u"reader", .password = u"quillet"}));
    EXPECT_TRUE(Until([&] { return Seen().loginId == u"reader" && IsIdle(); }));
    View().Commands().Run(Command::kSessionLog);
    EXPECT_FALSE(View().Log().IsOn() || frame->windowTitle().contains(u"記錄中"_qs));
    const std::string log = Read(file);
    EXPECT_NE(log.find("reader"), log.npos) << log;
    return log;
  }
};

TEST_F(SessionLogTest, WhatTheSiteShowsIsWrittenAndNoPassword) {
  // The greeting names the password of this account; nothing else does.
  const auto named = [](const std::string& log) { return QByteArray::fromStdString(log).count("quillet"); };
  const std::string text = LogALogin("log.txt");
  EXPECT_NE(text.find(QStringLiteral("【主功能表】").toStdString()), text.npos) << text;
  EXPECT_LE(named(text), 1) << text;
  const std::string bytes = LogALogin("log.bbs");
  EXPECT_NE(bytes.find(ToBig5(u"【主功能表】")), bytes.npos);
  EXPECT_NE(bytes.find(ToBig5(u"您的密碼")), bytes.npos);
  EXPECT_EQ(named(bytes), 1);
}

#ifdef __linux__
TEST_F(SessionLogTest, AFullDiskEndsItAndIsToldOnce) {
  std::filesystem::create_symlink("/dev/full", home.Path() / "full.txt");
  Toggle(home.Path() / "full.txt");
  ASSERT_TRUE(View().Log().IsOn());
  doc->GetConnection().Session().SendBytes("\x1B[B");
  ASSERT_TRUE(Until([&] { return !View().Log().IsOn(); }));
  EXPECT_TRUE(PanelSays(u"連線內容的記錄已停止"_qs));
  EXPECT_TRUE(PanelLines().contains("full")) << PanelLines().toStdString();
}
#endif

}  // namespace
}  // namespace quillet
