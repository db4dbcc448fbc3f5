#include "settings/settings_store.h"

#include <gtest/gtest.h>
#include <memory>

#include "platform/user_file.h"
#include "settings/old_settings.h"
#include "tests/settings/user_folders.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::u16string>;

// One user's files over several runs of the program.
class SettingsStoreTest : public testing::Test, public UserFolders {
 protected:
  void Start() {
    files_ = std::make_unique<StartedFiles>(*this);
    store_ = std::make_unique<SettingsStore>(*files_, "bbs.example");
    store_->Load();
  }
  std::u16string EntryOf(std::u16string_view id) const {
    const ListEntry* entry = store_->Names().Find(id);
    return entry ? u"=" + EntryText(*entry) : u"none";
  }

  std::unique_ptr<DataFiles> files_;
  std::unique_ptr<SettingsStore> store_;
};

constexpr std::string_view kOldLists =
    "[Basic]\nFont=mine\n"
    "[Black]\nplain=a friend\nbare\nflag=3:red\nagain=old\n"
    "[White]\nfine=x\nmarked=1:y\n";

TEST_F(SettingsStoreTest, FirstStartMakesTheFileOfDefaults) {
  Start();
  EXPECT_EQ(OnDisk(), DefaultSettings("bbs.example"));
  EXPECT_EQ(store_->Fields().site, u"ssh://bbs.example");
  EXPECT_FALSE(fs::exists(At(kNamesFile)));
  EXPECT_FALSE(fs::exists(At(kTitleWordsFile)));
  EXPECT_TRUE(files_->Problems().empty());
}

TEST_F(SettingsStoreTest, NothingIsSavedBeforeTheFirstLoad) {
  Put(kTitleWordsFile, "word\n");
  Put(kNamesFile, "id\n");
  DataFiles files(registry, Both());
  SettingsStore store(files, "bbs.example");
  EXPECT_FALSE(fs::exists(data)) << "nor is anything made";
  EXPECT_FALSE(store.Save());
  EXPECT_FALSE(store.SaveNames());
  store.Set(&Settings::work, true);
  EXPECT_TRUE(store.Fields().work);
  EXPECT_FALSE(fs::exists(At(kSettingsFile)));
  EXPECT_EQ(FileAt(At(kTitleWordsFile)), "word\n");
  EXPECT_EQ(FileAt(At(kNamesFile)), "id\n");
}

TEST_F(SettingsStoreTest, FileLiesOverTheDefaultsAndComesBackWhole) {
  Put(kSettingsFile,
      "[Basic]\r\nFont=標楷體\r\nContentPic=9\r\nNewer=kept\r\nBare\r\nAccount=me\r\nAutoLogin=00\r\n"
      "[Unknown]\r\nk=v=w\r\n[Track]\r\nboard:a && title:b=c\r\n");
  Put(kTitleWordsFile, " one \n\ntwo\n");
  Start();
  EXPECT_EQ(store_->Fields().font, u"標楷體");
  EXPECT_EQ(store_->Fields().contentPic, PictureSize::kFullWidth);
  EXPECT_TRUE(store_->Fields().flash);
  EXPECT_EQ(LinesOf(kTitleWordsFile), (Words{u"one", u"two"}));

  store_->Map().Set(u"Basic", u"AutoLogin", u"secret");
  EXPECT_TRUE(store_->Save());
  SettingsMap expected = DefaultSettings("bbs.example");
  expected.Set(u"Basic", u"Font", u"標楷體");
  expected.Set(u"Basic", u"ContentPic", u"9");
  expected.Set(u"Basic", u"Newer", u"kept");
  expected.Set(u"Basic", u"Bare", u"");
  expected.Set(u"Unknown", u"k", u"v=w");
  expected.Set(kTrackSection, u"board=a && title=b=c", u"");
  EXPECT_EQ(OnDisk(), expected);
  EXPECT_EQ(FileAt(At(kTitleWordsFile)), EncodeText(u"one\ntwo\n", kLineEnd));
}

