#include "settings/data_files.h"

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

TEST(DataFilesTest, FilesLieBesideTheProgramUntilChosenOtherwise) {
  UserFolders user;
  DataFiles files(user.registry, user.Both());
  EXPECT_TRUE(fs::is_directory(user.data));
  EXPECT_TRUE(files.CanChooseFolder());
  EXPECT_FALSE(files.UsesDataFolder());
  EXPECT_TRUE(files.Read(kName).lines.empty());
  EXPECT_TRUE(files.Write(kName, u"中\n"));
  EXPECT_EQ(FileAt(user.working / kName), EncodeText(u"中\n", kLineEnd));
  EXPECT_EQ(CountIn(user.data), 0U);
  EXPECT_EQ(files.Read(kName).lines, Lines{u"中"});

  user.registry.SetText(kRegistryPath, u"UseAppDataLocalPath", u"2");
  EXPECT_FALSE(files.UsesDataFolder());
  EXPECT_TRUE(files.SetUsesDataFolder(true));
  EXPECT_EQ(user.registry.Text(kRegistryPath, u"UseAppDataLocalPath"), u"1");
  EXPECT_TRUE(files.UsesDataFolder());
  EXPECT_TRUE(files.Problems().empty());
}

TEST(DataFilesTest, EachFileMovesOnItsNextUse) {
  UserFolders user;
  DataFiles files(user.registry, user.Both());
  for (const std::string_view name : {"read", "written", "located", "unused"})
    PutFile(user.working / name, "old\n");
  files.SetUsesDataFolder(true);
  EXPECT_EQ(files.Read("read").lines, Lines{u"old"});
  EXPECT_TRUE(files.Write("written", u"new\n"));
  EXPECT_EQ(files.Locate("located"), user.data / "located");
  EXPECT_EQ(FileAt(user.data / "read"), "old\n");
  EXPECT_EQ(FileAt(user.data / "written"), EncodeText(u"new\n", kLineEnd));
  EXPECT_EQ(FileAt(user.data / "located"), "old\n");
  EXPECT_EQ(CountIn(user.data), 3U);
  EXPECT_TRUE(fs::exists(user.working / "unused"));
  EXPECT_EQ(CountIn(user.working), 1U);

  files.SetUsesDataFolder(false);
  EXPECT_EQ(files.Read("read").lines, Lines{u"old"});
  EXPECT_EQ(FileAt(user.working / "read"), "old\n");
  EXPECT_FALSE(fs::exists(user.data / "read"));
}

TEST(DataFilesTest, MovingReplacesNothing) {
  UserFolders user;
  DataFiles files(user.registry, user.Both());
  PutFile(user.working / kName, "working\n");
  PutFile(user.data / kName, "data\n");
  EXPECT_EQ(files.Read(kName).lines, Lines{u"working"});
  files.SetUsesDataFolder(true);
  EXPECT_EQ(files.Read(kName).lines, Lines{u"data"});
  EXPECT_EQ(FileAt(user.working / kName), "working\n");
}

