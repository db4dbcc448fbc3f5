// What the benchmarks say about many times of the same thing. Pure.
#pragma once

#include <algorithm>
#include <vector>

namespace quillet {

struct Percentiles {
  double median, most, highest;  // `most`: 99 of 100 are below
};

// `times` is not empty.
inline Percentiles PercentilesOf(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return {times[times.size() / 2], times[times.size() * 99 / 100], times.back()};
}

}  // namespace quillet
