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

Finished Launch(const QStringList& arguments,
                const QString& file = QCoreApplication::applicationDirPath() + "/quillet") {
  QProcess program;
  program.setWorkingDirectory(QFileInfo(file).path());
  program.start(file, arguments);
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

// A copy of the program alone, as a broken installation leaves it.
TEST(ProgramTest, MissingTablesAreToldByNameAndFolder) {
  const QTemporaryDir folder;
  const QString alone = folder.filePath("quillet");
  ASSERT_TRUE(QFile::copy(QCoreApplication::applicationDirPath() + "/quillet", alone));
  const Finished finished = Launch(
      {"--demo", "--content", QUILLET_SOURCE_DIR "/demo/content", "--tour", folder.filePath("pictures")},
      alone);
  EXPECT_EQ(finished.exitCode, 1);
  for (const QString& said : {u"缺少字元對照表"_qs, u"b2u2.bin"_qs, u"u2b2.bin"_qs, folder.filePath("Data")})
    EXPECT_TRUE(finished.errors.contains(said))
        << said.toStdString() << " in " << finished.errors.toStdString();
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
