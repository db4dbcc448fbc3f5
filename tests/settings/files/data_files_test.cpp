#include "settings/files/data_files.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "platform/user_file.h"
#include "tests/settings/user_folders.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using Kind = FileProblem::Kind;
using Lines = std::vector<std::u16string>;

constexpr std::string_view kName = "Quill.ini";

std::size_t CountIn(const fs::path& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

class DataFilesTest : public testing::Test, public UserFolders {};

TEST_F(DataFilesTest, FilesLieBesideTheProgramUntilChosenOtherwise) {
  StartedFiles files(*this);
  EXPECT_TRUE(fs::is_directory(data));
  EXPECT_TRUE(files.CanChooseFolder());
  EXPECT_FALSE(files.UsesDataFolder());
  EXPECT_TRUE(files.Read(kName).lines.empty());
  EXPECT_TRUE(files.Write(kName, u"中\n"));
  EXPECT_EQ(FileAt(At(kName)), EncodeText(u"中\n", kLineEnd));
  EXPECT_EQ(CountIn(data), 0U);
  EXPECT_EQ(files.Read(kName).lines, Lines{u"中"});

  registry.SetText(kRegistryPath, u"UseAppDataLocalPath", u"2");
  EXPECT_FALSE(files.UsesDataFolder());
  EXPECT_TRUE(files.SetUsesDataFolder(true));
  EXPECT_EQ(registry.Text(kRegistryPath, u"UseAppDataLocalPath"), u"1");
  EXPECT_TRUE(files.UsesDataFolder());
  EXPECT_TRUE(files.Problems().empty());
}

TEST_F(DataFilesTest, WithoutAPlaceBesideTheProgramAllIsTheUsersOwn) {
  registry.SetText(kRegistryPath, u"UseAppDataLocalPath", u"0");
  StartedFiles files(registry, {{}, data});
  EXPECT_FALSE(files.CanChooseFolder());
  EXPECT_TRUE(files.Write(kName, u"one\n"));
  files.SetUsesDataFolder(false);
  EXPECT_EQ(files.Locate(kName), data / kName);
  EXPECT_EQ(files.Read(kName).lines, Lines{u"one"});
}

TEST_F(DataFilesTest, EachFileMovesOnItsNextUse) {
  StartedFiles files(*this);
  for (const std::string_view name : {"read", "written", "located", "unused"})
    Put(name, "old\n");
  files.SetUsesDataFolder(true);
  EXPECT_EQ(files.Read("read").lines, Lines{u"old"});
  EXPECT_TRUE(files.Write("written", u"new\n"));
  EXPECT_EQ(files.Locate("located"), data / "located");
  EXPECT_EQ(FileAt(data / "read"), "old\n");
  EXPECT_EQ(FileAt(data / "written"), EncodeText(u"new\n", kLineEnd));
  EXPECT_EQ(FileAt(data / "located"), "old\n");
  EXPECT_EQ(CountIn(data), 3U);
  EXPECT_TRUE(fs::exists(working / "unused"));
  EXPECT_EQ(CountIn(working), 1U);

  files.SetUsesDataFolder(false);
  EXPECT_EQ(files.Read("read").lines, Lines{u"old"});
  EXPECT_EQ(FileAt(working / "read"), "old\n");
  EXPECT_FALSE(fs::exists(data / "read"));
}

TEST_F(DataFilesTest, MovingReplacesNothing) {
  StartedFiles files(*this);
  Put(kName, "working\n");
  PutFile(data / kName, "data\n");
  EXPECT_EQ(files.Read(kName).lines, Lines{u"working"});
  files.SetUsesDataFolder(true);
  EXPECT_EQ(files.Read(kName).lines, Lines{u"data"});
  EXPECT_EQ(FileAt(At(kName)), "working\n");
}

TEST_F(DataFilesTest, RunWithMoreRightsFindsTheFilesOfTheDataFolder) {
  fs::remove(working);
  EXPECT_TRUE(StartedFiles(*this).Write(kName, u"mine\n"));
  EXPECT_EQ(registry.Text(kRegistryPath, u"UseAppDataLocalPath"), u"1");
  fs::create_directories(working);
  StartedFiles later(*this);
  EXPECT_TRUE(later.CanChooseFolder());
  EXPECT_EQ(later.Read(kName).lines, Lines{u"mine"});
  EXPECT_TRUE(fs::exists(data / kName));

  // A choice stays the user's, wherever files can be made.
  fs::remove_all(working);
  later.SetUsesDataFolder(false);
  EXPECT_TRUE(StartedFiles(*this).UsesDataFolder());
  EXPECT_EQ(registry.Text(kRegistryPath, u"UseAppDataLocalPath"), u"0");
}

class LostRegistry : public MemoryRegistry {
 public:
  explicit LostRegistry(fs::path keptAs) : keptAs_(std::move(keptAs)) {}
  std::optional<FileProblem> Problem() const override {
    return FileProblem{Kind::kDamaged, "registry", {}, 1, keptAs_};
  }

 private:
  fs::path keptAs_;
};

TEST_F(DataFilesTest, LostRegistryMovesNoFile) {
  const struct {
    bool inWorking, inData, usesData;
  } cases[] = {{false, false, false}, {true, false, false}, {false, true, true}, {true, true, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.inWorking << c.inData);
    UserFolders user;
    fs::create_directories(user.data);
    if (c.inWorking) user.Put(kName, "working\n");
    if (c.inData) PutFile(user.data / kName, "data\n");
    PutFile(user.working / "inWorking", "old\n");
    PutFile(user.data / "inData", "old\n");
    LostRegistry lost{{}};
    StartedFiles files(lost, user.Both());
    EXPECT_EQ(files.UsesDataFolder(), c.usesData);
    EXPECT_FALSE(lost.Text(kRegistryPath, u"UseAppDataLocalPath").has_value());
    // As the options dialog does when nobody touched its box.
    files.SetUsesDataFolder(c.usesData);
    for (const auto& [name, folder] :
         {std::pair("inWorking", user.working), std::pair("inData", user.data)}) {
      EXPECT_EQ(files.Read(name).lines, Lines{u"old"});
      EXPECT_TRUE(files.Write(name, u"new\n"));
      EXPECT_EQ(FileAt(folder / name), EncodeText(u"new\n", kLineEnd));
    }
    EXPECT_TRUE(files.Write("fresh", u"a\n"));
    EXPECT_TRUE(fs::exists((c.usesData ? user.data : user.working) / "fresh"));
    EXPECT_FALSE(fs::exists(user.data / "inWorking") || fs::exists(user.working / "inData"));

    files.SetUsesDataFolder(!c.usesData);
    EXPECT_EQ(files.Locate("fresh"), (c.usesData ? user.working : user.data) / "fresh")
        << "now it was chosen";
    EXPECT_TRUE(fs::exists(files.Locate("fresh")));
  }
}

TEST_F(DataFilesTest, GuessedFolderIsRecordedOnlyWhereTheLostRegistryWasKeptAside) {
  for (const bool isKept : {false, true}) {
    UserFolders user;
    fs::create_directories(user.data);
    PutFile(user.data / kName, "data\n");
    LostRegistry lost(isKept ? "registry.unreadable" : "");
    EXPECT_TRUE(StartedFiles(lost, user.Both()).UsesDataFolder());
    EXPECT_EQ(lost.Text(kRegistryPath, u"UseAppDataLocalPath").has_value(), isKept);
  }
}

TEST_F(DataFilesTest, LostRegistryAndClosedProgramFolderLeaveTheFileWhereItIs) {
  Put(kName, "old\n");
  fs::permissions(working, fs::perms::owner_read | fs::perms::owner_exec);
  LostRegistry lost{{}};
  StartedFiles files(lost, Both());
  if (!files.CanChooseFolder()) {
    EXPECT_EQ(files.Locate(kName), At(kName));
    EXPECT_EQ(files.Read(kName).lines, Lines{u"old"});
    EXPECT_FALSE(fs::exists(data / kName));
    EXPECT_TRUE(files.Write(kName, u"new\n"));
    EXPECT_EQ(files.Read(kName).lines, Lines{u"new"});
    EXPECT_EQ(FileAt(At(kName)), "old\n");
  }
  fs::permissions(working, fs::perms::owner_all);
}

TEST_F(DataFilesTest, FileThatCannotBeMovedIsReadWhereItIs) {
  Put(kName, "kept\n");
  StartedFiles files(*this);
  fs::remove(data);
  PutFile(data, "a file where the folder should be");
  files.SetUsesDataFolder(true);
  EXPECT_EQ(files.Read(kName).lines, Lines{u"kept"});
  EXPECT_FALSE(files.Write(kName, u"new\n"));
  EXPECT_FALSE(files.Write(kName, u"newer\n"));
  ASSERT_EQ(files.Problems().size(), 1U) << "said once";
  EXPECT_EQ(files.Problems()[0].kind, Kind::kNotWritten);
  EXPECT_FALSE(files.Problems()[0].reason.empty());
  EXPECT_EQ(FileAt(At(kName)), "kept\n");

  fs::remove(data);
  fs::create_directories(data);
  EXPECT_TRUE(files.Write(kName, u"new\n"));
  EXPECT_EQ(FileAt(data / kName), EncodeText(u"new\n", kLineEnd));
  EXPECT_TRUE(files.Problems().empty());
}

TEST_F(DataFilesTest, DamagedFileIsKeptAsideOnceBeforeItIsReplaced) {
  const struct {
    std::string bytes;
    Lines lines;
    std::size_t badLine;
  } cases[] = {
      {std::string(4096, '\0'), {}, 1},
      {"[Basic]\nFont=\xB2\xD3\xA9\xFA\xC5\xE9\nWork=1\n", {u"[Basic]", u"Work=1"}, 2},
      {"\xFF\xFE[\0B\0", {}, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.badLine);
    UserFolders user;
    user.Put(kName, c.bytes);
    for (int start = 0; start < 3; ++start) {
      StartedFiles files(user);
      EXPECT_EQ(files.Read(kName).lines, c.lines);
      ASSERT_EQ(files.Problems().size(), 1U);
      EXPECT_EQ(files.Problems()[0].kind, Kind::kDamaged);
      EXPECT_EQ(files.Problems()[0].line, c.badLine);
      EXPECT_EQ(FileAt(files.Problems()[0].keptAs), c.bytes);
    }
    EXPECT_EQ(CountIn(user.working), 2U);
    StartedFiles files(user);
    files.Read(kName);
    EXPECT_TRUE(files.Write(kName, u"whole\n"));
    EXPECT_EQ(FileAt(files.Problems()[0].keptAs), c.bytes);
  }
}

TEST_F(DataFilesTest, AnotherDamageIsKeptBesideTheFirst) {
  StartedFiles files(*this);
  Put(kName, "\x80 one\n");
  files.Read(kName);
  Put(kName, "\x80 two\n");
  files.Read(kName);
  ASSERT_EQ(files.Problems().size(), 1U);
  EXPECT_EQ(FileAt(files.Problems()[0].keptAs), "\x80 two\n");
  EXPECT_EQ(CountIn(working), 3U);
}

TEST_F(DataFilesTest, DamagedFileThatCannotBeKeptAsideIsNotReplaced) {
  Put(kName, "\x80\nread\n");
  for (const char* end : {"", "-2", "-3", "-4", "-5", "-6", "-7", "-8", "-9"})
    fs::create_directories(working / (std::string(kName) + ".unreadable" + end));
  StartedFiles files(*this);
  EXPECT_EQ(files.Read(kName).lines, Lines{u"read"});
  ASSERT_EQ(files.Problems().size(), 1U);
  EXPECT_TRUE(files.Problems()[0].keptAs.empty());
  EXPECT_FALSE(files.Write(kName, u"new\n"));
  EXPECT_EQ(FileAt(At(kName)), "\x80\nread\n");
}

TEST_F(DataFilesTest, WhatCannotBeOpenedIsLeftAlone) {
  fs::create_directories(At(kName));
  PutFile(At(kName) / "inside", "x");
  StartedFiles files(*this);
  EXPECT_TRUE(files.Read(kName).lines.empty());
  ASSERT_EQ(files.Problems().size(), 1U);
  EXPECT_EQ(files.Problems()[0].kind, Kind::kUnreadable);
  EXPECT_EQ(files.Problems()[0].file, At(kName));
  EXPECT_FALSE(files.Problems()[0].reason.empty());
  EXPECT_FALSE(files.Write(kName, u"defaults\n"));
  files.SetUsesDataFolder(true);
  EXPECT_FALSE(files.Write(kName, u"defaults\n"));
  EXPECT_EQ(FileAt(At(kName) / "inside"), "x");
  EXPECT_EQ(files.Problems().size(), 1U);
}

TEST_F(DataFilesTest, DataFolderRemovedMeanwhileIsMadeAgain) {
  StartedFiles files(*this);
  files.SetUsesDataFolder(true);
  EXPECT_TRUE(files.Write(kName, u"a\n"));
  fs::remove_all(data);
  EXPECT_TRUE(files.Write(kName, u"b\n"));
  EXPECT_EQ(FileAt(data / kName), EncodeText(u"b\n", kLineEnd));
}

TEST_F(DataFilesTest, SameTextIsNotWrittenAgain) {
  StartedFiles files(*this);
  EXPECT_TRUE(files.Write(kName, u"same\n"));
  const auto longAgo = fs::last_write_time(At(kName)) - std::chrono::hours(1);
  fs::last_write_time(At(kName), longAgo);
  EXPECT_TRUE(files.Write(kName, u"same\n"));
  EXPECT_EQ(fs::last_write_time(At(kName)), longAgo);
  EXPECT_TRUE(files.Write(kName, u"other\n"));
  EXPECT_NE(fs::last_write_time(At(kName)), longAgo);
}

}  // namespace
}  // namespace quillet
