// Two programs that keep one user's settings and lists at the same time.
#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <random>
#include <thread>

#include "platform/user_file.h"
#include "settings/files/article_list_file.h"
#include "settings/files/bookmarks.h"
#include "settings/settings_store.h"
#include "tests/settings/user_folders.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::u16string>;

struct Program {
  explicit Program(UserFolders& user) : files(user), store(files, "bbs.example") { store.Load(); }

  bool SaveAll() {
    const bool isSaved = store.Save();
    return store.SaveNames() && isSaved;
  }
  bool Name(std::u16string_view id, std::u16string_view text) {
    store.Names().Set(id, ParseEntryText(text));
    return store.SaveNames();
  }
  bool Unname(std::u16string_view id) {
    store.Names().Remove(id);
    return store.SaveNames();
  }

  StartedFiles files;
  SettingsStore store;
};

class TwoProgramsTest : public testing::Test, public UserFolders {};

TEST_F(TwoProgramsTest, SavesCloseTogetherLoseNothing) {
  constexpr int kSaves = 60;
  Program programs[] = {Program(*this), Program(*this)};
  const auto save = [&](int number) {
    for (int i = 0; i < kSaves; ++i) {
      const std::u16string name = ToText(number) + u'-' + ToText(i);
      programs[number].store.Map().Set(u"Keys", name, u"1");
      programs[number].store.Save();
      programs[number].Name(name, u"");
    }
  };
  std::thread other(save, 1);
  save(0);
  other.join();
  EXPECT_EQ(OnDisk().All().at(u"Keys").size(), 2U * kSaves);
  EXPECT_EQ(LinesOf(kNamesFile).size(), 2U * kSaves);
  EXPECT_TRUE(fs::is_empty(data)) << "a lock was left";
}

TEST_F(TwoProgramsTest, ListsOfBothCome) {
  Put(kNamesFile, "old=x\ngone\nedited=y\n");
  Put(kTitleWordsFile, "old\ngone\nkept\n");
  Program a(*this), b(*this);
  EXPECT_TRUE(a.Name(u"alice", u"W:friend"));
  EXPECT_TRUE(a.Unname(u"gone"));
  a.store.TitleWords() = {u"old", u"kept", u"a"};
  EXPECT_TRUE(a.store.Save());

  ListEntry mine = ParseEntryText(u"_C12:mine");
  mine.changed = true;
  b.store.Names().Set(u"edited", mine);
  EXPECT_TRUE(b.Name(u"bobby", u""));
  b.store.TitleWords() = {u"b", u"kept", u"gone"};
  EXPECT_TRUE(b.store.Save());
  EXPECT_EQ(LinesOf(kNamesFile), (Words{u"old=x", u"edited=_C12:mine", u"alice=W:friend", u"bobby"}));
  EXPECT_EQ(LinesOf(kTitleWordsFile), (Words{u"kept", u"a", u"b"}));
  EXPECT_EQ(b.store.TitleWords(), (Words{u"kept", u"a", u"b"}));
  ASSERT_NE(b.store.Names().Find(u"alice"), nullptr);
  EXPECT_TRUE(b.store.Names().Find(u"edited")->changed);
  EXPECT_EQ(b.store.Names().Size(), 4U);
}

TEST_F(TwoProgramsTest, WhatWasSetHereWinsOverTheOther) {
  Put(kNamesFile, "both\nremovedHere\nremovedThere\n");
  Program a(*this), b(*this);
  a.store.Set(&Settings::font, u"theirs");
  a.store.Names().Set(u"both", ParseEntryText(u"theirs"));
  a.store.Names().Set(u"removedHere", ParseEntryText(u"edited"));
  EXPECT_TRUE(a.Unname(u"removedThere"));

  b.store.Set(&Settings::font, u"ours");
  b.store.Names().Set(u"both", ParseEntryText(u"ours"));
  b.store.Names().Remove(u"removedHere");
  EXPECT_TRUE(b.Name(u"removedThere", u"edited"));
  EXPECT_EQ(OnDisk().Text(u"Basic", u"Font"), u"ours");
  EXPECT_EQ(LinesOf(kNamesFile), (Words{u"both=ours", u"removedThere=edited"}));
  EXPECT_TRUE(a.SaveAll());
  EXPECT_EQ(a.store.Fields().font, u"ours");
  EXPECT_EQ(a.store.Names().AsText(), b.store.Names().AsText());
}

