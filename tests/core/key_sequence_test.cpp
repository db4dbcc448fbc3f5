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
    const bool known = (key >= 33 && key <= 40) || key == 45 || key == 46;
    EXPECT_EQ(!bytes.empty(), known) << key;
    EXPECT_FALSE(known && !seen.emplace(bytes).second) << key << " shares its sequence";
  }
}

}  // namespace
}  // namespace quillet
