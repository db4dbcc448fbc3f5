// FromBig5 and ToBig5 over 64 kB of text, against a plain loop of one table read per character that writes
// into a buffer of its own and allocates nothing. Both run in turn inside each iteration; "of_plain" is the
// conversion's time divided by the plain loop's, each at its fastest.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "core/charset.h"

namespace quillet {
namespace {

constexpr std::size_t kTextBytes = 64 * 1024;

// A BBS's pages: phrases of Chinese between stretches of ASCII, lines of at most 80 columns.
std::string PageText() {
  std::minstd_rand random(1);
  std::string bytes;
  std::size_t column = 0;
  while (bytes.size() < kTextBytes - 128) {
    const std::size_t wide = 1 + random() % 16;
    for (std::size_t i = 0; i < wide; ++i) {
      bytes.push_back(static_cast<char>(0xA4 + random() % 0x22));
      bytes.push_back(static_cast<char>(0x40 + random() % 0x3F));
    }
    const std::size_t narrow = 1 + random() % 12;
    for (std::size_t i = 0; i < narrow; ++i)
      bytes.push_back(static_cast<char>(0x20 + random() % 0x5F));
    column += 2 * wide + narrow;
    if (column > 40) {
      bytes += "\r\n";
      column = 0;
    }
  }
  return bytes;
}

// Nothing to predict: each character is wide or narrow by chance.
std::string ShuffledText() {
  std::minstd_rand random(2);
  std::string bytes;
  while (bytes.size() < kTextBytes - 2) {
    if (random() >> 8 & 1) bytes.push_back(static_cast<char>(0xA4 + random() % 0x22));
    bytes.push_back(static_cast<char>(0x40 + random() % 0x3F));
  }
  return bytes;
}

std::size_t PlainFromBig5(const std::string& bytes, char16_t* out) {
  const auto& table = Charset().big5ToUnicode;
  const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* const end = in + bytes.size();
  char16_t* const start = out;
  while (in < end) {
    if (in[0] < 0x80) {
      *out++ = *in++;
    } else {
      *out++ = table[in[0] | in[1] << 8];
      in += 2;
    }
  }
  return static_cast<std::size_t>(out - start);
}

std::size_t PlainToBig5(const std::u16string& text, char* out) {
  const auto& table = Charset().unicodeToBig5;
  char* const start = out;
  for (const char16_t unit : text) {
    if (unit < 0x80) {
      *out++ = static_cast<char>(unit);
    } else {
      const std::uint16_t pair = table[unit];
      *out++ = static_cast<char>(pair & 0xFF);
      *out++ = static_cast<char>(pair >> 8);
    }
  }
  return static_cast<std::size_t>(out - start);
}

double Seconds(auto&& run) {
  const auto start = std::chrono::steady_clock::now();
  run();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The ratio is that of the fastest passes, so that a busy machine does not blur it.
void Compare(benchmark::State& state, std::size_t size, auto&& conversion, auto&& plain) {
  double conversionTime = std::numeric_limits<double>::max();
  double plainTime = conversionTime;
  for (auto _ : state) {
    plainTime = std::min(plainTime, Seconds(plain));
    const double time = Seconds(conversion);
    conversionTime = std::min(conversionTime, time);
    state.SetIterationTime(time);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * size));
  state.counters["of_plain"] = conversionTime / plainTime;
}

void BenchFromBig5(benchmark::State& state, const std::string& bytes) {
  std::vector<char16_t> out(bytes.size());
  benchmark::DoNotOptimize(out.data());  // so that the plain loop's writes count
  Compare(
      state, bytes.size(), [&] { benchmark::DoNotOptimize(FromBig5(bytes)); },
      [&] {
        benchmark::DoNotOptimize(PlainFromBig5(bytes, out.data()));
        benchmark::ClobberMemory();
      });
}

void BenchToBig5(benchmark::State& state, const std::string& bytes) {
  const std::u16string text = FromBig5(bytes);
  std::vector<char> out(2 * text.size());
  benchmark::DoNotOptimize(out.data());
  Compare(
      state, bytes.size(), [&] { benchmark::DoNotOptimize(ToBig5(text)); },
      [&] {
        benchmark::DoNotOptimize(PlainToBig5(text, out.data()));
        benchmark::ClobberMemory();
      });
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  using namespace quillet;
  if (!LoadCharsetTables(QUILLET_SOURCE_DIR "/Data").Complete()) {
    std::fprintf(stderr, "the character tables cannot be read\n");
    return 1;
  }
  const std::string pages = PageText();
  const std::string shuffled = ShuffledText();
  benchmark::RegisterBenchmark("FromBig5/pages", BenchFromBig5, pages)->UseManualTime();
  benchmark::RegisterBenchmark("FromBig5/shuffled", BenchFromBig5, shuffled)->UseManualTime();
  benchmark::RegisterBenchmark("ToBig5/pages", BenchToBig5, pages)->UseManualTime();
  benchmark::RegisterBenchmark("ToBig5/shuffled", BenchToBig5, shuffled)->UseManualTime();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