TEST_F(TwoProgramsTest, OwnOrderAndUnfitTextStayWhileNobodyElseWrites) {
  Put(kNamesFile, "first\nsecond\n");
  Put(kTitleWordsFile, "one\ntwo\n");
  Program a(*this);
  a.store.TitleWords() = {u"two", u"one", u"two"};
  a.store.Names().Set(u"first", {.description = u"cut=off"});
  EXPECT_TRUE(a.SaveAll());
  EXPECT_EQ(LinesOf(kTitleWordsFile), (Words{u"two", u"one", u"two"}));
  // The same lines, spelled by another editor.
  Put(kTitleWordsFile, "two\r\none\r\n\r\ntwo");
  Put(kNamesFile, "first=cut\nsecond=C:theirs");
  EXPECT_TRUE(a.SaveAll());
  EXPECT_EQ(a.store.TitleWords(), (Words{u"two", u"one", u"two"}));
  EXPECT_EQ(a.store.Names().Find(u"first")->description, u"cut=off");
  EXPECT_EQ(a.store.Names().Find(u"second")->kind, ListKind::kSuperBlack);
  EXPECT_EQ(a.store.MergedInCount(), 1U);
}

TEST_F(TwoProgramsTest, RefreshTakesInAndWritesNothing) {
  Put(kSettingsFile, "[Basic]\nShowPicMode=0\nQuotePic=3\n");
  Put(kNamesFile, "old\n");
  Program a(*this);
  EXPECT_EQ(a.store.Fields().quotePic, PictureSize::kFullWidth);
  a.store.Refresh();
  EXPECT_EQ(a.store.MergedInCount(), 0U);
  a.store.Names().Set(u"unsaved", ListEntry{});
  constexpr std::string_view kTheirs = "[Basic]\nShowPicMode=2\n";
  Put(kSettingsFile, kTheirs);
  Put(kNamesFile, "old\nnew\n");
  Put(kTitleWordsFile, "word\n");
  a.store.Refresh();
  EXPECT_EQ(a.store.MergedInCount(), 3U);
  EXPECT_EQ(a.store.Fields().showPicMode, PictureScope::kAllPages);
  EXPECT_EQ(a.store.Fields().quotePic, Settings().quotePic) << "a key that went";
  EXPECT_EQ(a.store.TitleWords(), Words{u"word"});
  EXPECT_EQ(a.store.Names().Size(), 3U);
  EXPECT_EQ(FileAt(At(kSettingsFile)), kTheirs);
  EXPECT_EQ(LinesOf(kNamesFile), (Words{u"old", u"new"}));
  EXPECT_TRUE(a.store.SaveNames());
  EXPECT_EQ(LinesOf(kNamesFile), (Words{u"old", u"new", u"unsaved"}));
}

TEST_F(TwoProgramsTest, ABookmarkThatCouldNotBeWrittenComesWithTheOthers) {
  constexpr ArticleListKind kKind = ArticleListKind::kBookmarks;
  constexpr std::string_view kFile = "bookmark.txt";
  struct Reader {
    explicit Reader(UserFolders& user) : files(user) { LoadArticleLists(files, {}, lists, weights); }
    bool Bookmark(std::u16string code) {
      ArticleItem item;
      item.board = u"Art";
      item.code = std::move(code);
      const auto add = [&](ArticleFolder& root) { ToggleBookmark(root, item); };
      return ChangeArticleList(files, {}, lists, kKind, add);
    }
    StartedFiles files;
    ArticleLists lists;
    BoardWeights weights;
  };
  Put(kFile, "1 2 3 Art old\n");
  Reader a(*this), b(*this);
  fs::permissions(At(kFile), fs::perms::owner_read);
  EXPECT_FALSE(a.Bookmark(u"unwritten"));
  fs::permissions(At(kFile), fs::perms::owner_write, fs::perm_options::add);
  EXPECT_TRUE(b.Bookmark(u"theirs"));
  EXPECT_TRUE(a.Bookmark(u"last"));
  const Words all = LinesOf(kFile);
  ASSERT_EQ(all.size(), 4U);
  EXPECT_TRUE(b.Bookmark(u"theirs")) << "taken out again";
  EXPECT_EQ(LinesOf(kFile).size(), 3U);
  Put(kFile, "1 2 3 Art damaged\x1A\n");
  EXPECT_TRUE(a.Bookmark(u"more"));
  EXPECT_EQ(LinesOf(kFile).size(), 6U) << "a damaged file removes nothing";
}