TEST_F(SettingsStoreTest, OldListsMoveToTheirFileAndWhatIsThereStays) {
  Put(kSettingsFile, kOldLists);
  Put(kNamesFile, "other=C5:z\nagain=new\n");
  Put(kTitleWordsFile, "word\n");
  for (int start = 0; start < 2; ++start) {
    Start();
    EXPECT_EQ(store_->Names().Size(), 7U);
    EXPECT_EQ(EntryOf(u"plain"), u"=a friend");
    EXPECT_EQ(EntryOf(u"bare"), u"=");
    EXPECT_EQ(EntryOf(u"flag"), u"=B3:red");
    EXPECT_EQ(EntryOf(u"fine"), u"=W:x");
    EXPECT_EQ(EntryOf(u"marked"), u"=W1:y");
    EXPECT_EQ(EntryOf(u"other"), u"=C5:z");
    EXPECT_EQ(EntryOf(u"again"), u"=new");
    EXPECT_EQ(OnDisk().All().count(u"Black") + OnDisk().All().count(u"White"), 0U);
    EXPECT_EQ(LinesOf(kNamesFile).size(), 7U);
    EXPECT_EQ(OnDisk().Text(u"Basic", u"Font"), u"mine");
    EXPECT_EQ(FileAt(At(kTitleWordsFile)), "word\n");
    EXPECT_EQ(FileAt(At("Quill.ini.before")), kOldLists);
    ASSERT_EQ(files_->Problems().size(), start == 0 ? 1U : 0U) << "said once";
    if (start == 0) {
      EXPECT_EQ(files_->Problems()[0].kind, FileProblem::Kind::kConverted);
      EXPECT_EQ(files_->Problems()[0].keptAs, At("Quill.ini.before"));
    }
  }
  EXPECT_FALSE(fs::exists(At("Quill.ini.before-2")));
}

TEST_F(SettingsStoreTest, AnOlderFileThatCannotBeKeptIsNotReplaced) {
  Put(kSettingsFile, "[Basic]\nSite=bbs.example:ssh\n");
  for (const char* const end : {"", "-2", "-3", "-4", "-5", "-6", "-7", "-8", "-9"})
    fs::create_directories(At(std::string("Quill.ini.before") + end));
  Start();
  EXPECT_EQ(store_->Fields().site, u"ssh://bbs.example");
  EXPECT_FALSE(store_->Save());
  EXPECT_EQ(FileAt(At(kSettingsFile)), "[Basic]\nSite=bbs.example:ssh\n");
  ASSERT_EQ(files_->Problems().size(), 1U);
  EXPECT_TRUE(files_->Problems()[0].keptAs.empty());
}

TEST_F(SettingsStoreTest, RemovedOldEntryDoesNotReturn) {
  Put(kSettingsFile, kOldLists);
  Put(kNamesFile, "other\n");
  fs::permissions(At(kNamesFile), fs::perms::owner_read);
  Start();
  EXPECT_EQ(EntryOf(u"flag"), u"=B3:red");
  EXPECT_FALSE(store_->Save());
  EXPECT_EQ(OnDisk().Text(u"Black", u"flag"), u"3:red");
  fs::permissions(At(kNamesFile), fs::perms::owner_write, fs::perm_options::add);
  store_->Names().Remove(u"flag");
  EXPECT_TRUE(store_->SaveNames());
  Start();
  EXPECT_EQ(EntryOf(u"flag"), u"none");
  EXPECT_EQ(EntryOf(u"marked"), u"=W1:y");
}

TEST_F(SettingsStoreTest, EndBetweenTheTwoFilesOfAConversionLosesNothing) {
  Put(kSettingsFile, kOldLists);
  fs::permissions(At(kSettingsFile), fs::perms::owner_read);
  Start();
  EXPECT_EQ(FileAt(At(kSettingsFile)), kOldLists);
  EXPECT_EQ(LinesOf(kNamesFile).size(), 6U);
  Put(kNamesFile, "plain=edited meanwhile\n");
  fs::permissions(At(kSettingsFile), fs::perms::owner_write, fs::perm_options::add);
  Start();
  EXPECT_EQ(EntryOf(u"plain"), u"=edited meanwhile");
  EXPECT_EQ(EntryOf(u"marked"), u"=W1:y");
  EXPECT_EQ(LinesOf(kNamesFile).size(), 6U);
  EXPECT_FALSE(OnDisk().All().contains(u"Black"));
}

