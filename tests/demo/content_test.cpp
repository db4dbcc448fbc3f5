// The articles that come with the program, and what the loader makes of bad ones.
#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

#include "core/charset.h"
#include "demo/ansi_line.h"
#include "demo/big5_text.h"
#include "demo/content_loader.h"
#include "demo/world.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using ContentTest = WithTables;

const fs::path kContent = QUILLET_SOURCE_DIR "/demo/content";
constexpr std::size_t kBodyColumns = 78;

std::vector<fs::path> TextFiles() {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(kContent))
    if (entry.path().extension() == ".txt") files.push_back(entry.path());
  return files;
}

TEST_F(ContentTest, EveryFileLoadsAndFitsTheScreen) {
  const demo::Content content = demo::LoadContent(kContent);
  for (const std::string& problem : content.problems)
    ADD_FAILURE() << problem;
  ASSERT_FALSE(content.users.empty());
  for (const demo::Board& board : content.boards) {
    EXPECT_LE(board.info.name.size(), 12u);
    EXPECT_LE(board.info.category.size(), 4u) << board.info.name;
    EXPECT_LE(board.info.title.size(), 34u) << board.info.name;
    EXPECT_FALSE(board.articles.empty()) << board.info.name;
    std::set<std::string> names;
    std::int64_t last = 0;
    for (const demo::ArticlePtr& article : board.articles) {
      const std::string where = board.info.name + " " + article->fileName;
      EXPECT_TRUE(names.insert(article->fileName).second) << where;
      EXPECT_LE(last, article->seconds) << where << " is older than the article before";
      last = article->seconds;
      EXPECT_LE(article->authorId.size(), 12u) << where;
      for (std::size_t i = 0; i < article->body.size(); ++i)
        EXPECT_LE(demo::PlainText(article->body[i]).size(), kBodyColumns) << where << " line " << i + 1;
    }
  }
}

// The character at a column of a Big5 line without colours; 0 outside.
char16_t At(const std::string& plain, std::size_t col) {
  return col + 1 < plain.size() ? FromBig5(plain.substr(col, 2)).front() : u'\0';
}

// Box edges stand under the corners that they begin at, in every row down to the box's end.
void ExpectBoxesToClose(const std::vector<std::string>& lines, const std::string& where) {
  const std::u16string_view first = u"┌╔╭", last = u"┐╗╮", level = u"─═┬╦", up = u"│║├┤┼╠╣╬└┘┴╚╝╩╰╯",
                            ends = u"└┘┴╚╝╩╰╯";
  std::vector<std::string> plain(lines.size());
  std::transform(lines.begin(), lines.end(), plain.begin(),
                 [](const auto& line) { return demo::PlainText(line); });
  for (std::size_t row = 0; row < plain.size(); ++row)
    for (std::size_t col = 0; col < plain[row].size(); ++col) {
      if (first.find(At(plain[row], col)) == first.npos) continue;
      std::size_t right = col + 2;
      while (level.find(At(plain[row], right)) != level.npos)
        right += 2;
      if (last.find(At(plain[row], right)) == last.npos) continue;
      for (const std::size_t edge : {col, right}) {
        std::size_t below = row + 1;
        const auto here = [&] { return below < plain.size() ? At(plain[below], edge) : u'\0'; };
        while (up.find(here()) != up.npos && ends.find(here()) == ends.npos)
          ++below;
        EXPECT_NE(ends.find(here()), ends.npos) << where << " line " << below + 1 << " column " << edge;
      }
    }
}

TEST_F(ContentTest, EveryBoxCloses) {
  for (const demo::Board& board : demo::LoadContent(kContent).boards)
    for (const demo::ArticlePtr& article : board.articles)
      ExpectBoxesToClose(article->body, board.info.name + " " + demo::PlainText(article->title));
  for (const auto& entry : fs::directory_iterator(kContent / "screens"))
    ExpectBoxesToClose(demo::LoadScreen(kContent, entry.path().filename().string()), entry.path().string());
}

TEST_F(ContentTest, WhoeverWritesHasAnAccountThatNobodyLogsInWith) {
  const demo::Content content = demo::LoadContent(kContent);
  std::map<std::string, std::string> passwords;
  for (const demo::User& user : content.users)
    EXPECT_TRUE(passwords.emplace(user.id, user.password).second) << user.id;
  for (const demo::Board& board : content.boards)
    for (const demo::ArticlePtr& article : board.articles) {
      EXPECT_TRUE(passwords.contains(article->authorId)) << article->authorId;
      for (const demo::Push& push : article->pushes)
        EXPECT_TRUE(passwords.contains(push.userId)) << push.userId;
    }
  EXPECT_EQ(passwords["newbie77"], "");
  demo::World world(content);
  EXPECT_EQ(world.Transfer("kagami", "newbie77", 10), demo::TransferResult::kDone);
}

