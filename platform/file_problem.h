// Something that went wrong with a file of the user's, for telling them. A plain value.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace quillet {

struct FileProblem {
  enum class Kind {
    kUnreadable,  // it could not be opened or read; it is left alone and not written in this run
    kTooLarge,    // larger than any file of its kind; nothing of it was read
    kDamaged,     // some of it is no text; the rest was read
    kConverted,   // an older version wrote it; it is read as one of today and will be written as such
    kNotWritten,  // what should be in it is not on disk
  };
  Kind kind = Kind::kUnreadable;
  std::filesystem::path file;
  std::string reason;            // the system's own words, UTF-8; empty when it had none
  std::size_t line = 0;          // kDamaged: the first bad line, from 1; 0 when not known
  std::filesystem::path keptAs;  // where the file was kept aside; empty when it was not
};

}  // namespace quillet
