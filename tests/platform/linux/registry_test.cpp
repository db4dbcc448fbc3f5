#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <unistd.h>

#include "platform/linux/file_registry.h"
#include "platform/linux/registry_text.h"
#include "tests/platform/registry_contract.h"
#include "tests/support/scratch_folder.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using Kind = FileProblem::Kind;

constexpr std::u16string_view kPath = u"SOFTWARE\\Quillet";
// A person's way of writing it.
constexpr std::string_view kByHand =
    "\xEF\xBB\xBF; mine\r\n"
    "[software\\\\quillet]\r\n"
    "  \"Account\"=\"moss\\u0067rov\"\t\r\n"
    "\r\n"
    "\"Times\"=dword:0000FF10\r\n"
    "; end of the values\r\n"
    "\r\n";

class FileRegistryTest : public testing::Test {
 protected:
  void WriteFile(std::string_view bytes) const { PutFile(file_, bytes); }
  std::string Bytes() const { return FileAt(file_); }

  ScratchFolder folder_;
  fs::path file_ = folder_.Path() / "registry";
};

TEST_F(FileRegistryTest, KeepsTheContractAndTheValuesOverARestart) {
  FileRegistry registry(file_);
  ExpectRegistryContract(registry, std::u16string(kPath));
  EXPECT_FALSE(registry.Problem());
  const FileRegistry next(file_);
  ExpectContractValuesRemain(next, std::u16string(kPath));
  EXPECT_FALSE(next.Problem());
}

