#include "settings/files/article_list_file.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

#include "platform/utf8.h"
#include "settings/files/article_list_merge.h"
#include "settings/files/text_lines.h"
#include "tests/settings/user_folders.h"

namespace quillet {
namespace {

using namespace std::string_view_literals;

using Kind = ArticleListKind;
constexpr Kind kKinds[] = {Kind::kHot, Kind::kTracked, Kind::kBookmarks};
const WebHosts kHosts{.host = u"www.bbs.example", .mirror1 = u"m1.example", .mirror2 = u"m2.example"};

ArticleLists ReadText(std::u16string_view text, Kind kind) {
  ArticleLists lists;
  ReadArticleLines(ReadLines(EncodeText(text, "\n")).lines, kind, kHosts, lists);
  return lists;
}

ArticleLists Rewritten(const ArticleLists& lists, Kind kind) {
  return ReadText(ArticleListText(lists, kind), kind);
}

const ArticleItem& ItemAt(const ArticleFolder& folder, std::size_t index) {
  return std::get<ArticleItem>(folder.children.at(index));
}

const ArticleFolder& FolderAt(const ArticleFolder& folder, std::size_t index) {
  return std::get<ArticleFolder>(folder.children.at(index));
}

ArticleItem ReadItem(std::u16string_view line) {
  return ItemAt(ReadText(line, Kind::kBookmarks).Of(Kind::kBookmarks), 0);
}

ArticleLists WithChild(Kind kind, ArticleFolder::Child child) {
  ArticleLists lists;
  lists.Of(kind).children.push_back(std::move(child));
  return lists;
}

ArticleItem Item(std::int64_t postTime, std::int32_t score = kNoScore, std::int32_t mark = -1,
                 std::u16string_view board = {}, std::u16string_view code = {},
                 std::u16string_view extra = {}, std::u16string_view title = {}) {
  ArticleItem item;
  item.postTime = postTime;
  item.score = score;
  item.mark = mark;
  item.board = board;
  item.code = code;
  item.extra = extra;
  item.title = title;
  return item;
}

ArticleItem SomeItem() {
  return Item(1700000000, 12, 3, u"Test", u"1bK_407p", u"", u"標題");
}

TEST(ArticleListFileTest, ReadsAndWritesFoldersAndItems) {
  const std::u16string text =
      u"17\r\n"
      u"1700000000 12 3 Test 1bK_407p more [問題] 兩個  blanks\n"
      u"<Folder Name=a > b>\n"
      u"    <Folder Name= >\n"
      u"        -1 -2147483648 -1    \n"
      u"    </Folder>\n"
      u"    5 6 7 Test 1bK_407p  no extra\n"
      u"</Folder>\n"
      u"8 9 10 Test   title only\n";
  const ArticleLists lists = ReadText(text, Kind::kHot);
  EXPECT_EQ(lists.hotHeader, 17);
  const ArticleFolder& root = lists.Of(Kind::kHot);
  ASSERT_EQ(root.children.size(), 3U);
  EXPECT_EQ(ItemAt(root, 0), Item(1700000000, 12, 3, u"Test", u"1bK_407p", u"more", u"[問題] 兩個  blanks"));
  const ArticleFolder& folder = FolderAt(root, 1);
  EXPECT_EQ(folder.name, u"a > b");
  EXPECT_EQ(FolderAt(folder, 0).name, u" ");
  EXPECT_EQ(ItemAt(FolderAt(folder, 0), 0), Item(-1));
  EXPECT_EQ(ItemAt(folder, 1), Item(5, 6, 7, u"Test", u"1bK_407p", u"", u"no extra"));
  EXPECT_EQ(ItemAt(root, 2), Item(8, 9, 10, u"Test", u"", u"", u"title only"));
  EXPECT_EQ(ArticleListText(lists, Kind::kHot), text);
}

TEST(ArticleListFileTest, FolderLinesLoseTheirLastCharacter) {
  const ArticleLists lists =
      ReadText(u"<Folder Name=abc\n</Folder>\n<Folder Name=\n</Folder>\n<folder name=x>", Kind::kBookmarks);
  EXPECT_EQ(FolderAt(lists.Of(Kind::kBookmarks), 0).name, u"ab");
  EXPECT_EQ(FolderAt(lists.Of(Kind::kBookmarks), 1).name, u"");
  EXPECT_EQ(ItemAt(lists.Of(Kind::kBookmarks), 2).title, u"");  // another spelling is no folder
}

TEST(ArticleListFileTest, LinksOfTheOlderLayoutBecomeBoardAndCode) {
  const ArticleItem expected = Item(1, 2, 3, u"Test", u"1bK_407p", u"more", u"the title");
  for (const std::u16string_view link : {u"https://www.bbs.example/bbs/Test/M.1700000000.A.1F3.html",
                                         u"https://m1.example/bbs/Test/M.1700000000.A.1F3.html",
                                         u"https://m2.example/p/Test.M.1700000000.A.1F3"}) {
    const std::u16string line = std::u16string(u"1 2 3 ").append(link).append(u" more the title");
    const ArticleLists lists = ReadText(line, Kind::kBookmarks);
    EXPECT_EQ(ItemAt(lists.Of(Kind::kBookmarks), 0), expected);
    EXPECT_EQ(ArticleListText(lists, Kind::kBookmarks), u"1 2 3 Test 1bK_407p more the title\n");
  }
  EXPECT_EQ(ReadItem(u"1 2 3 https://other.example more the title"),
            Item(1, 2, 3, u"", u"", u"more", u"the title"));
  EXPECT_EQ(ReadItem(u"1 2 3 seventeen_letters more x title").board, u"seventeen_letters");
  EXPECT_EQ(ReadItem(u"1 2 3 eighteen_letters_x more x title").board, u"");
}

TEST(ArticleListFileTest, DamagedItemLinesKeepWhatTheyHold) {
  EXPECT_EQ(ReadItem(u"42"), Item(42));
  EXPECT_EQ(ReadItem(u"42 7"), Item(42, 7));
  EXPECT_EQ(ReadItem(u"a b c"), Item(0, 0, 0));
  EXPECT_EQ(ReadItem(u"1 2 3 Test"), Item(1, 2, 3, u"Test", u"", u"", u""));
  EXPECT_EQ(ReadItem(u"1 2 3 https://www.bbs.example/bbs/Test/M.1700000000.A.1F3"),
            Item(1, 2, 3, u"Test", u"1bK_407p", u"", u""));
  const ArticleItem high = ReadItem(u"9223372036854775808 2147483648 99999999999999999999");
  EXPECT_EQ(high, Item(INT64_MAX, INT32_MAX, INT32_MAX));
  const ArticleItem low = ReadItem(u"-9223372036854775809 -2147483649 -99999999999999999999");
  EXPECT_EQ(low, Item(INT64_MIN, kNoScore, INT32_MIN));
  EXPECT_EQ(ReadItem(u"+17x5").postTime, 17);
}

TEST(ArticleListFileTest, FolderLinesThatDoNotMatchAreForgiven) {
  const ArticleLists lists = ReadText(
      u"</Folder>\n</Folder>\n1 1 1\n<Folder Name=a>\n2 2 2\n<Folder Name=b>\n3 3 3", Kind::kBookmarks);
  const ArticleFolder& root = lists.Of(Kind::kBookmarks);
  ASSERT_EQ(root.children.size(), 2U);
  EXPECT_EQ(ItemAt(root, 0).postTime, 1);
  EXPECT_EQ(ItemAt(FolderAt(root, 1), 0).postTime, 2);
  EXPECT_EQ(ItemAt(FolderAt(FolderAt(root, 1), 1), 0).postTime, 3);
}

TEST(ArticleListFileTest, HeadersAreNeverItems) {
  const ArticleLists hot = ReadText(u"0\n\n17\n1 2 3 Test", Kind::kHot);
  EXPECT_EQ(hot.hotHeader, 17);
  EXPECT_EQ(hot.Of(Kind::kHot).children.size(), 1U);
  EXPECT_EQ(ReadText(u"<Folder Name=x>\n-99999999999", Kind::kHot).hotHeader, INT32_MIN);

  const ArticleLists tracked = ReadText(u"\r\n\r\n  <Folder Name=a>  \r\n1 2 3 Test", Kind::kTracked);
  EXPECT_EQ(tracked.trackHeader, u"<Folder Name=a>");
  EXPECT_EQ(tracked.Of(Kind::kTracked).children.size(), 1U);
  EXPECT_EQ(ReadText(u"17", Kind::kBookmarks).Of(Kind::kBookmarks).children.size(), 1U);

  ArticleLists blank = WithChild(Kind::kTracked, SomeItem());
  blank.trackHeader = u" \n ";
  EXPECT_TRUE(Rewritten(blank, Kind::kTracked).Of(Kind::kTracked) == blank.Of(Kind::kTracked));
}

TEST(ArticleListFileTest, LongTextsAreCutBetweenCharacters) {
  ArticleItem item = SomeItem();
  const std::u16string head = u"1700000000 12 3 Test 1bK_407p  ";
  // In a folder, where the line is indented: a pair that fits exactly, and one whose second half would not.
  const std::size_t room = kLongestLine - 4 - head.size();
  for (const std::size_t before : {room - 2, room - 1}) {
    item.title = std::u16string(before, u'字') + u"𠮷𠮷";
    const ArticleLists again =
        Rewritten(WithChild(Kind::kBookmarks, ArticleFolder{u"f", {item}}), Kind::kBookmarks);
    const ArticleFolder& folder = FolderAt(again.Of(Kind::kBookmarks), 0);
    ASSERT_EQ(folder.children.size(), 1U);
    EXPECT_EQ(ItemAt(folder, 0).title, item.title.substr(0, before == room - 2 ? room : before));
  }

  item.board = u"0123456789abcdef𠮷";  // so long a token would be read as a link
  EXPECT_EQ(ItemAt(Rewritten(WithChild(Kind::kHot, item), Kind::kHot).Of(Kind::kHot), 0).board,
            u"0123456789abcdef");
  const ArticleFolder folder{std::u16string(600, u'>'), {SomeItem()}};
  const ArticleLists again = Rewritten(WithChild(Kind::kHot, folder), Kind::kHot);
  EXPECT_EQ(FolderAt(again.Of(Kind::kHot), 0).name, std::u16string(kLongestLine - 14, u'>'));
  EXPECT_EQ(ItemAt(FolderAt(again.Of(Kind::kHot), 0), 0), SomeItem());
}

TEST(ArticleListFileTest, FoldersThatAreTooDeepDissolve) {
  std::vector<std::u16string> lines(100000, u"<Folder Name=f>");
  lines.push_back(u"1 1 1");
  lines.insert(lines.end(), 100000 - 1, u"</Folder>");
  lines.insert(lines.end(), {u"2 2 2", u"</Folder>", u"3 3 3"});
  ArticleLists lists;
  ReadArticleLines(lines, Kind::kBookmarks, kHosts, lists);
  const ArticleFolder* folder = &lists.Of(Kind::kBookmarks);
  EXPECT_EQ(ItemAt(*folder, 1).postTime, 3);
  EXPECT_EQ(ItemAt(FolderAt(*folder, 0), 1).postTime, 2);
  for (std::size_t depth = 0; depth < kDeepestFolder; ++depth)
    folder = &FolderAt(*folder, 0);
  EXPECT_EQ(ItemAt(*folder, 0).postTime, 1);

  // The writer has the same limit.
  ArticleFolder deep{u"in", {SomeItem()}};
  for (std::size_t depth = 0; depth < 2 * kDeepestFolder; ++depth)
    deep = ArticleFolder{u"out", {std::move(deep)}};
  const std::u16string text = ArticleListText(WithChild(Kind::kBookmarks, deep), Kind::kBookmarks);
  EXPECT_EQ(std::count(text.begin(), text.end(), u'>'), 2 * static_cast<std::ptrdiff_t>(kDeepestFolder));
  const ArticleLists again = ReadText(text, Kind::kBookmarks);
  folder = &again.Of(Kind::kBookmarks);
  for (std::size_t depth = 0; depth < kDeepestFolder; ++depth)
    folder = &FolderAt(*folder, 0);
  EXPECT_EQ(ItemAt(*folder, 0), SomeItem());
}

// Random trees, of texts that a line can hold or of any.
class RandomLists {
 public:
  enum class Texts { kOrderly, kHostile };
  RandomLists(unsigned seed, Texts texts) : random_(seed), texts_(texts) {}

