// What the places of addresses cost: the search among 500,000 ranges beside std::upper_bound over the same
// records and beside a branchless search with a table over the highest 16 bits; and reading the five files,
// in processor time and in resident memory.
//
//   places_bench [FOLDER]    reads the files of FOLDER, else of the project's own data folder; files that are
//                            not there are made in their true sizes, in a scratch folder
//
// The ratios are those of the fastest passes, taken in turn, so that a busy machine does not blur them.
// Memory is read before anything has been given back that could be used again.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <system_error>
#include <vector>

#include "render/places/places_on_worker.h"

#include "bench/statistics.h"

namespace quillet {
namespace {

namespace fs = std::filesystem;
using Ranges = std::vector<IpRange>;

constexpr std::uint64_t kAllAddresses = std::uint64_t{1} << 32;
constexpr std::size_t kManyRanges = 500000;
constexpr std::size_t kWorldRanges = 385600, kVpnRanges = 10862, kProxyRanges = 42566;
constexpr int kDetailLines = 5000, kNames = 5000;
constexpr std::size_t kAddresses = 1U << 18;
constexpr int kTurns = 20, kInARow = 4;
constexpr int kLoads = 20;

// Gives about `count` ranges, spread over all addresses; one in eight is followed by a gap.
void SpreadRanges(std::size_t count, std::uint32_t seed, auto&& take) {
  std::mt19937 random(seed);
  const std::uint64_t most = (std::uint64_t{2} << 32) / count;
  for (std::uint64_t first = random() % most; first < kAllAddresses;) {
    const std::uint64_t end = std::min(first + 1 + random() % most, kAllAddresses);
    const std::uint64_t last = random() % 8 != 0 ? end - 1 : first + (end - 1 - first) / 2;
    take(IpRange{.first = static_cast<std::uint32_t>(first),
                 .last = static_cast<std::uint32_t>(last),
                 .value = static_cast<std::uint32_t>(random() | 1)});
    first = end;
  }
}

// About half a million as networks are given out: one block of 65,536 addresses in sixteen is in 128 pieces,
// the others are whole.
Ranges CrowdedRanges() {
  std::mt19937 random(2);
  Ranges ranges;
  for (std::uint32_t block = 0x01000000; block < 0xE0000000; block += 0x10000) {
    const std::uint32_t step = random() % 16 == 0 ? 0x10000 / 128 : 0x10000;
    for (std::uint32_t first = block; first < block + 0x10000; first += step)
      ranges.push_back({first, first + step - 1, static_cast<std::uint32_t>(random() | 1)});
  }
  return ranges;
}

class TopTable {
 public:
  explicit TopTable(const Ranges& ranges) : ranges_(ranges), starts_((1U << 16) + 1) {
    std::size_t at = 0;
    for (std::size_t top = 0; top < starts_.size(); ++top) {
      while (at < ranges.size() && ranges[at].first >> 16 < top)
        ++at;
      starts_[top] = static_cast<std::uint32_t>(at);
    }
  }
  std::uint32_t Find(std::uint32_t address) const {
    const std::size_t top = address >> 16;
    const IpRange* behind = ranges_.data() + starts_[top];
    for (std::size_t count = starts_[top + 1] - starts_[top]; count > 0;) {
      const std::size_t half = (count + 1) / 2;
      behind += behind[half - 1].first <= address ? half : 0;
      count -= half;
    }
    if (behind == ranges_.data()) return 0;
    return address <= behind[-1].last ? behind[-1].value : 0;
  }

 private:
  const Ranges& ranges_;
  std::vector<std::uint32_t> starts_;
};

std::uint32_t UpperBound(const Ranges& ranges, std::uint32_t address) {
  const auto behind =
      std::upper_bound(ranges.begin(), ranges.end(), address,
                       [](std::uint32_t wanted, const IpRange& range) { return wanted < range.first; });
  if (behind == ranges.begin()) return 0;
  return address <= behind[-1].last ? behind[-1].value : 0;
}

// The fastest of several ways to find all addresses, in nanoseconds for each.
struct Way {
  double fastest = std::numeric_limits<double>::max();
  std::uint32_t sum = 0;  // so that the work is not left out, and is the same in every way

