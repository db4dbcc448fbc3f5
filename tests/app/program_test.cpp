// The built program as the user starts it.
#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace quillet {
namespace {

struct Finished {
  int exitCode = -1;
  QString output;
  QString errors;
};

Finished Launch(const QStringList& arguments) {
  QProcess program;
  program.start(QCoreApplication::applicationDirPath() + "/quillet", arguments);
  Finished finished;
  if (program.waitForFinished(90000) && program.exitStatus() == QProcess::NormalExit)
    finished.exitCode = program.exitCode();
  finished.output = QString::fromUtf8(program.readAllStandardOutput());
  finished.errors = QString::fromUtf8(program.readAllStandardError());
  return finished;
}

TEST(ProgramTest, HelpAndVersionAnswerAndNonsenseFails) {
  EXPECT_EQ(Launch({"--version"}).exitCode, 0);
  EXPECT_TRUE(Launch({"--version"}).output.startsWith("Quillet "));
  const Finished help = Launch({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_TRUE(help.output.contains("--replay"));
  const Finished wrong = Launch({"--nonsense"});
  EXPECT_EQ(wrong.exitCode, 2);
  EXPECT_TRUE(wrong.errors.contains("nonsense"));
  EXPECT_TRUE(wrong.output.isEmpty());
}

TEST(ProgramTest, ATourThatCannotHaveItsDemoOrItsFolderFails) {
  const QTemporaryDir folder;
  const Finished noContent =
      Launch({"--demo", "--content", folder.filePath("nothing"), "--tour", folder.path()});
  EXPECT_EQ(noContent.exitCode, 1);
  EXPECT_FALSE(noContent.errors.isEmpty());
  QFile file(folder.filePath("file"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const Finished noFolder = Launch({"--demo", "--tour", file.fileName()});
  EXPECT_EQ(noFolder.exitCode, 1);
  EXPECT_TRUE(noFolder.errors.contains(file.fileName()));
}

}  // namespace
}  // namespace quillet