  ArticleLists Make() {
    ArticleLists lists;
    if (Below(2) == 1) lists.hotHeader = static_cast<std::int32_t>(random_());
    if (Below(2) == 1) lists.trackHeader = Text(20, u"");
    for (ArticleFolder& root : lists.roots)
      Fill(root, 0);
    return lists;
  }

 private:
  std::size_t Below(std::size_t count) { return static_cast<std::size_t>(random_()) % count; }

  void Fill(ArticleFolder& folder, std::size_t depth) {
    for (std::size_t left = Below(5); left > 0; --left) {
      if (depth < 70 && Below(3) == 0) {
        ArticleFolder inner{Text(20, u" <>"), {}};
        Fill(inner, depth + 1 + (Below(8) == 0 ? 20 : 0));
        folder.children.emplace_back(std::move(inner));
      } else {
        folder.children.emplace_back(RandomItem());
      }
    }
  }

  ArticleItem RandomItem() {
    ArticleItem item;
    item.board = Text(12, u"");
    item.code = Text(8, u"@");
    item.extra = Text(10, u"<>");
    item.postTime = static_cast<std::int64_t>(random_()) << Below(32);
    item.score = static_cast<std::int32_t>(random_());
    item.mark = static_cast<std::int32_t>(random_());
    item.title = Text(60, u" <>");
    // What a line cannot hold at its end.
    if (texts_ == Texts::kOrderly) item.title = item.title.substr(0, item.title.find_last_not_of(u' ') + 1);
    return item;
  }

