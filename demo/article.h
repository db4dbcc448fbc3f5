// What the demo BBS is about: articles with their pushes, boards, users. Plain values; an article is never
// changed once it is published, a changed copy takes its place, so any thread may read the one it holds.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace quillet::demo {

enum class PushKind { kGood, kBad, kNote };

struct Push {
  PushKind kind = PushKind::kNote;
  std::string userId;
  std::string text;  // Big5
  std::string address;
  std::string time;  // "10/03 21:20"
};

enum class ArticleKind { kPlain, kDisputed, kAnimation, kDeleted, kEmpty };

struct Article {
  std::string authorId;
  std::string nickname;  // Big5
  std::string title;     // Big5, as in the header: with "Re: " or "Fw: ", without a list mark
  std::int64_t seconds = 0;
  std::string address;  // whence it was posted; empty: not shown
  char mark = ' ';      // 'm', 's', '=', '~' or a blank
  ArticleKind kind = ArticleKind::kPlain;
  std::vector<std::string> body;  // Big5 lines with colour sequences
  std::vector<Push> pushes;
  std::string fileName;  // "M.1700000000.A.1F3"
  std::string code;      // the same in eight characters

  // Good pushes less bad ones.
  int Score() const;
};
using ArticlePtr = std::shared_ptr<const Article>;

struct BoardInfo {
  std::string name;        // ASCII
  std::string category;    // Big5, at most 4 columns
  std::string title;       // Big5
  std::string moderators;  // "a/b"
  int popularity = 0;
  int order = 0;
  int pushPauseSeconds = 0;  // a user's next push must wait this long
};

struct Board {
  BoardInfo info;
  std::vector<ArticlePtr> articles;  // oldest first
};

struct Mail {
  std::string fromId;
  std::string title;  // Big5
  std::int64_t seconds = 0;
  std::vector<std::string> body;
  bool read = false;
};

struct User {
  std::string id;
  std::string password;
  std::string nickname;  // Big5
  long money = 0;
  std::set<std::string> flags;  // see users.txt
  bool Has(const std::string& flag) const { return flags.count(flag) != 0; }
};

inline constexpr const char* kGuestId = "guest";

}  // namespace quillet::demo