TEST(DataFilesTest, RunWithMoreRightsFindsTheFilesOfTheDataFolder) {
  UserFolders user;
  fs::remove(user.working);
  EXPECT_TRUE(DataFiles(user.registry, user.Both()).Write(kName, u"mine\n"));
  EXPECT_EQ(user.registry.Text(kRegistryPath, u"UseAppDataLocalPath"), u"1");
  fs::create_directories(user.working);
  DataFiles later(user.registry, user.Both());
  EXPECT_TRUE(later.CanChooseFolder());
  EXPECT_EQ(later.Read(kName).lines, Lines{u"mine"});
  EXPECT_TRUE(fs::exists(user.data / kName));

  // A choice stays the user's, wherever files can be made.
  fs::remove_all(user.working);
  later.SetUsesDataFolder(false);
  EXPECT_TRUE(DataFiles(user.registry, user.Both()).UsesDataFolder());
  EXPECT_EQ(user.registry.Text(kRegistryPath, u"UseAppDataLocalPath"), u"0");
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

TEST(DataFilesTest, LostRegistryMovesNoFile) {
  const struct {
    bool inWorking, inData, usesData;
  } cases[] = {{false, false, false}, {true, false, false}, {false, true, true}, {true, true, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.inWorking << c.inData);
    UserFolders user;
    fs::create_directories(user.data);
    if (c.inWorking) PutFile(user.working / kName, "working\n");
    if (c.inData) PutFile(user.data / kName, "data\n");
    PutFile(user.working / "inWorking", "old\n");
    PutFile(user.data / "inData", "old\n");
    LostRegistry registry{{}};
    DataFiles files(registry, user.Both());
    EXPECT_EQ(files.UsesDataFolder(), c.usesData);
    EXPECT_FALSE(registry.Text(kRegistryPath, u"UseAppDataLocalPath").has_value());
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

TEST(DataFilesTest, GuessedFolderIsRecordedOnlyWhereTheLostRegistryWasKeptAside) {
  for (const bool isKept : {false, true}) {
    UserFolders user;
    fs::create_directories(user.data);
    PutFile(user.data / kName, "data\n");
    LostRegistry registry(isKept ? "registry.unreadable" : "");
    EXPECT_TRUE(DataFiles(registry, user.Both()).UsesDataFolder());
    EXPECT_EQ(registry.Text(kRegistryPath, u"UseAppDataLocalPath").has_value(), isKept);
  }
}

TEST(DataFilesTest, LostRegistryAndClosedProgramFolderLeaveTheFileWhereItIs) {
  UserFolders user;
  PutFile(user.working / kName, "old\n");
  fs::permissions(user.working, fs::perms::owner_read | fs::perms::owner_exec);
  LostRegistry registry{{}};
  DataFiles files(registry, user.Both());
  if (!files.CanChooseFolder()) {
    EXPECT_EQ(files.Locate(kName), user.working / kName);
    EXPECT_EQ(files.Read(kName).lines, Lines{u"old"});
    EXPECT_FALSE(fs::exists(user.data / kName));
    EXPECT_TRUE(files.Write(kName, u"new\n"));
    EXPECT_EQ(files.Read(kName).lines, Lines{u"new"});
    EXPECT_EQ(FileAt(user.working / kName), "old\n");
  }
  fs::permissions(user.working, fs::perms::owner_all);
}

TEST(DataFilesTest, FileThatCannotBeMovedIsReadWhereItIs) {
  UserFolders user;
  PutFile(user.working / kName, "kept\n");
  DataFiles files(user.registry, user.Both());
  fs::remove(user.data);
  PutFile(user.data, "a file where the folder should be");
  files.SetUsesDataFolder(true);
  EXPECT_EQ(files.Read(kName).lines, Lines{u"kept"});
  EXPECT_FALSE(files.Write(kName, u"new\n"));
  EXPECT_FALSE(files.Write(kName, u"newer\n"));
  ASSERT_EQ(files.Problems().size(), 1U) << "said once";
  EXPECT_EQ(files.Problems()[0].kind, Kind::kNotWritten);
  EXPECT_FALSE(files.Problems()[0].reason.empty());
  EXPECT_EQ(FileAt(user.working / kName), "kept\n");

  fs::remove(user.data);
  fs::create_directories(user.data);
  EXPECT_TRUE(files.Write(kName, u"new\n"));
  EXPECT_EQ(FileAt(user.data / kName), EncodeText(u"new\n", kLineEnd));
  EXPECT_TRUE(files.Problems().empty());
}

TEST(DataFilesTest, DamagedFileIsKeptAsideOnceBeforeItIsReplaced) {
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
    PutFile(user.working / kName, c.bytes);
    for (int start = 0; start < 3; ++start) {
      DataFiles files(user.registry, user.Both());
      EXPECT_EQ(files.Read(kName).lines, c.lines);
      ASSERT_EQ(files.Problems().size(), 1U);
      EXPECT_EQ(files.Problems()[0].kind, Kind::kDamaged);
      EXPECT_EQ(files.Problems()[0].line, c.badLine);
      EXPECT_EQ(FileAt(files.Problems()[0].keptAs), c.bytes);
    }
    EXPECT_EQ(CountIn(user.working), 2U);
    DataFiles files(user.registry, user.Both());
    files.Read(kName);
    EXPECT_TRUE(files.Write(kName, u"whole\n"));
    EXPECT_EQ(FileAt(files.Problems()[0].keptAs), c.bytes);
  }
}

TEST(DataFilesTest, AnotherDamageIsKeptBesideTheFirst) {
  UserFolders user;
  DataFiles files(user.registry, user.Both());
  PutFile(user.working / kName, "\x80 one\n");
  files.Read(kName);
  PutFile(user.working / kName, "\x80 two\n");
  files.Read(kName);
  ASSERT_EQ(files.Problems().size(), 1U);
  EXPECT_EQ(FileAt(files.Problems()[0].keptAs), "\x80 two\n");
  EXPECT_EQ(CountIn(user.working), 3U);
}

TEST(DataFilesTest, DamagedFileThatCannotBeKeptAsideIsNotReplaced) {
  UserFolders user;
  PutFile(user.working / kName, "\x80\nread\n");
  for (const char* end : {"", "-2", "-3", "-4", "-5", "-6", "-7", "-8", "-9"})
    fs::create_directories(user.working / (std::string(kName) + ".unreadable" + end));
  DataFiles files(user.registry, user.Both());
  EXPECT_EQ(files.Read(kName).lines, Lines{u"read"});
  ASSERT_EQ(files.Problems().size(), 1U);
  EXPECT_TRUE(files.Problems()[0].keptAs.empty());
  EXPECT_FALSE(files.Write(kName, u"new\n"));
  EXPECT_EQ(FileAt(user.working / kName), "\x80\nread\n");
}

TEST(DataFilesTest, WhatCannotBeOpenedIsLeftAlone) {
  UserFolders user;
  fs::create_directories(user.working / kName);
  PutFile(user.working / kName / "inside", "x");
  DataFiles files(user.registry, user.Both());
  EXPECT_TRUE(files.Read(kName).lines.empty());
  ASSERT_EQ(files.Problems().size(), 1U);
  EXPECT_EQ(files.Problems()[0].kind, Kind::kUnreadable);
  EXPECT_EQ(files.Problems()[0].file, user.working / kName);
  EXPECT_FALSE(files.Problems()[0].reason.empty());
  EXPECT_FALSE(files.Write(kName, u"defaults\n"));
  files.SetUsesDataFolder(true);
  EXPECT_FALSE(files.Write(kName, u"defaults\n"));
  EXPECT_EQ(FileAt(user.working / kName / "inside"), "x");
  EXPECT_EQ(files.Problems().size(), 1U);
}

TEST(DataFilesTest, DataFolderRemovedMeanwhileIsMadeAgain) {
  UserFolders user;
  DataFiles files(user.registry, user.Both());
  files.SetUsesDataFolder(true);
  EXPECT_TRUE(files.Write(kName, u"a\n"));
  fs::remove_all(user.data);
  EXPECT_TRUE(files.Write(kName, u"b\n"));
  EXPECT_EQ(FileAt(user.data / kName), EncodeText(u"b\n", kLineEnd));
}

TEST(DataFilesTest, SameTextIsNotWrittenAgain) {
  UserFolders user;
  DataFiles files(user.registry, user.Both());
  EXPECT_TRUE(files.Write(kName, u"same\n"));
  const auto longAgo = fs::last_write_time(user.working / kName) - std::chrono::hours(1);
  fs::last_write_time(user.working / kName, longAgo);
  EXPECT_TRUE(files.Write(kName, u"same\n"));
  EXPECT_EQ(fs::last_write_time(user.working / kName), longAgo);
  EXPECT_TRUE(files.Write(kName, u"other\n"));
  EXPECT_NE(fs::last_write_time(user.working / kName), longAgo);
}

}  // namespace
}  // namespace quillet