TEST_F(TwoProgramsTest, AFailedWriteIsMadeUpForWithTheOthersLines) {
  Put(kNamesFile, "old\n");
  Program a(*this);
  fs::permissions(At(kNamesFile), fs::perms::owner_read);
  EXPECT_FALSE(a.Name(u"mine", u""));
  EXPECT_FALSE(a.store.Save());
  fs::permissions(At(kNamesFile), fs::perms::owner_write, fs::perm_options::add);
  Put(kNamesFile, "theirs\nold\n");
  EXPECT_TRUE(a.store.Save());
  EXPECT_EQ(LinesOf(kNamesFile), (Words{u"theirs", u"old", u"mine"}));
}

TEST_F(TwoProgramsTest, FileThatVanishedIsWrittenAgain) {
  Put(kNamesFile, "old\n");
  Put(kTitleWordsFile, "word\n");
  Program a(*this);
  a.store.Map().Set(u"Basic", u"Font", u"mine");
  for (const std::string_view name : {kSettingsFile, kNamesFile, kTitleWordsFile})
    fs::remove(At(name));
  EXPECT_TRUE(a.SaveAll());
  EXPECT_EQ(OnDisk(), a.store.Map());
  EXPECT_EQ(LinesOf(kNamesFile), Words{u"old"});
  EXPECT_EQ(LinesOf(kTitleWordsFile), Words{u"word"});
  EXPECT_EQ(a.store.MergedInCount(), 0U);
}

TEST_F(TwoProgramsTest, DamagedLinesAreKeptAsideAndRemoveNothing) {
  Put(kSettingsFile, "[Basic]\nFont=mine\nNewer=1\n");
  Put(kNamesFile, "old\n");
  Put(kTitleWordsFile, "word\n");
  Program a(*this);
  const std::map<std::string_view, std::string> damaged = {
      {kSettingsFile, "[Basic]\nFont=\xB2\xD3\nBackPicOpacity=55\n"},
      {kNamesFile, "\xFF\nnew\n"},
      {kTitleWordsFile, std::string(4, '\0') + "\nmore\n"}};
  for (const auto& [name, bytes] : damaged)
    Put(name, bytes);
  EXPECT_TRUE(a.SaveAll());
  ASSERT_EQ(a.files.Problems().size(), 3U);
  for (const FileProblem& problem : a.files.Problems()) {
    EXPECT_EQ(problem.kind, FileProblem::Kind::kDamaged);
    EXPECT_EQ(FileAt(problem.keptAs), damaged.at(problem.file.filename().string()));
  }
  EXPECT_EQ(OnDisk().Text(u"Basic", u"Font"), u"mine");
  EXPECT_EQ(OnDisk().Text(u"Basic", u"Newer"), u"1");
  EXPECT_EQ(a.store.Fields().backPicOpacity, 55);
  EXPECT_EQ(LinesOf(kNamesFile), (Words{u"old", u"new"}));
  EXPECT_EQ(LinesOf(kTitleWordsFile), (Words{u"word", u"more"}));
}

