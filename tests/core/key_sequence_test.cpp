#include "core/key_sequence.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace quillet {
namespace {

TEST(KeySequenceTest, OnlyTheTenKeysHaveASequenceAndItIsTheirOwn) {
  std::set<std::string> seen;
  for (int key = -256; key <= 512; ++key) {
    const std::string_view bytes = KeySequence(key);
    const std::u16string_view wide = WideKeySequence(key);
    EXPECT_EQ(std::u16string(bytes.begin(), bytes.end()), wide) << key;
    const bool known = (key >= 33 && key <= 40) || key == 45 || key == 46;
    EXPECT_EQ(!bytes.empty(), known) << key;
    EXPECT_FALSE(known && !seen.emplace(bytes).second) << key << " shares its sequence";
  }
}

// VT220 names the editing keys by number; BBSes take 1 and 4 for Home and End.
TEST(KeySequenceTest, SequencesAreThoseOfTheTerminal) {
  std::string all;
  for (int key = 33; key <= 46; ++key)
    all += KeySequence(key);
  EXPECT_EQ(all, "\x1b[5~\x1b[6~\x1b[4~\x1b[1~\x1b[D\x1b[A\x1b[C\x1b[B\x1b[2~\x1b[3~");
}

}  // namespace
}  // namespace quillet