TEST_F(ContentTest, NobodyHasTheAddressesThatAreShown) {
  const std::set<std::string> kept{"192.0.2", "198.51.100", "203.0.113"};  // for documentation
  const auto network = [](const std::string& address) { return address.substr(0, address.rfind('.')); };
  for (const demo::Board& board : demo::LoadContent(kContent).boards)
    for (const demo::ArticlePtr& article : board.articles) {
      EXPECT_TRUE(article->address.empty() || kept.contains(network(article->address))) << article->address;
      for (const demo::Push& push : article->pushes)
        EXPECT_TRUE(kept.contains(network(push.address))) << push.address;
    }
}

TEST_F(ContentTest, EveryCharacterHasABig5Form) {
  for (const fs::path& file : TextFiles()) {
    std::ifstream stream(file, std::ios::binary);
    int number = 0;
    for (std::string line; std::getline(stream, line);) {
      ++number;
      const std::u16string text = demo::Utf16FromUtf8(line);
      const auto missing = std::find_if(text.begin(), text.end(), [](char16_t unit) {
        const bool sign = unit == u'\u241B' || unit == u'\u240C' || unit == u'\u241F';
        return unit >= 0x80 && !sign && Charset().unicodeToBig5[unit] == kNoBig5;
      });
      EXPECT_TRUE(missing == text.end())
          << file << ":" << number << " U+" << std::hex << static_cast<unsigned>(*missing);
    }
  }
}

TEST_F(ContentTest, ArticlesAreReadWholeOrRefusedWithAReason) {
  demo::Article article;
  std::string problem;
  const std::string head = "Author: kagami (鏡子)\nTitle: 題\nDate: 2026-10-03 21:14:05\n";
  ASSERT_TRUE(demo::ParseArticle(
      head + "Mark: s\nKind: empty\n\n一\n\n二\n----- pushes\n推|a|b|c|1.2.3.4|10/03 21:20\n", "B/001.txt",
      article, problem));
  EXPECT_EQ(article.authorId, "kagami");
  EXPECT_EQ(article.nickname, ToBig5(u"鏡子"));
  EXPECT_EQ(article.mark, 's');
  EXPECT_EQ(article.body.size(), 3u);
  ASSERT_EQ(article.pushes.size(), 1u);
  EXPECT_EQ(article.pushes[0].text, "b|c");
  EXPECT_EQ(article.pushes[0].address, "1.2.3.4");
  EXPECT_EQ(article.Score(), 1);
  for (const std::string& bad : {std::string("\nno header at all\n"), head + "Kind: unheard\n\n",
                                 std::string("Author: a\nDate: never\n\n"),
                                 head + "\nx\n----- pushes\nnot a push\n", head + "no colon\n\n"}) {
    demo::Article refused;
    problem.clear();
    EXPECT_FALSE(demo::ParseArticle(bad, "B/002.txt", refused, problem)) << bad;
    EXPECT_NE(problem, "");
  }
}

TEST_F(ContentTest, ColoursAreCellsAndOtherSequencesVanish) {
  const auto cells = demo::CellsOf(ToBig5(u"\x1b[1;31m紅\x1b[0;44mb\x1b[5C\x1b[7mc\x1b["));
  ASSERT_EQ(cells.size(), 4u);
  EXPECT_EQ(cells[0].attr, 0x09);
  EXPECT_EQ(cells[2].attr, 0x87);
  EXPECT_EQ(cells[3].attr, 0xE4);
  // A character whose halves have colours of their own; one that loses its second half is no character.
  const auto halves = demo::CellsOf(demo::Big5FromUtf8("\u241b[31m\u241f34m中"));
  ASSERT_EQ(halves.size(), 2u);
  EXPECT_EQ(halves[0].attr, 0x01);
  EXPECT_EQ(halves[1].attr, 0x04);
  EXPECT_TRUE(demo::CellsOf("\xA4\x1b[m").empty());
  EXPECT_EQ(demo::CutColumns(ToBig5(u"a中文"), 4), ToBig5(u"a中"));
  EXPECT_TRUE(demo::ContainsIgnoringCase(ToBig5(u"看 TITLE"), "title"));
  // The second half of a character is no beginning of a word.
  EXPECT_FALSE(demo::ContainsIgnoringCase(std::string("\xA4\x41") + "b", "Ab"));
}

}  // namespace
}  // namespace quillet
