// The real character tables for a test program: `const auto tables = LoadTestTables();` at namespace scope
// of a test, or in SetUpTestSuite.
#pragma once

#include <gtest/gtest.h>

#include "core/charset.h"

namespace quillet {

inline void LoadTestTables() {
  static const CharsetLoad load = LoadCharsetTables(QUILLET_SOURCE_DIR "/Data");
  ASSERT_TRUE(load.Complete());
}

// A fixture for everything that compares Chinese text. The tables are there before the members of a derived
// fixture are made, which may convert texts themselves.
class WithTables : public testing::Test {
 protected:
  WithTables() { LoadTestTables(); }
};

}  // namespace quillet
