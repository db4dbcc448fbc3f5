// A content folder for the demo BBS with one board of one very long article, made of the demo's own texts.
// Used by benchmarks, on one thread.
#pragma once

#include <cstddef>
#include <filesystem>

namespace quillet {

inline constexpr const char* kLongBoard = "Endless";

// Copies `content` to `folder`, which does not exist yet, with the board kLongBoard in place of its boards.
// The reader shows its article in `lines` rows, or a few more where it wraps long ones: three quarters are
// text, colours and all, the rest push lines. False when a file cannot be read or written, or when there is
// no text.
bool WriteLongArticle(const std::filesystem::path& content, const std::filesystem::path& folder,
                      std::size_t lines);

}  // namespace quillet