TEST_F(SettingsStoreTest, OldKeysBecomeTodaysChoicesAndAreGone) {
  const struct {
    std::string_view keys;
    int quotePic, signPic, pushPic, blackTitle, superBlackTitle, blackPush, superBlackPush;
  } cases[] = {
      {"", 3, 1, 2, 0, 0, 1, 1},
      {"HideQuotePic=1\nHideSignPic=1\nHidePushPic=1\n", 0, 0, 0, 0, 0, 1, 1},
      {"HideQuotePic=0\nHideSignPic=2\nHidePushPic\nHideBlackName=\n", 3, 1, 2, 0, 0, 1, 1},
      {"HideBlackTitle=1\n", 3, 1, 2, 1, 1, 1, 1},
      {"BlackPush=0\nSBlackPush=0\nHideBlackPic=1\n", 3, 1, 2, 0, 0, 1, 1},
      {"HideBlackPush=1\n", 3, 1, 2, 0, 0, 2, 2},
      {"HideBlackName=1\nHideBlackTitle=1\nHideBlackPush=1\n", 3, 1, 2, 2, 2, 3, 3},
      {"RemoveBlackPush=1\nHideBlackName=1\n", 3, 1, 2, 2, 2, 4, 4},
      {"OnlyHideSuperBlack=1\nRemoveBlackPush=1\nHideBlackName=1\n", 3, 1, 2, 0, 2, 0, 4},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.keys);
    Put(kSettingsFile, "[Basic]\nQuotePic=3\n" + std::string(c.keys));
    Start();
    const Settings& fields = store_->Fields();
    EXPECT_EQ(static_cast<int>(fields.quotePic), c.quotePic);
    EXPECT_EQ(static_cast<int>(fields.signPic), c.signPic);
    EXPECT_EQ(static_cast<int>(fields.pushPic), c.pushPic);
    EXPECT_EQ(static_cast<int>(fields.blackTitle), c.blackTitle);
    EXPECT_EQ(static_cast<int>(fields.superBlackTitle), c.superBlackTitle);
    EXPECT_EQ(static_cast<int>(fields.blackPush), c.blackPush);
    EXPECT_EQ(static_cast<int>(fields.superBlackPush), c.superBlackPush);
    for (const std::u16string_view old :
         {u"HideQuotePic", u"HideSignPic", u"HidePushPic", u"HideBlackTitle", u"HideBlackPic",
          u"HideBlackPush", u"HideBlackName", u"RemoveBlackPush", u"OnlyHideSuperBlack"})
      EXPECT_EQ(OnDisk().Find(u"Basic", old), nullptr);
  }
}

TEST(OldSettingsTest, SiteOfTheOldFormBecomesAnAddress) {
  const struct {
    std::u16string_view old, expected;
  } cases[] = {
      {u"BBS.Example:ssh", u"ssh://bbs.example"},
      {u"bbs.example : SSH ", u"ssh://bbs.example"},
      {u"fe80::1:ssh", u"ssh://fe80::1"},
      {u"BBS.Example:23", u"BBS.Example:23"},
      {u"BBS.Example", u"BBS.Example"},
      {u"telnet://BBS:ssh", u"telnet://BBS:ssh"},
      {u"", u""},
  };
  for (const auto& c : cases) {
    SettingsMap map;
    map.Set(u"Basic", u"Site", c.old);
    ConvertOldSite(map);
    EXPECT_EQ(map.Text(u"Basic", u"Site"), c.expected);
  }
  SettingsMap none;
  ConvertOldSite(none);
  EXPECT_EQ(none, SettingsMap());
}

}  // namespace
}  // namespace quillet