  std::u16string Text(std::size_t most, std::u16string_view more) {
    constexpr std::u16string_view kHostileUnits = u"\n\r\t \0\x1B\x85\u2028 <>/Folder Name=09-https:"sv;
    std::u16string text;
    if (Below(4) == 0) return text;
    const bool isHostile = texts_ == Texts::kHostile;
    if (isHostile && Below(8) == 0) most = 700;
    for (std::size_t left = Below(most + 1); left > 0; --left) {
      const std::size_t choice = Below(isHostile ? 6 : 4);
      if (choice == 0 && !more.empty())
        text += more[Below(more.size())];
      else if (choice == 1 && left > 1)
        text += u"𠮷", --left;
      else if (choice < 4)
        text += u"abcXYZ09漢字"[Below(10)];
      else if (choice == 4)
        text += kHostileUnits[Below(kHostileUnits.size())];
      else
        text += static_cast<char16_t>(random_());
    }
    return text;
  }

  std::mt19937 random_;
  Texts texts_;
};

// The numbers of the items, in order, and where folders begin and end; no text can change them.
void CollectNumbers(const ArticleFolder& folder, std::vector<std::int64_t>& numbers) {
  for (const ArticleFolder::Child& child : folder.children) {
    if (const auto* const inner = std::get_if<ArticleFolder>(&child)) {
      numbers.push_back(INT64_MIN);
      CollectNumbers(*inner, numbers);
      numbers.push_back(INT64_MAX);
    } else {
      const auto& item = std::get<ArticleItem>(child);
      numbers.insert(numbers.end(), {item.postTime, item.score, item.mark});
    }
  }
}

std::vector<std::int64_t> NumbersOf(const ArticleFolder& folder) {
  std::vector<std::int64_t> numbers;
  CollectNumbers(folder, numbers);
  return numbers;
}

TEST(ArticleListFileTest, RandomListsComeBackAsTheyAre) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    const ArticleLists lists = RandomLists(seed, RandomLists::Texts::kOrderly).Make();
    for (const Kind kind : kKinds) {
      const ArticleLists again = Rewritten(lists, kind);
      ASSERT_TRUE(again.Of(kind) == lists.Of(kind)) << seed;
      if (kind == Kind::kHot) {
        ASSERT_EQ(again.hotHeader, lists.hotHeader) << seed;
      }
      if (kind == Kind::kTracked) {
        ASSERT_EQ(again.trackHeader, lists.trackHeader) << seed;
      }
    }
  }
}