  // A few passes in a row, so that the tables of the other ways are out of the caches again.
  void Run(const std::vector<std::uint32_t>& addresses, auto&& find) {
    for (int i = 0; i < kInARow; ++i) {
      const auto start = std::chrono::steady_clock::now();
      sum = 0;
      for (const std::uint32_t address : addresses)
        sum += find(address);
      const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
      fastest = std::min(fastest, 1e9 * time.count() / static_cast<double>(addresses.size()));
    }
  }
};

void CompareSearches(const char* name, const Ranges& ranges) {
  const RangeTable table = MakeRangeTable(ranges).table;
  const TopTable top(ranges);
  std::mt19937 random(5);
  std::vector<std::uint32_t> addresses(kAddresses);
  std::generate(addresses.begin(), addresses.end(), std::ref(random));
  Way own, upper, branchless;
  for (int turn = 0; turn < kTurns; ++turn) {
    upper.Run(addresses, [&](std::uint32_t address) { return UpperBound(ranges, address); });
    branchless.Run(addresses, [&](std::uint32_t address) { return top.Find(address); });
    own.Run(addresses, [&](std::uint32_t address) { return table.Find(address); });
  }
  if (own.sum != upper.sum || own.sum != branchless.sum) {
    std::fprintf(stderr, "the searches find different things\n");
    std::exit(1);
  }
  std::printf(
      "%s: %zu ranges, %.1f ns: %.2f times as fast as std::upper_bound, %.2f of the branchless time\n", name,
      ranges.size(), own.fastest, upper.fastest / own.fastest, own.fastest / branchless.fastest);
}

std::string Dotted(std::uint32_t address) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8)
    text += (text.empty() ? "" : ".") + std::to_string(address >> shift & 0xFF);
  return text;
}

std::string DetailText() {
  std::string text;
  std::uint32_t first = 0x01200000;
  for (int i = 0; i < kDetailLines; ++i, first += 512)
    text += Dotted(first) + "-" + Dotted(first + 255) + ",臺北市大安區" + std::to_string(i % 370) + "\n";
  return text;
}

std::string NamesText() {
  std::string text;
  for (int i = 0; i < kNames; ++i)
    text += std::to_string(1000 + 37 * i) + ",某國某某州" + std::to_string(i) + ",Some State\n";
  return text;
}

class ScratchFolder {
 public:
  ScratchFolder()
      : path_(fs::temp_directory_path() / ("quillet_bench_" + std::to_string(std::random_device{}()))) {
    fs::create_directories(path_);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  void PutFiles() const {
    const auto put = [this](std::string_view name, const std::string& bytes) {
      std::ofstream(path_ / name, std::ios::binary) << bytes;
    };
    put(kDetailFile, DetailText());
    put(kPlaceNamesFile, NamesText());
    PutTable(kVpnFile, kVpnRanges);
    PutTable(kProxyFile, kProxyRanges);
    PutTable(kWorldFile, kWorldRanges);
  }
  const fs::path& Path() const { return path_; }

 private:
  void PutTable(std::string_view name, std::size_t count) const {
    std::ofstream file(path_ / name, std::ios::binary);
    SpreadRanges(count, static_cast<std::uint32_t>(count), [&file](const IpRange& range) {
      for (const std::uint32_t number : {range.first, range.last, range.value})
        for (unsigned shift = 0; shift < 32; shift += 8)
          file.put(static_cast<char>(number >> shift & 0xFF));
    });
  }

  fs::path path_;
};

// Nothing where the system does not say.
double ResidentMegabytes() {
  std::ifstream status("/proc/self/status");
  std::string word;
  double kilobytes = 0;
  while (status >> word)
    if (word == "VmRSS:" && status >> kilobytes) return kilobytes / 1024;
  return 0;
}

double LoadMilliseconds(const std::vector<fs::path>& folders, auto&& look) {
  const std::clock_t start = std::clock();
  PlacesOnWorker places(folders);
  places.Places();
  const std::clock_t end = std::clock();
  look(places);
  return 1e3 * static_cast<double>(end - start) / CLOCKS_PER_SEC;
}

void MeasureLoading(const std::vector<fs::path>& folders) {
  double memory = -ResidentMegabytes();
  const double first = LoadMilliseconds(folders, [&memory](PlacesOnWorker& places) {
    memory += ResidentMegabytes();
    for (const std::string& remark : places.Remarks())
      std::printf("  %s\n", remark.c_str());
  });
  std::vector<double> times;
  for (int i = 0; i < kLoads; ++i)
    times.push_back(LoadMilliseconds(folders, [](PlacesOnWorker&) {}));
  std::printf("the five files: %.1f ms of processor time, then %.1f (median of %d), %.1f MB resident\n",
              first, PercentilesOf(times).median, kLoads, memory);
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  using namespace quillet;
  {
    const ScratchFolder made;
    made.PutFiles();
    MeasureLoading({made.Path(), argc > 1 ? fs::path(argv[1]) : fs::path(QUILLET_SOURCE_DIR "/Data")});
  }
  Ranges spread;
  SpreadRanges(kManyRanges, 1, [&spread](const IpRange& range) { spread.push_back(range); });
  CompareSearches("spread", spread);
  CompareSearches("crowded", CrowdedRanges());
  return 0;
}
