// One key of the client's own that moves the reader, and the page that answers it: at most one is on its way,
// and its page is told from one that the user's keys have led to. Used by the article reading, on its thread.
#pragma once

#include <cstdint>
#include <optional>

#include "bbs/article/article_lines.h"

namespace quillet {

// A whole page of an article.
struct ReaderPlace {
  ArticleLines::Place place;
  bool atEnd = false;

  bool operator==(const ReaderPlace&) const = default;
};

class PageRequest {
 public:
  // The key has been sent from this page. `key` is a code of core/key_sequence.h: Page Up, Page Down, Home or
  // End; `now` milliseconds of a steady clock.
  void Begin(int key, const ReaderPlace& from, std::int64_t now);
  // The answer is awaited.
  bool IsPending() const { return pending_; }
  // For so long; only while pending.
  std::int64_t WaitedFor(std::int64_t now) const { return now - at_; }
  // Nobody waits for the answer any more, but it may still come.
  void Abandon();
  void Forget();

  // Whether this page is the answer. While it is awaited any page but the one it was asked from is;
  // afterwards only the one that the key leads to, and only within kLate of the key.
  bool Answers(const ReaderPlace& page, std::int64_t now);

  static constexpr std::int64_t kLate = 10'000;  // ms

 private:
  bool LeadsTo(const ReaderPlace& page) const;

  int key_ = 0;
  ReaderPlace from_;
  std::int64_t at_ = 0;
  bool pending_ = false;
  bool late_ = false;
};

}  // namespace quillet
