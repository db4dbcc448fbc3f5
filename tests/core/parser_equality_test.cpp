// The parser against the plain reference on hostile streams: same cells, same hand-overs, same bells, in the
// same order, however the stream is cut.
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

#include "core/term_screen.h"
#include "tests/support/feeding.h"
#include "tests/support/recording_watcher.h"
#include "tests/support/reference_parser.h"
#include "tests/support/tables.h"

namespace quillet {
namespace {

// Streams that keep close to what the parser understands, so that its every corner is met often.
class HostileStream {
 public:
  explicit HostileStream(unsigned seed) : random_(seed) {}

  std::string Make(int tokens) {
    std::string bytes;
    while (tokens-- > 0)
      Token(bytes);
    return bytes;
  }
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

 private:
  template <class Choices>
  auto Pick(const Choices& choices) {
    return choices[static_cast<std::size_t>(Below(static_cast<int>(std::size(choices))))];
  }

  void Token(std::string& bytes) {
    static constexpr std::string_view kControls[] = {"\n", "\r",   "\r\n",  "\b",
                                                     "\a", "\x1b", "\x1bM", "\x1b\x1b["};
    static constexpr std::string_view kPages[] = {"\x1b[24;1HR",
                                                  "\x1b[2;1HA",
                                                  "\x1b[1;1HC",
                                                  "\x1b[24;1H",
                                                  "\x1b[23;1H\x1b[1;33;46m\xa1",
                                                  "\x1b[24;1H\x1b[1;33;46m\xa1",
                                                  "\x1b[24;1H\x1b[44mR ",
                                                  "\x1b[24;79H\x1b[45m \x1b[m"};
    switch (Below(10)) {
      case 0:
        bytes += Pick(kControls);
        break;
      case 1:
        bytes += Pick(kPages);
        break;
      case 2:
        bytes += static_cast<char>(Below(256));
        break;
      case 3:
        ParkedStatusLine(bytes);
        break;
      case 4:
      case 5:
        for (int i = Below(Below(8) == 0 ? 120 : 12); i > 0; --i)
          bytes += static_cast<char>(28 + Below(228));
        break;
      default:
        Sequence(bytes);
        break;
    }
  }

  void Sequence(std::string& bytes) {
    static constexpr char kFinals[] = {'m', 'm', 'm', 'H', 'H',  'K',  'L',
                                       'J', 'A', '?', ' ', '\a', '\0', '@'};
    bytes += "\x1b[";
    const int params = Below(40) == 0 ? 14 + Below(8) : Below(4);
    for (int i = 0; i < params; ++i) {
      if (i > 0) bytes += ';';
      const int kind = Below(8);
      if (kind == 0) continue;
      bytes += std::to_string(kind == 1 ? Below(400) : kind < 4 ? Below(50) : Below(26));
    }
    bytes += Pick(kFinals);
  }

  void ParkedStatusLine(std::string& bytes) {
    bytes += "\x1b[m" + At(23, 66 + Below(14)) + "\x1b[K\x1b[4" + std::to_string(Below(8)) + "m ";
    if (Below(4) != 0) bytes += "\x1b[m";
  }

  std::minstd_rand random_;
};

struct Pair {
  Pair() : reference(&expected) {
    screen.SetWatcher(&actual);
    screen.notifyWindow = &actual;
    reference.notifyWindow = &expected;
    screen.msgWatch = reference.msgWatch = 1;
  }
  void Feed(std::string_view batch) {
    screen.Feed(AsBytes(batch));
    reference.Feed(AsBytes(batch));
  }
  bool Same() const { return SameScreen(screen, reference) && SameEvents(actual, expected); }

  RecordingWatcher actual, expected;
  TermScreen screen;
  ReferenceScreen reference;
};

std::string Escaped(std::string_view bytes) {
  std::string out;
  for (const char byte : bytes) {
    if (byte >= ' ' && byte < 0x7F) {
      out += byte;
    } else {
      char hex[8];
      std::snprintf(hex, sizeof(hex), "<%02X>", static_cast<unsigned>(static_cast<unsigned char>(byte)));
      out += hex;
    }
  }
  return out;
}

using ParserEqualityTest = WithTables;

TEST_F(ParserEqualityTest, HostileStreamsCutAtRandom) {
  std::size_t screens = 0, bells = 0;
  for (unsigned seed = 1; seed <= 300; ++seed) {
    HostileStream source(seed);
    Pair pair;
    for (int batch = 0; batch < 12; ++batch) {
      const std::string bytes = source.Make(1 + source.Below(60));
      pair.Feed(bytes);
      ASSERT_TRUE(pair.Same()) << "seed " << seed << ", batch " << batch << ": " << Escaped(bytes);
    }
    screens += pair.expected.Screens();
    bells += pair.expected.Bells();
  }
  // The streams are worth their name.
  EXPECT_GT(screens, 3000u);
  EXPECT_GT(bells, 1000u);
}

TEST_F(ParserEqualityTest, StreamsCutAtEveryByte) {
  HostileStream source(4711);
  for (int round = 0; round < 4; ++round) {
    const std::string bytes = source.Make(40);
    TermScreen whole;
    whole.Feed(AsBytes(bytes));
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
      Pair pair;
      pair.Feed(std::string_view(bytes).substr(0, cut));
      pair.Feed(std::string_view(bytes).substr(cut));
      ASSERT_TRUE(pair.Same()) << "cut at " << cut << ": " << Escaped(bytes);
      ASSERT_EQ(pair.screen.text, whole.text) << "cut at " << cut << ": " << Escaped(bytes);
      ASSERT_EQ(pair.screen.attr, whole.attr) << "cut at " << cut << ": " << Escaped(bytes);
    }
    Pair pair;
    for (const char byte : bytes)
      pair.Feed({&byte, 1});
    ASSERT_TRUE(pair.Same()) << Escaped(bytes);
  }
}

// Words of text, the last cell of a row and the end of a batch meet in every way; so do K and its columns.
TEST_F(ParserEqualityTest, TextOfEveryLengthFromEveryColumn) {
  const std::string_view behind[] = {"", "\r\n", "\n", "\x1b[K", "\x1b[33mlonger than any look-ahead"};
  Pair pair;
  for (int col = 0; col < kCols; ++col) {
    for (int length = 1; length <= kCols - col + 20; ++length) {
      std::string bytes = At(length % kRows, col) + "\x1b[3" + std::to_string(length % 8) + "m";
      for (int i = 0; i < length; ++i)
        bytes += static_cast<char>('!' + (col + length + i) % 90);
      bytes += behind[static_cast<std::size_t>(col + length) % std::size(behind)];
      pair.Feed(bytes);
      ASSERT_TRUE(pair.Same()) << "column " << col << ", length " << length;
      pair.actual.events.clear();
      pair.expected.events.clear();
    }
  }
}

// Sequences of every length around the eight bytes that are remembered, met more than once.
TEST_F(ParserEqualityTest, RememberedSequencesMeanWhatTheyMeantFirst) {
  std::string bytes;
  for (const char* params : {"", "1", ";", "1;2", "12;34", "1;33;44", "01;33;4", "1;33;044", "01;33;044",
                             "1;2;3;4;5", "?25", "1:2", "1;3 "})
    for (const char last : {'m', 'H', 'K', 'L', 'J', 'z', '?', ' ', '\0', '\x80', '\xff', '\x40'})
      bytes += std::string("\x1b[") + params + last + "x";
  Pair pair;
  for (int round = 0; round < 3; ++round) {
    pair.Feed(bytes);
    ASSERT_TRUE(pair.Same()) << "round " << round;
  }
}

}  // namespace
}  // namespace quillet