TEST(ArticleListFileTest, RandomHostileListsKeepTheirItemsAndSettle) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    const ArticleLists lists = RandomLists(seed, RandomLists::Texts::kHostile).Make();
    for (const Kind kind : kKinds) {
      const ArticleLists first = Rewritten(lists, kind);
      const ArticleLists second = Rewritten(first, kind);
      ASSERT_EQ(NumbersOf(first.Of(kind)), NumbersOf(lists.Of(kind))) << seed;
      ASSERT_TRUE(second.Of(kind) == first.Of(kind)) << seed;
      ASSERT_EQ(second.trackHeader, first.trackHeader) << seed;
      if (kind == Kind::kHot) {
        ASSERT_EQ(first.hotHeader, lists.hotHeader) << seed;
      }
    }
  }
}

TEST(BoardWeightsTest, LinesAreReadAndWritten) {
  BoardWeights weights{{u"Kept", 1}, {u"Old", 2}};
  ReadBoardWeightLines({u"Test 5", u"Old  -7 9", u"NoNumber", u"Word x", u"Large 99999999999", u"看板 3"},
                       weights);
  EXPECT_EQ(weights, (BoardWeights{{u"Kept", 1},
                                   {u"Large", INT32_MAX},
                                   {u"NoNumber", 0},
                                   {u"Old", -7},
                                   {u"Test", 5},
                                   {u"Word", 0},
                                   {u"看板", 3}}));
  EXPECT_EQ(BoardWeightsText({{u"", 9}, {u"B a\nd 7\n", 1}, {u"Test", -5}}), u"Bad7 1\nTest -5\n");
  const std::u16string longName(600, u'x');
  BoardWeights again;
  ReadBoardWeightLines(ReadLines(EncodeText(BoardWeightsText({{longName, INT32_MIN}}), "\n")).lines, again);
  EXPECT_EQ(again, (BoardWeights{{longName.substr(0, kLongestLine - 12), INT32_MIN}}));
}

