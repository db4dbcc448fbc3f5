#include "app/messages/file_messages.h"

#include <gtest/gtest.h>

namespace quillet {
namespace {

using Kind = FileProblem::Kind;

const std::filesystem::path kFolder = std::filesystem::path("somewhere") / "else";

FileProblem Problem(Kind kind, const char* name = "Quill.ini") {
  return {.kind = kind, .file = kFolder / name, .reason = "No space left", .line = 0, .keptAs = {}};
}

QString Told(const std::vector<FileProblem>& problems) {
  return DescribeFileProblems(problems).lines.join('\n');
}

TEST(FileMessagesTest, EveryProblemNamesFileFolderAndReason) {
  EXPECT_TRUE(DescribeFileProblems({}).title.isEmpty());
  QSet<QString> lines;
  for (const Kind kind :
       {Kind::kUnreadable, Kind::kTooLarge, Kind::kDamaged, Kind::kConverted, Kind::kNotWritten}) {
    const PanelText text = DescribeFileProblems({Problem(kind)});
    const QString told = text.lines.join('\n');
    EXPECT_FALSE(text.title.isEmpty());
    EXPECT_TRUE(told.contains("Quill.ini") && told.contains("somewhere") && told.contains("No space left"));
    EXPECT_FALSE(told.contains('{')) << told.toStdString();
    EXPECT_TRUE(told.contains(u"只保留到程式結束")) << told.toStdString();
    EXPECT_EQ(text.onEnter, PanelAction::kDismiss);
    lines.insert(text.lines.front());
  }
  EXPECT_EQ(lines.size(), 5);
}

TEST(FileMessagesTest, ADamagedFileThatWasKeptSaysWhereAndWhichLine) {
  FileProblem problem = Problem(Kind::kDamaged);
  problem.line = 17;
  problem.keptAs = kFolder / "Quill.ini.unreadable-2";
  const QString told = Told({problem});
  EXPECT_TRUE(told.contains("17"));
  EXPECT_TRUE(told.contains("Quill.ini.unreadable-2"));
  EXPECT_FALSE(told.contains(u"只保留到程式結束")) << "it is written as ever";
}

TEST(FileMessagesTest, FilesOfOneFolderShareItsLine) {
  FileProblem other = Problem(Kind::kUnreadable, "registry");
  other.file = std::filesystem::path("third") / "registry";
  const QString told = Told({Problem(Kind::kNotWritten), Problem(Kind::kNotWritten, "black.txt"), other});
  EXPECT_EQ(told.count(u"資料夾"), 2);
  EXPECT_LT(told.indexOf("black.txt"), told.indexOf("somewhere"));
  EXPECT_LT(told.indexOf("somewhere"), told.indexOf("third"));
}

TEST(ToldProblemsTest, EachIsTheNewsOnceUntilItHasBeenGone) {
  ToldProblems told;
  const FileProblem settings = Problem(Kind::kNotWritten);
  const FileProblem names = Problem(Kind::kNotWritten, "black.txt");
  EXPECT_EQ(told.New({settings}).size(), 1U);
  const auto second = told.New({settings, names});
  ASSERT_EQ(second.size(), 1U);
  EXPECT_EQ(second.front().file, names.file);
  EXPECT_TRUE(told.New({settings, names}).empty());
  EXPECT_TRUE(told.New({}).empty());
  EXPECT_EQ(told.New({settings}).size(), 1U);
}

}  // namespace
}  // namespace quillet
