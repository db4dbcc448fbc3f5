// File names and codes of articles, and how the BBS writes dates. Pure; any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillet::demo {

// "M.1700000000.A.1F3"; the suffix is taken modulo 4096.
std::string ArticleFileName(std::int64_t seconds, unsigned suffix);
// The eight characters of the same article's code.
std::string ArticleCode(std::int64_t seconds, unsigned suffix);
// A number that stays the same for the same text, on every machine (FNV-1a).
std::uint32_t StableHash(std::string_view text);

// A moment on the BBS's own clock, which is eight hours ahead of UTC.
struct BbsTime {
  int year = 1970, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};
std::int64_t SecondsOf(const BbsTime& time);
BbsTime TimeOf(std::int64_t seconds);

// "2026-10-03 21:14:05"; false for anything else.
bool ParseBbsTime(std::string_view text, BbsTime& time);
std::string HeaderTime(std::int64_t seconds);  // "Sat Oct  3 21:14:05 2026"
std::string PushTime(std::int64_t seconds);    // "10/03 21:14"

}  // namespace quillet::demo
