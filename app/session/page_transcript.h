// A session as text that can be read later: each page once, when it has settled or the next one takes its
// place, and of a page that changes a little only the lines that did. Screens go in with the time at which
// they came, text comes out; no clock of its own. Used by the session log, on its thread. The character
// tables must be loaded.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "core/screen_snapshot.h"

namespace quillet {

using ScreenRows = std::array<ScreenRow, kRows>;

class PageTranscript {
 public:
  // `stamp` gives the time of day as it stands above each page.
  explicit PageTranscript(std::function<std::u16string()> stamp) : stamp_(std::move(stamp)) {}

  // A screen as a read has left it, at `now` milliseconds. Returns the page that is gone by it, if that had
  // stood; else nothing. Lines end with LF.
  std::u16string Take(const ScreenRows& screen, std::int64_t now);
  // When Settle would return something; nothing while no page waits.
  std::optional<std::int64_t> SettlesAt() const;
  // The page that has not changed for kSettleMs, or any that waits at the end.
  std::u16string Settle(std::int64_t now);
  std::u16string Finish();

  static constexpr std::int64_t kSettleMs = 400;
  // A screen that the next read covers sooner is half of a page on its way.
  static constexpr std::int64_t kHalfDrawnMs = 20;

 private:
  std::u16string Write();

  std::function<std::u16string()> stamp_;
  std::optional<ScreenRows> waiting_;
  std::int64_t changedAt_ = 0;
  std::optional<ScreenRows> written_;
};

}  // namespace quillet