// The list of "x:title <folder y >".
ArticleFolder Tree(std::u16string_view text) {
  std::u16string lines;
  for (std::size_t end = 0; !text.empty(); text.remove_prefix(std::min(end + 1, text.size()))) {
    end = std::min(text.find(u' '), text.size());
    const std::u16string word(text.substr(0, end));
    const std::size_t colon = std::min(word.find(u':'), word.size());
    if (word == u">")
      lines += u"</Folder>\n";
    else if (word.starts_with(u'<'))
      lines += u"<Folder Name=" + word.substr(1) + u">\n";
    else
      lines += u"1 2 3 Art " + word.substr(0, colon) + u"  " + word.substr(colon) + u"\n";
  }
  return ReadText(lines, Kind::kBookmarks).Of(Kind::kBookmarks);
}

TEST(ArticleListMergeTest, WhatEitherProgramDidStays) {
  const struct {
    std::u16string_view base, ours, theirs, merged;
  } cases[] = {
      {u"a b", u"x a b", u"y a b", u"x y a b"},
      {u"a b c", u"a c", u"b c", u"c"},
      {u"a b c", u"a b x c", u"c a", u"c a x"},
      {u"a b c d", u"a:o b:o c d:o", u"a:t c:t d", u"a:o b:o c:t d:o"},
      {u"a b", u"b", u"a:t b", u"b"},
      {u"", u"a:o", u"a:t", u"a:o"},
      {u"a a", u"a", u"a a b", u"a b"},
      {u"<f a b >", u"<f a b x >", u"", u"<f x >"},
      {u"<f a >", u"", u"<f a y >", u"<f y >"},
      {u"<f a > <g >", u"", u"<f a > <g >", u""},
      {u"", u"<f x > <g >", u"<f y <f z > >", u"<f x y <f z > > <g >"},
      {u"a <f b >", u"<f b a >", u"a b", u"<f a > b"},
  };
  for (const auto& c : cases) {
    ArticleFolder ours = Tree(c.ours);
    MergeArticles(ours, Tree(c.theirs), Tree(c.base));
    EXPECT_TRUE(ours == Tree(c.merged)) << Utf8FromUtf16(c.ours) << " and " << Utf8FromUtf16(c.theirs);
  }
}

TEST(ArticleListFilesTest, SavedListsAreLoaded) {
  UserFolders user;
  const ArticleLists lists = RandomLists(1, RandomLists::Texts::kOrderly).Make();
  {
    StartedFiles files(user);
    for (const Kind kind : kKinds)
      ASSERT_TRUE(SaveArticleList(files, lists, kind));
    ASSERT_TRUE(SaveBoardWeights(files, {{u"Test", 5}}));
  }
  StartedFiles files(user);
  ArticleLists loaded;
  BoardWeights weights;
  LoadArticleLists(files, kHosts, loaded, weights);
  EXPECT_TRUE(loaded.roots == lists.roots);
  EXPECT_EQ(loaded.hotHeader, lists.hotHeader);
  EXPECT_EQ(loaded.trackHeader, lists.trackHeader);
  EXPECT_EQ(weights, (BoardWeights{{u"Test", 5}}));

  // A missing file leaves what there is.
  std::filesystem::remove(files.Locate("hot.txt"));
  LoadArticleLists(files, kHosts, loaded, weights);
  EXPECT_TRUE(loaded.roots == lists.roots);
}

}  // namespace
}  // namespace quillet
