// Byte streams as a BBS would send them, made the same way at every run, for the benchmarks.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillet {

struct Stream {
  std::string_view name;
  std::string bytes;  // Big5 with control sequences
};

// Lists with minimal redraws, articles with their pushes and status lines.
Stream ScreenStream(std::size_t atLeast);
// Pictures of block characters with a colour change at every cell or two.
Stream ArtStream(std::size_t atLeast);
// Nothing but full lines of text.
Stream TextStream(std::size_t atLeast);

// What the demo sends during a session of a fixed reader, over and over.
Stream DemoStream(std::size_t atLeast);

// One such session, as it was read: one batch for each key. Ends the program when the demo fails.
std::vector<std::string> RecordDemoSession();

std::vector<Stream> AllStreams(std::size_t atLeast);

// The same stream for a terminal that speaks UTF-8.
std::string StreamAsUtf8(std::string_view big5);

// Loads the character tables, without which all text would vanish; ends the program when they are missing.
void LoadTablesOrExit();

}  // namespace quillet
