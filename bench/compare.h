// How the benchmarks compare: one operation, done in several ways on the same data in one run.

#ifndef ORVANE_BENCH_COMPARE_H_
#define ORVANE_BENCH_COMPARE_H_

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace bench {

using Sizes = std::vector<std::int64_t>;

// The way that the library does it, and the least that any way could cost: the same containers or
// the same text, made by hand from data that is already parsed and in order, with hints and
// reservations, touching each byte of an input text once.
inline const std::string kLibrary = "library";
inline const std::string kFloor = "floor";

// The statistic of the rounds that noise of the machine touches least.
inline const std::string kLeast = "least";

// Adds one way of an operation, at each size. `prepare` makes the data for a size and returns what
// is timed: a callable that keeps the data. What it returns is destroyed after the clock has
// stopped; when it has a member restore(), that is called before the clock starts.
template <typename Prepare>
void add(const std::string& operation, const std::string& way, const Sizes& sizes,
         Prepare prepare) {
  const auto run = [prepare](benchmark::State& state) {
    auto timed = prepare(state.range(0));
    // What others left of the heap goes back to the system, and what this way needs comes from it
    // before the clock starts.
    malloc_trim(0);
    if constexpr (requires { timed.restore(); }) timed.restore();
    benchmark::DoNotOptimize(timed());
    for ([[maybe_unused]] auto _ : state) {
      if constexpr (requires { timed.restore(); }) timed.restore();
      auto* data = &timed;
      benchmark::DoNotOptimize(data);  // so that no earlier result is used again
      const auto start = std::chrono::steady_clock::now();
      auto result = timed();
      benchmark::DoNotOptimize(result);
      benchmark::ClobberMemory();
      const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
      state.SetIterationTime(taken.count());
    }
  };
  auto* const benchmark = benchmark::RegisterBenchmark((operation + "/" + way).c_str(), run);
  benchmark->UseManualTime()->Unit(benchmark::kMicrosecond);
  benchmark->ComputeStatistics(
      kLeast, [](const std::vector<double>& rounds) { return *std::ranges::min_element(rounds); });
  for (const std::int64_t size : sizes) benchmark->Arg(size);
}

// Adds the operations of a subsystem, done by the library and at the floor; each program has its
// own.
void addAll();

// Adds to them what an engineer would pick instead: what others wrote, where the comparison is
// fair.
void addPeers();

}  // namespace bench

#endif  // ORVANE_BENCH_COMPARE_H_