TEST_F(TwoProgramsTest, UnreadableFileIsLeftAloneUntilItCanBeRead) {
  // A folder refuses even a privileged user.
  fs::create_directories(At(kNamesFile));
  Program a(*this);
  EXPECT_FALSE(a.Name(u"mine", u""));
  EXPECT_EQ(a.files.Problems().size(), 1U);
  fs::remove(At(kNamesFile));
  Put(kNamesFile, "theirs\n");
  EXPECT_TRUE(a.store.Save());
  EXPECT_EQ(LinesOf(kNamesFile), (Words{u"theirs", u"mine"}));

  fs::rename(At(kSettingsFile), At("elsewhere"));
  fs::create_directories(At(kSettingsFile));
  a.store.Set(&Settings::font, u"mine");
  EXPECT_TRUE(fs::is_directory(At(kSettingsFile)));
  a.store.TitleWords() = {u"word"};
  EXPECT_FALSE(a.store.Save());
  EXPECT_EQ(LinesOf(kTitleWordsFile), Words{u"word"}) << "one file out of order leaves the others whole";
  fs::remove(At(kSettingsFile));
  Put("elsewhere", FileAt(At("elsewhere")) + "[New]\nkey=1\n");
  fs::rename(At("elsewhere"), At(kSettingsFile));
  EXPECT_TRUE(a.store.Save());
  EXPECT_EQ(OnDisk().Text(u"Basic", u"Font"), u"mine");
  EXPECT_EQ(OnDisk().Text(u"New", u"key"), u"1");
}

TEST_F(TwoProgramsTest, TooLargeFileIsKeptAsideAndReplaced) {
  Put(kNamesFile, "old\n");
  Program a(*this);
  fs::resize_file(At(kNamesFile), DataFiles::kLargestFile + 1);
  EXPECT_TRUE(a.Name(u"new", u""));
  EXPECT_EQ(LinesOf(kNamesFile), (Words{u"old", u"new"}));
  ASSERT_EQ(a.files.Problems().size(), 1U);
  EXPECT_EQ(a.files.Problems()[0].kind, FileProblem::Kind::kTooLarge);
  EXPECT_EQ(fs::file_size(a.files.Problems()[0].keptAs), DataFiles::kLargestFile + 1);
}

TEST_F(TwoProgramsTest, WhatAnOlderVersionWritesMeanwhileIsConverted) {
  Put(kNamesFile, "known=C:now\n");
  Program a(*this);
  std::string older = FileAt(At(kSettingsFile));
  older.replace(older.find("[Basic]"), 7, "[Basic]\nRemoveBlackPush=1\nAccount=me");
  older += "[Black]\nknown=then\nfresh=3:red\n[White]\nfine=x\n";
  Put(kSettingsFile, older);
  a.store.Set(&Settings::work, true);
  EXPECT_EQ(a.store.Fields().blackPush, PushTreatment::kRemove);
  EXPECT_EQ(OnDisk(), a.store.Map());
  for (const std::u16string_view key : {u"RemoveBlackPush", u"Account"})
    EXPECT_EQ(OnDisk().Find(u"Basic", key), nullptr);
  EXPECT_EQ(OnDisk().All().count(u"Black") + OnDisk().All().count(u"White"), 0U);
  Words names = LinesOf(kNamesFile);
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (Words{u"fine=W:x", u"fresh=B3:red", u"known=C:now"}));
  EXPECT_EQ(FileAt(At("Quill.ini.before")), older);
  EXPECT_EQ(a.store.Names().Size(), 3U);
}

TEST_F(TwoProgramsTest, RemovedEntryOfALeftOverOldListStaysRemoved) {
  Put(kSettingsFile, "[Black]\nflag=3:red\n");
  fs::create_directories(At(kNamesFile));
  Program a(*this);
  a.store.Names().Remove(u"flag");
  EXPECT_FALSE(a.store.SaveNames());
  Put(kSettingsFile, FileAt(At(kSettingsFile)) + "[New]\nkey=1\n");
  EXPECT_FALSE(a.store.Save());
  EXPECT_EQ(a.store.Map().Text(u"New", u"key"), u"1");
  EXPECT_EQ(a.store.Names().Size(), 0U);
}

TEST_F(TwoProgramsTest, ChosenFolderGetsTheLinesOfTheLastPlace) {
  fs::create_directories(data);
  PutFile(data / kNamesFile, "older\n");
  Put(kNamesFile, "old\n");
  Program a(*this);
  Put(kNamesFile, "old\ntheirs\n");
  EXPECT_TRUE(a.files.SetUsesDataFolder(true));
  EXPECT_TRUE(a.Name(u"mine", u""));
  EXPECT_EQ(ReadLines(FileAt(data / kNamesFile)).lines, (Words{u"old", u"theirs", u"mine"}));
}

// What one program alone edits, with its last value; nothing when it was removed.
using LastValues = std::map<std::u16string, std::optional<std::u16string>>;