TEST_F(FileRegistryTest, TheFileIsTheUsersAloneAndItsFoldersAreMade) {
  const fs::path deep = folder_.Path() / "not" / "yet" / "registry";
  FileRegistry registry(deep);
  EXPECT_FALSE(fs::exists(deep.parent_path())) << "reading makes nothing";
  ASSERT_TRUE(registry.SetText(kPath, u"AutoLogin", u"0123"));
  EXPECT_EQ(fs::status(deep).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(fs::status(deep.parent_path()).permissions(), fs::perms::owner_all);
  ASSERT_TRUE(registry.SetText(kPath, u"AutoLogin", u"4567"));
  EXPECT_EQ(fs::status(deep).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(FileRegistryTest, AFileWrittenByHandIsReadAndLeftUntilAValueChanges) {
  WriteFile(kByHand);
  FileRegistry registry(file_);
  EXPECT_EQ(registry.Text(kPath, u"Account"), u"mossgrov");
  EXPECT_EQ(registry.Number(kPath, u"Times"), 0xFF10U);
  EXPECT_FALSE(registry.Problem());
  EXPECT_TRUE(registry.SetNumber(u"software\\quillet", u"Times", 0xFF10));
  EXPECT_EQ(Bytes(), kByHand);
  EXPECT_TRUE(registry.SetNumber(u"software\\quillet", u"Times", 2));
  EXPECT_NE(Bytes(), kByHand);
}

TEST_F(FileRegistryTest, TwoProcessesKeepEachOthersValues) {
  FileRegistry one(file_);
  FileRegistry other(file_);
  ASSERT_TRUE(one.SetText(kPath, u"Account", u"first"));
  ASSERT_TRUE(other.SetText(kPath, u"AutoLogin", u"sealed"));
  ASSERT_TRUE(other.SetText(kPath, u"Account", u"second"));
  ASSERT_TRUE(one.SetText(kPath, u"UseAppDataLocalPath", u"1"));
  const FileRegistry result(file_);
  EXPECT_EQ(result.Text(kPath, u"Account"), u"second") << "who wrote last";
  EXPECT_EQ(result.Text(kPath, u"AutoLogin"), u"sealed");
  EXPECT_EQ(result.Text(kPath, u"UseAppDataLocalPath"), u"1");
  EXPECT_EQ(one.Text(kPath, u"Account"), u"second");
}

TEST_F(FileRegistryTest, WhateverIsCutOffTheRestIsReadAndTheFileIsKeptAside) {
  {
    FileRegistry registry(file_);
    registry.SetText(kPath, u"A", u"first");
    registry.SetText(kPath, u"B", u"second 名");
    registry.SetNumber(u"ZZ", u"C", 3);
  }
  const std::string whole = Bytes();
  const std::size_t endOfFirst = whole.find("\"B\"");
  // The line end of the closing line may be missing.
  for (std::size_t length = 1; length + 1 < whole.size(); ++length) {
    const ScratchFolder folder;
    file_ = folder.Path() / "registry";
    WriteFile(whole.substr(0, length));
    FileRegistry registry(file_);
    SCOPED_TRACE(length);
    ASSERT_TRUE(registry.Problem());
    EXPECT_EQ(registry.Problem()->kind, Kind::kDamaged);
    EXPECT_EQ(FileAt(registry.Problem()->keptAs), whole.substr(0, length)) << "kept aside before any write";
    const auto first = registry.Text(kPath, u"A");
    EXPECT_TRUE(!first || first == u"first");
    EXPECT_EQ(first.has_value(), length + 1 >= endOfFirst);
    const auto number = registry.Number(u"ZZ", u"C");
    EXPECT_TRUE(!number || number == 3U);
    EXPECT_EQ(Bytes(), whole.substr(0, length)) << "reading leaves it as it is";

    ASSERT_TRUE(registry.SetText(kPath, u"D", u"new"));
    ASSERT_TRUE(registry.SetText(kPath, u"E", u"newer"));
    ASSERT_TRUE(registry.Problem());
    EXPECT_EQ(FileAt(registry.Problem()->keptAs), whole.substr(0, length));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 2);
    const FileRegistry next(file_);
    EXPECT_FALSE(next.Problem());
    EXPECT_EQ(next.Text(kPath, u"A"), first);
    EXPECT_EQ(next.Text(kPath, u"E"), u"newer");
  }
}

TEST_F(FileRegistryTest, LinesThatAreNoTextAreToldByNumberAndValuesUnderThemGoNowhereElse) {
  const std::string_view bad[] = {"[SOFTWARE\\Quillet",
                                  "[half]way]",
                                  "\"Name\"",
                                  "\"Name\"=\"open",
                                  "\"Name\"=\"a\"b",
                                  "\"Name\"=dword:123",
                                  "\"Name\"=dword:123456789",
                                  "\"Name\"=dword:0000000g",
                                  "Name=1",
                                  "\"Name\"=\"\\q\"",
                                  "\"Name\"=\"\\u12\"",
                                  "\"Name\"=\"\xA4\xA4\"",
                                  "\"Name\"=\"\xED\xA0\x80\"",
                                  "\"Name\"=\"\x01\""};
  for (const std::string_view line : bad) {
    WriteFile("[SOFTWARE\\\\Quillet]\n\"Before\"=\"1\"\n" + std::string(line) +
              "\n\"After\"=\"2\"\n[Next]\n\"N\"=\"3\"\n; end of the values\n");
    const FileRegistry registry(file_);
    SCOPED_TRACE(line);
    ASSERT_TRUE(registry.Problem());
    EXPECT_EQ(registry.Problem()->kind, Kind::kDamaged);
    EXPECT_EQ(registry.Problem()->line, 3U);
    EXPECT_EQ(registry.Text(kPath, u"Before"), u"1");
    EXPECT_EQ(registry.Text(kPath, u"Name"), std::nullopt);
    EXPECT_EQ(registry.Text(kPath, u"After").has_value(), line.front() != '[');
    EXPECT_EQ(registry.Text(u"next", u"N"), u"3");
  }
}

TEST_F(FileRegistryTest, AFileDamagedWhileTheProgramRunsLosesNothing) {
  FileRegistry registry(file_);
  ASSERT_TRUE(registry.SetText(kPath, u"Account", u"mossgrov"));
  WriteFile(std::string(100, '\0'));
  ASSERT_TRUE(registry.SetText(kPath, u"AutoLogin", u"sealed"));
  ASSERT_TRUE(registry.Problem());
  EXPECT_EQ(FileAt(registry.Problem()->keptAs), std::string(100, '\0'));
  fs::remove(file_);
  ASSERT_TRUE(registry.SetText(kPath, u"UseAppDataLocalPath", u"1"));
  const FileRegistry next(file_);
  EXPECT_EQ(next.Text(kPath, u"Account"), u"mossgrov");
  EXPECT_EQ(next.Text(kPath, u"AutoLogin"), u"sealed");
}

TEST_F(FileRegistryTest, AHugeFileIsKeptAside) {
  const std::string huge(FileRegistry::kLargestFile + 1, 'x');
  WriteFile(huge);
  FileRegistry registry(file_);
  ASSERT_TRUE(registry.Problem());
  EXPECT_EQ(registry.Problem()->kind, Kind::kTooLarge);
  ASSERT_TRUE(registry.SetText(kPath, u"A", u"1"));
  EXPECT_EQ(FileAt(registry.Problem()->keptAs), huge);
  EXPECT_EQ(FileRegistry(file_).Text(kPath, u"A"), u"1");
}

TEST_F(FileRegistryTest, AValueThatWouldMakeTheFileUnreadableStaysInMemory) {
  FileRegistry registry(file_);
  ASSERT_TRUE(registry.SetText(kPath, u"A", u"1"));
  const std::u16string huge(FileRegistry::kLargestFile, u'x');
  EXPECT_FALSE(registry.SetText(kPath, u"B", huge));
  EXPECT_EQ(registry.Text(kPath, u"B"), huge);
  ASSERT_TRUE(registry.Problem());
  EXPECT_EQ(registry.Problem()->kind, Kind::kNotWritten);
  EXPECT_FALSE(FileRegistry(file_).Problem());
  ASSERT_TRUE(registry.SetText(kPath, u"B", u"short")) << "the next try may succeed";
  EXPECT_FALSE(registry.Problem());
}

TEST_F(FileRegistryTest, AFolderInItsPlaceIsLeftAloneAndValuesLiveInMemory) {
  fs::create_directory(file_);
  PutFile(file_ / "of the user's", "x");
  FileRegistry registry(file_);
  ASSERT_TRUE(registry.Problem());
  EXPECT_EQ(registry.Problem()->kind, Kind::kUnreadable);
  EXPECT_FALSE(registry.Problem()->reason.empty());
  EXPECT_FALSE(registry.SetText(kPath, u"Account", u"mossgrov"));
  EXPECT_FALSE(registry.SetNumber(kPath, u"N", 7));
  EXPECT_EQ(registry.Text(kPath, u"Account"), u"mossgrov");
  EXPECT_EQ(registry.Number(kPath, u"N"), 7U);
  EXPECT_EQ(registry.Problem()->kind, Kind::kUnreadable);
  EXPECT_TRUE(fs::exists(file_ / "of the user's"));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.Path()), fs::directory_iterator()), 1);
}

