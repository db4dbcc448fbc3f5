// The built program as the user starts it.
#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "tests/app/window_fixture.h"

namespace quillet {
namespace {

struct Finished {
  int exitCode = -1;
  QString output;
  QString errors;
};

#ifdef _WIN32
constexpr const char* kProgram = "/quillet.exe";
constexpr const char* kNothing = "NUL";
#else
constexpr const char* kProgram = "/quillet";
constexpr const char* kNothing = "/dev/null";
#endif

QString Program() {
  return QCoreApplication::applicationDirPath() + kProgram;
}

// A user of the program's own: nothing of what it keeps touches the person's who runs the tests. Windows asks
// nobody's environment where a user's files are, and has a profile instead.
class Home {
 public:
  Home() {
#ifndef _WIN32
    // As a first start in a folder that cannot be written would choose it.
    Write("config/quillet/registry",
          "; Values that Quillet keeps for its user\n[SOFTWARE\\\\Quillet]\n\"UseAppDataLocalPath\"=\"1\"\n"
          "; end of the values\n");
#endif
  }
  QProcessEnvironment Environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", folder_.path());
    environment.insert("XDG_CONFIG_HOME", folder_.filePath("config"));
    environment.insert("XDG_DATA_HOME", folder_.filePath("data"));
    return environment;
  }
#ifdef _WIN32
  QStringList Options() const {
    return {"--profile", folder_.filePath("data/quillet")};
  }
#else
  QStringList Options() const {
    return {};
  }
#endif
  QString SettingsFile() const {
    return folder_.filePath("data/quillet/Quill.ini");
  }
  QByteArray Settings() const {
    return Read(SettingsFile());
  }
  void Write(const QString& name, const QByteArray& bytes) const {
    const QString file = folder_.filePath(name);
    QDir().mkpath(QFileInfo(file).path());
    QFile output(file);
    if (!output.open(QIODevice::WriteOnly) || output.write(bytes) != bytes.size())
      ADD_FAILURE() << file.toStdString();
  }

 private:
  static QByteArray Read(const QString& file) {
    QFile input(file);
    // Lines end as the system's do.
    return input.open(QIODevice::ReadOnly | QIODevice::Text) ? input.readAll() : QByteArray();
  }

  QTemporaryDir folder_;
};

Finished Launch(const QStringList& arguments, const QString& file = Program(), const Home& home = Home()) {
  QProcess program;
  program.setProcessEnvironment(home.Environment());
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
  const QString alone = folder.path() + kProgram;
  ASSERT_TRUE(QFile::copy(Program(), alone));
  const Finished finished = Launch(
      {"--demo", "--content", QUILLET_SOURCE_DIR "/demo/content", "--tour", folder.filePath("pictures")},
      alone);
  EXPECT_EQ(finished.exitCode, 1);
  for (const QString& said : {u"缺少字元對照表"_qs, u"b2u2.bin"_qs, u"u2b2.bin"_qs,
                              QDir::toNativeSeparators(folder.filePath("Data"))})
    EXPECT_TRUE(finished.errors.contains(said))
        << said.toStdString() << " in " << finished.errors.toStdString();
}

TEST(ProgramTest, ATourThatCannotHaveItsDemoOrItsFolderFailsAndLeavesNoTrace) {
  const QTemporaryDir folder;
  const Home home;
  const Finished noContent =
      Launch({"--demo", "--content", folder.filePath("nothing"), "--tour", folder.path()}, Program(), home);
  EXPECT_EQ(noContent.exitCode, 1);
  EXPECT_FALSE(noContent.errors.isEmpty());
  EXPECT_FALSE(QFile::exists(home.SettingsFile()));
  QFile file(folder.filePath("file"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const Finished noFolder = Launch({"--demo", "--tour", file.fileName()});
  EXPECT_EQ(noFolder.exitCode, 1);
  EXPECT_TRUE(noFolder.errors.contains(file.fileName()));
}

// The window stays open, so the program is ended as a session's end would end it.
TEST(ProgramTest, SettingsLiveInTheUsersFolderAndAStartKeepsThem) {
  const Home home;
  home.Write("data/quillet/Quill.ini", "[Basic]\nDarkColor=1\nOf another version=kept\n");
  QProcess program;
  program.setProcessEnvironment(home.Environment());
  program.start(Program(), home.Options() + QStringList{"--replay", kNothing});
  const auto hasVersion = [&] { return home.Settings().contains("\nVersion="); };
  EXPECT_TRUE(HandleEventsUntil(hasVersion, kPatienceMs)) << home.Settings().toStdString();
  program.kill();
  program.waitForFinished();
  for (const char* line : {"[Basic]\n", "\nDarkColor=1\n", "\nOf another version=kept\n", "\nFont="})
    EXPECT_TRUE(home.Settings().contains(line)) << line;
  EXPECT_FALSE(QFile::exists(QCoreApplication::applicationDirPath() + "/Quill.ini"));
}

}  // namespace
}  // namespace quillet
