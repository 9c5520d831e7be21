// Port list texts, per item of the list.

#include <algorithm>
#include <vector>

#include "workload.h"

namespace {

// Every third item a range of 20 ports, ascending and disjoint as far as 32-bit numbers go.
std::vector<std::string> items(std::int64_t count) {
  std::vector<std::string> list;
  for (std::int64_t i = 0; i < count; ++i) {
    const std::string start = std::to_string(1 + i * 50);
    list.push_back(i % 3 != 0 && i * 50 < 65535 ? start
                                                : start + "-" + std::to_string(20 + i * 50));
  }
  return list;
}

std::string join(const std::vector<std::string>& list) {
  std::string text;
  for (const std::string& item : list) text += (text.empty() ? "" : ",") + item;
  return text;
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(10)->Arg(1000)->Arg(30000)->Complexity()->Unit(benchmark::kMicrosecond);
}

void read(benchmark::State& state, const std::string& text) {
  OrvanePortMapping mapping;
  for (auto _ : state) {
    mapping.setPorts(text.c_str());
    benchmark::DoNotOptimize(mapping.getRanges().size());
  }
  workload::count(state);
}

void readOrdered(benchmark::State& state) { read(state, join(items(state.range(0)))); }
BENCHMARK(readOrdered)->Apply(sizes);

void readShuffled(benchmark::State& state) {
  std::vector<std::string> list = items(state.range(0));
  std::shuffle(list.begin(), list.end(), workload::Random(1));
  read(state, join(list));
}
BENCHMARK(readShuffled)->Apply(sizes);

void write(benchmark::State& state) {
  OrvanePortMapping mapping;
  mapping.setPorts(join(items(state.range(0))));
  for (auto _ : state) benchmark::DoNotOptimize(mapping.getPortsAsString());
  workload::count(state);
}
BENCHMARK(write)->Apply(sizes);

void sortText(benchmark::State& state) {
  std::vector<std::string> list = items(state.range(0));
  std::shuffle(list.begin(), list.end(), workload::Random(1));
  const std::string text = join(list);
  for (auto _ : state) benchmark::DoNotOptimize(OrvanePortMapping::sortPorts(text.c_str()));
  workload::count(state);
}
BENCHMARK(sortText)->Apply(sizes);

}  // namespace
