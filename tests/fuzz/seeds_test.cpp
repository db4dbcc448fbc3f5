// One program for each fuzz target: a promise that is broken aborts it.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>

#include "tests/support/tables.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace quillet {
namespace {

constexpr int kRounds = 1500;

std::vector<std::string> Corpus() {
  std::vector<std::string> corpus;
  for (const auto& file :
       std::filesystem::directory_iterator(QUILLET_SOURCE_DIR "/fuzz/corpus/" QUILLET_FUZZ_TARGET)) {
    std::ifstream in(file.path(), std::ios::binary);
    corpus.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  std::sort(corpus.begin(), corpus.end());
  return corpus;
}

void RunTarget(const std::string& bytes) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

TEST(SeedsTest, TheCorpusAndWhatGrowsFromItKeepEveryPromise) {
  LoadTestTables();
  const std::vector<std::string> corpus = Corpus();
  ASSERT_FALSE(corpus.empty());
  std::for_each(corpus.begin(), corpus.end(), RunTarget);
  std::minstd_rand random(20261201);
  const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random() >> 7) % limit; };
  for (int round = 0; round < kRounds; ++round) {
    const std::string& front = corpus[below(corpus.size())];
    const std::string& back = corpus[below(corpus.size())];
    std::string bytes = front.substr(0, below(front.size() + 1)) + back.substr(below(back.size() + 1));
    for (std::size_t changes = below(9); changes > 0 && !bytes.empty(); --changes)
      bytes[below(bytes.size())] = static_cast<char>(below(256));
    RunTarget(bytes);
  }
}

}  // namespace
}  // namespace quillet