TEST_F(FileRegistryTest, AFileThatMayNotBeReadIsNeverOverwritten) {
  if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
  WriteFile(kByHand);
  fs::permissions(file_, fs::perms::owner_write);
  FileRegistry registry(file_);
  ASSERT_TRUE(registry.Problem());
  EXPECT_EQ(registry.Problem()->kind, Kind::kUnreadable);
  EXPECT_FALSE(registry.SetText(kPath, u"Account", u"other"));
  fs::permissions(file_, fs::perms::owner_read);
  EXPECT_EQ(Bytes(), kByHand);
}

TEST_F(FileRegistryTest, AReadOnlyFileIsToldAndNotReplaced) {
  WriteFile(kByHand);
  fs::permissions(file_, fs::perms::owner_read);
  FileRegistry registry(file_);
  EXPECT_FALSE(registry.SetText(kPath, u"Account", u"other"));
  EXPECT_EQ(registry.Text(kPath, u"Account"), u"other");
  ASSERT_TRUE(registry.Problem());
  EXPECT_EQ(registry.Problem()->kind, Kind::kNotWritten);
  EXPECT_FALSE(registry.Problem()->reason.empty());
  EXPECT_EQ(Bytes(), kByHand);

  fs::permissions(file_, fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_TRUE(registry.SetNumber(kPath, u"N", 1));
  EXPECT_EQ(FileRegistry(file_).Text(kPath, u"Account"), u"other") << "what was refused before is caught up";
}

TEST(RegistryTextTest, AnyBytesAreReadAndWhatWasUnderstoodComesBackFromWhatIsWritten) {
  std::mt19937 random(20261125);
  const std::string_view pieces[] = {"[",
                                     "]",
                                     "\\",
                                     "\"",
                                     "=",
                                     "\n",
                                     "dword:",
                                     "0000000f",
                                     "\\u",
                                     "d83d",
                                     ";",
                                     "\r",
                                     "名",
                                     "\xED",
                                     std::string_view("\0", 1),
                                     "A",
                                     "; end of the values",
                                     "\"n\"=\"",
                                     "[p]\n"};
  std::uniform_int_distribution<std::size_t> pick(0, std::size(pieces) - 1);
  int understood = 0;
  for (int round = 0; round < 20000; ++round) {
    // Half of them inside a text, so that enough is understood.
    std::string bytes = round % 2 ? "[p]\n\"n\"=\"" : "";
    for (int i = round / 2 % 12; i > 0; --i)
      bytes += pieces[pick(random)];
    if (round % 2) bytes += '"';
    const RegistryText text = ParseRegistryText(bytes);
    understood += text.values.All().empty() ? 0 : 1;
    const RegistryText again = ParseRegistryText(FormatRegistryText(text.values));
    ASSERT_TRUE(again.IsWhole()) << bytes;
    ASSERT_EQ(again.values, text.values) << bytes;
  }
  EXPECT_GT(understood, 100);
}

}  // namespace
}  // namespace quillet
