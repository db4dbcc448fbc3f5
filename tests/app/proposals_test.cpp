// What the dialogs propose: an address to connect to, an id to note.
#include <gtest/gtest.h>

#include "app/author_at_cursor.h"
#include "app/site_choice.h"
#include "bbs/page_flags.h"
#include "tests/support/screen_builder.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

using ProposalsTest = WithTables;

TEST_F(ProposalsTest, TheAddressUsedLastWhereItCanBeConnectedTo) {
  EXPECT_EQ(ProposedAddress("telnet://other.example:2323", "bbs.example"), "telnet://other.example:2323");
  EXPECT_EQ(ProposedAddress("other.example", "bbs.example"), "other.example");
  for (const char* unfit : {"", "ssh://", "gopher://x", "telnet://"})
    EXPECT_EQ(ProposedAddress(unfit, "bbs.example"), "telnet://bbs.example") << unfit;
  EXPECT_EQ(ProposedAddress("", ""), "");
}

TEST_F(ProposalsTest, TheAuthorUnderTheListsCursorOrOfTheOpenArticle) {
  ScreenBuilder list;
  list.Put(5, 0, u"    12 + 3 1/02 kitten       □ 標題").Put(6, 0, u"    13   1/02 -            □ (已刪除)");
  list.Put(7, 0, u"    14     1/02 twelveletter □ 標題").Cursor(5, 1);
  EXPECT_EQ(AuthorAtCursor(list.screen), u"") << "not known as a list";
  list.screen.pageFlags = PF_ARTICLE_LIST_CURSOR;
  list.Put(5, 17, u"kitten      ").Put(6, 17, u"-           ").Put(7, 17, u"twelveletter");
  EXPECT_EQ(AuthorAtCursor(list.screen), u"kitten");
  EXPECT_EQ(AuthorAtCursor(list.Cursor(6, 1).screen), u"");
  EXPECT_EQ(AuthorAtCursor(list.Cursor(7, 1).screen), u"twelveletter");
  EXPECT_EQ(AuthorAtCursor(list.Cursor(-3, 200).screen), u"");

  ScreenBuilder article;
  article.Put(0, 0, u" 作者  kitten (喵) 看板  Cats");
  article.screen.pageFlags = PF_READING | PF_READ_TOP;
  EXPECT_EQ(AuthorAtCursor(article.screen), u"kitten");
  article.screen.pageFlags = PF_READING;
  EXPECT_EQ(AuthorAtCursor(article.screen), u"") << "further down row 0 is text";
}

}  // namespace
}  // namespace quillet
