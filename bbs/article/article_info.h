// What is known of the article that the user has open, gathered from the screens that pass and dropped when
// the article is left. Fed with every screen; any one thread.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "bbs/understood_page.h"
#include "core/screen_snapshot.h"

namespace quillet {

struct ArticleInfo {
  std::u16string board{};
  std::u16string author{};
  std::u16string title{};
  std::u16string code{};      // eight characters; empty until the information box has been opened over it
  std::int64_t postTime = 0;  // seconds since 1970; 0 not known
  std::int32_t page = 0;      // shown in the reader; 0 not known
  std::int32_t lastLine = 0;  // shown in the reader; 0 not known

  bool IsArticle() const { return !author.empty() && !board.empty(); }
  bool operator==(const ArticleInfo&) const = default;
};

// The same article, whatever page of it shows.
bool IsSameArticle(const ArticleInfo& one, const ArticleInfo& other);

class ArticleTracker {
 public:
  // The next screen, and what stands on it. `now` as for HeaderSeconds. Returns whether anything known has
  // changed.
  //
  // The article stays open under whatever the BBS draws over the reader and takes away again: prompts,
  // questions, messages, boxes, help pages, and screens that have arrived only half. A list, a menu, the
  // editor or any other page ends it.
  bool Look(const ScreenSnapshot& screen, const UnderstoodPage& page, std::int64_t now);
  // Forgets the article; for a connection that begins or ends.
  void Drop();

  const ArticleInfo& Current() const { return info_; }
  // An article is open, even where its header has not been seen.
  bool IsOpen() const { return open_; }

 private:
  // The rows above those that prompts and messages take.
  static constexpr int kPageRows = kRows - 2;

  // The rows of a header: what they say needs not be read from them twice.
  struct HeaderRows {
    std::array<ScreenRow, 3> text;
    PageHeader header;
    bool operator==(const HeaderRows&) const = default;
  };

  bool Read(const ScreenSnapshot& screen, const UnderstoodPage& page, std::int64_t now);
  bool ReadHeader(const ScreenSnapshot& screen, const UnderstoodPage& page, std::int64_t now);
  bool ReadCode(const ScreenSnapshot& screen, const UnderstoodPage& page);
  bool StaysUnder(const ScreenSnapshot& screen, const UnderstoodPage& page) const;
  bool ShowsTheSamePage(const ScreenSnapshot& screen) const;

  ArticleInfo info_;
  std::optional<HeaderRows> header_;         // that `info_` was read from
  std::array<ScreenRow, kPageRows> page_{};  // what the reader showed last
  bool open_ = false;
};

}  // namespace quillet