// Edits at random: some items are a program's own, others are edited by both.
class Editor {
 public:
  Editor(Program& program, char16_t letter, unsigned seed)
      : store_(program.store), letter_(letter), random_(seed) {}

  void Step() {
    switch (random_() % 8) {
      case 0:
        EXPECT_TRUE(store_.Save());
        break;
      case 1:
        EXPECT_TRUE(store_.SaveNames());
        break;
      case 2:
        store_.Refresh();
        break;
      case 3: {
        Words rules = store_.Map().TrackLines();
        EditLine(rules_, rules);
        store_.Map().SetTrackLines(rules);
        break;
      }
      case 4:
        EditLine(words_, store_.TitleWords());
        break;
      case 5:
        Edit(keys_, [this](const auto& key, const auto& value) {
          value ? store_.Map().Set(u"Keys", key, *value) : store_.Map().Remove(u"Keys", key);
        });
        break;
      default:
        Edit(names_, [this](const auto& id, const auto& value) {
          value ? store_.Names().Set(id, ParseEntryText(*value)) : store_.Names().Remove(id);
        });
        break;
    }
  }

  void Check(const SettingsMap& map, const NameList& names, const Words& words) const {
    for (const auto& [key, value] : keys_) {
      const std::u16string* const found = map.Find(u"Keys", key);
      EXPECT_EQ(found ? std::optional(*found) : std::nullopt, value);
    }
    for (const auto& [id, value] : names_) {
      const ListEntry* const found = names.Find(id);
      EXPECT_EQ(found != nullptr, value.has_value());
      EXPECT_TRUE(!found || !value || *found == ParseEntryText(*value));
    }
    for (const auto& [rule, value] : rules_)
      EXPECT_EQ(map.Find(kTrackSection, rule) != nullptr, value.has_value());
    for (const auto& [word, value] : words_)
      EXPECT_EQ(std::count(words.begin(), words.end(), word), value ? 1 : 0);
  }

 private:
  // Gives `change` an item and its new value, which is nothing when it is to go.
  template <typename Change>
  void Edit(LastValues& last, Change change) {
    static constexpr std::u16string_view kValues[] = {u"", u"1:2", u"中", u"B13:text", u"_W:", u":"};
    const bool isShared = random_() % 3 == 0;
    const std::u16string item = (isShared ? u'x' : letter_) + ToText(static_cast<int>(random_() % 6));
    std::optional<std::u16string> value;
    if (random_() % 3 != 0)
      value =
          std::u16string(kValues[random_() % std::size(kValues)]) + ToText(static_cast<int>(random_() % 4));
    change(item, value);
    if (!isShared) last[item] = value;
  }
  void EditLine(LastValues& last, Words& lines) {
    Edit(last, [&lines](const auto& line, const auto& value) {
      std::erase(lines, line);
      if (value) lines.insert(lines.begin(), line);
    });
  }

  SettingsStore& store_;
  char16_t letter_;
  std::minstd_rand random_;
  LastValues keys_, names_, rules_, words_;
};

TEST_F(TwoProgramsTest, LastValueOfEachStandsHoweverSavesInterleave) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    UserFolders user;
    Program a(user), b(user);
    Editor editors[] = {{a, u'a', seed}, {b, u'b', seed + 1000}};
    std::minstd_rand random(seed);
    for (int step = 0; step < 300; ++step)
      editors[random() % 2].Step();
    for (int round = 0; round < 2; ++round)
      for (Program* const program : {&a, &b})
        EXPECT_TRUE(program->SaveAll());

    Program next(user);
    for (const Program* const program : {&a, &b, &next})
      for (const Editor& editor : editors)
        editor.Check(program->store.Map(), program->store.Names(), program->store.TitleWords());
    EXPECT_EQ(a.store.Map(), b.store.Map());
    EXPECT_EQ(a.store.Names().AsText(), b.store.Names().AsText());
    EXPECT_EQ(a.store.TitleWords(), b.store.TitleWords());
    EXPECT_EQ(a.store.Map(), next.store.Map());
    EXPECT_GT(a.store.MergedInCount() + b.store.MergedInCount(), 20U);
  }
}

}  // namespace
}  // namespace quillet
