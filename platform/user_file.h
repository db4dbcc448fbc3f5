// Reading and replacing whole files that belong to the user. Any thread; two writers of one file end with
// what one of them wrote, whole.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

// A macro of the Windows headers, should they have come before. Where they come after, undo it again.
#undef ReplaceFile

namespace quillet {

struct FileBytes {
  enum class State { kRead, kMissing, kTooLarge, kUnreadable };
  State state = State::kMissing;
  std::string bytes;   // kRead only
  std::string reason;  // kUnreadable: the system's own words, UTF-8
};

// Regular files only (through links); anything else is kUnreadable, and no device or pipe is waited for.
// kTooLarge when the file has more than `limit` bytes.
FileBytes ReadUserFile(const std::filesystem::path& file, std::size_t limit);

// Replaces the content of `file`, or makes it: a temporary file beside it, flushed to the disk, then renamed
// over it, so that a crash at any moment leaves the old content or the new. Keeps the permissions of the old
// file; through a link the file behind it is replaced; a read-only file is refused. Temporary files of runs
// that were killed are cleared away. Returns an empty text, or why nothing was changed (UTF-8).
std::string ReplaceFile(const std::filesystem::path& file, std::string_view bytes);

// Moves a file to another folder, perhaps on another disk, without ever replacing one that is there and
// without leaving a part of it under the new name. Both names exist for a moment; where the old one may not
// be removed it stays, and the whole copy counts. Of a link, the content moves and the link goes. False when
// `to` exists or nothing could be moved; the file is still where it was then.
bool MoveUserFile(const std::filesystem::path& from, const std::filesystem::path& to);

// Why a file is kept aside, and the mark in the copy's name: ".unreadable", ".before".
enum class AsideReason { kUnreadable, kConverted };

// Copies `file` to a free name beside it that says what it is ("Quill.ini.unreadable", then
// "Quill.ini.unreadable-2" and so on; at most 9, then empty). A copy of the same content that is there
// already is good enough, or one more would be made at every start until the file is written. A file of more
// than 16 MB gets a second name (a hard link) where the file system knows them, which keeps what it holds
// when ReplaceFile replaces it; one of more than 1 GB is never copied or compared. Returns the copy, empty
// when there is none.
std::filesystem::path KeepAside(const std::filesystem::path& file,
                                AsideReason reason = AsideReason::kUnreadable);

// Whether files can be made in the folder. False when it does not exist.
bool IsFolderWritable(const std::filesystem::path& folder);

// What the system's editors end a line with.
extern const std::string_view kLineEnd;

}  // namespace quillet
