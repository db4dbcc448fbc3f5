// How fast the parser is, in bytes per second, beside libvterm's screen layer on the same streams.
//
//   feed_bench                       both, and how many times faster Feed is; then a session of the demo with
//                                    every frame a batch, handed over to nobody and to the real classifier
//   feed_bench --callgrind STREAM    Feed only, over STREAM (screens, demo, art, text); prints the number of
//                                    bytes, for "valgrind --tool=callgrind --toggle-collect='*FeedStream*'"
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vterm.h>

#include "bbs/screen_classifier.h"
#include "core/notify_target.h"
#include "core/term_screen.h"

#include "bench/streams.h"

namespace quillet {
namespace {

constexpr std::size_t kStreamSize = 1 << 20;
// What one read brings: nearly three full Ethernet frames.
constexpr std::size_t kBatch = 4096;

template <class Take>
void ForEachBatch(std::string_view bytes, Take take) {
  for (std::size_t at = 0; at < bytes.size(); at += kBatch)
    take(bytes.substr(at, kBatch));
}

[[gnu::noinline]] void FeedStream(TermScreen& screen, std::string_view bytes) {
  ForEachBatch(bytes, [&screen](std::string_view batch) {
    screen.Feed({reinterpret_cast<const std::uint8_t*>(batch.data()), batch.size()});
  });
}

void BenchFeed(benchmark::State& state, const Stream& stream) {
  TermScreen screen;
  for (auto _ : state) {
    FeedStream(screen, stream.bytes);
    benchmark::DoNotOptimize(screen.text);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(stream.bytes.size()));
}

void BenchVterm(benchmark::State& state, const std::string& bytes, std::size_t big5Size) {
  const std::unique_ptr<VTerm, decltype(&vterm_free)> terminal(vterm_new(kRows, kCols), &vterm_free);
  vterm_set_utf8(terminal.get(), 1);
  VTermScreen* screen = vterm_obtain_screen(terminal.get());
  vterm_screen_reset(screen, 1);
  for (auto _ : state) {
    ForEachBatch(bytes, [&](std::string_view batch) {
      vterm_input_write(terminal.get(), batch.data(), batch.size());
      vterm_screen_flush_damage(screen);
    });
  }
  // Counted in Big5 bytes, so that both rates speak of the same text.
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(big5Size));
}

// A view that drops what it gets.
class Dropping : public NotifyTarget {
 public:
  bool Post(unsigned message, std::uintptr_t /*first*/, std::uintptr_t second) override {
    if (message != kMessageScreen) return true;
    ++screens;
    delete reinterpret_cast<ScreenSnapshot*>(second);
    return true;
  }
  std::int64_t screens = 0;
};

void BenchFrames(benchmark::State& state, const std::vector<std::string>& frames, ScreenWatcher* watcher) {
  Dropping view;
  TermScreen screen;
  screen.SetWatcher(watcher);
  screen.notifyWindow = &view;
  std::size_t size = 0;
  for (auto _ : state) {
    for (const std::string& frame : frames) {
      screen.Feed({reinterpret_cast<const std::uint8_t*>(frame.data()), frame.size()});
      size += frame.size();
    }
    benchmark::DoNotOptimize(screen.text);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(size));
  state.counters["screens"] =
      benchmark::Counter(static_cast<double>(view.screens), benchmark::Counter::kAvgIterations);
}

// Shows the usual table, and keeps the best time of every benchmark for the ratios.
class BestTimes : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      const double time = run.GetAdjustedCPUTime();
      const auto [entry, isNew] = best_.try_emplace(run.run_name.function_name, time);
      if (!isNew) entry->second = std::min(entry->second, time);
    }
  }
  double Of(const std::string& name) const {
    const auto entry = best_.find(name);
    return entry == best_.end() ? 0 : entry->second;
  }

 private:
  std::map<std::string, double> best_;
};

int RunCallgrind(std::string_view name) {
  for (const Stream& stream : AllStreams(kStreamSize)) {
    if (stream.name != name) continue;
    TermScreen screen;
    FeedStream(screen, stream.bytes);
    std::printf("%zu\n", stream.bytes.size());
    return 0;
  }
  std::fputs("No such stream; there are screens, demo, art and text.\n", stderr);
  return 1;
}

int RunComparison(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  const std::vector<Stream> streams = AllStreams(kStreamSize);
  for (const Stream& stream : streams) {
    const std::string name(stream.name);
    const std::string utf8 = StreamAsUtf8(stream.bytes);
    benchmark::RegisterBenchmark(("Feed/" + name).c_str(), [&stream](benchmark::State& state) {
      BenchFeed(state, stream);
    })->Repetitions(3);
    benchmark::RegisterBenchmark(("Vterm/" + name).c_str(), [utf8, &stream](benchmark::State& state) {
      BenchVterm(state, utf8, stream.bytes.size());
    })->Repetitions(3);
  }
  const std::vector<std::string> frames = RecordDemoSession();
  ScreenClassifier classifier;
  const auto registerFrames = [&frames](const char* name, ScreenWatcher* watcher) {
    benchmark::RegisterBenchmark(name, [&frames, watcher](benchmark::State& state) {
      BenchFrames(state, frames, watcher);
    })->Repetitions(3);
  };
  registerFrames("Frames/kept", nullptr);
  registerFrames("Frames/handed-over", &classifier);
  BestTimes times;
  benchmark::RunSpecifiedBenchmarks(&times);
  for (const Stream& stream : streams) {
    const std::string name(stream.name);
    const double feed = times.Of("Feed/" + name);
    if (feed > 0)
      std::printf("Feed on %-8s %5.1f times libvterm\n", name.c_str(), times.Of("Vterm/" + name) / feed);
  }
  const double kept = times.Of("Frames/kept");
  if (kept > 0)
    std::printf("Handed over, a frame of the demo takes %.1f times as long\n",
                times.Of("Frames/handed-over") / kept);
  return 0;
}

}  // namespace
}  // namespace quillet

int main(int argc, char** argv) {
  quillet::LoadTablesOrExit();
  if (argc == 3 && std::strcmp(argv[1], "--callgrind") == 0) return quillet::RunCallgrind(argv[2]);
  return quillet::RunComparison(argc, argv);
}
