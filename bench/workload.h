// What the benchmarks work on: made by a generator with a fixed seed, so that every run has the
// same.

#ifndef ORVANE_BENCH_WORKLOAD_H_
#define ORVANE_BENCH_WORKLOAD_H_

#include <benchmark/benchmark.h>
#include <orvane/orvane.h>

#include <cstdint>
#include <random>
#include <string>

namespace workload {

using Random = std::mt19937;

inline unsigned int pick(Random& random, unsigned int least, unsigned int most) {
  return std::uniform_int_distribution<unsigned int>(least, most)(random);
}

// 1 to 8 ports and 0 to 3 ranges at random places.
inline std::string portList(Random& random) {
  std::string list;
  for (unsigned int ports = pick(random, 1, 8); ports > 0; --ports) {
    list += (list.empty() ? "" : ",") + std::to_string(pick(random, 1, 65535));
  }
  for (unsigned int ranges = pick(random, 0, 3); ranges > 0; --ranges) {
    const unsigned int start = pick(random, 1, 60000);
    list += "," + std::to_string(start) + "-" + std::to_string(start + pick(random, 1, 500));
  }
  return list;
}

// `count` applications of 1 to 4 items, with the UPIDs 1 to count.
inline OrvaneAppMapping applications(unsigned int count) {
  Random random(count);
  OrvaneAppMapping mapping;
  mapping.reserve(count);
  for (unsigned int upid = 1; upid <= count; ++upid) {
    OrvaneApplication application;
    application.setUpid(upid);
    application.setID(static_cast<int>(upid));
    application.setName(("application " + std::to_string(pick(random, 1, 1U << 30))).c_str());
    application.setAction(kOrvaneActionAdd);
    for (unsigned int items = pick(random, 1, 4); items > 0; --items) {
      OrvanePortMapping item;
      item.setPorts(portList(random));
      item.setIp(0x0A000000U + pick(random, 1, 1U << 16));
      item.setUniqueBlockNumber(pick(random, 1, 1000));
      application.addItem(item);
    }
    mapping.push_back(application);
  }
  return mapping;
}

// The same, with one more port in every `step`-th application.
inline OrvaneAppMapping changed(const OrvaneAppMapping& mapping, std::size_t step) {
  OrvaneAppMapping result(mapping);
  for (std::size_t i = 0; i < result.size(); i += step) {
    result[i].getItems().front().getPorts().insert(65535);
  }
  return result;
}

// Sizes, with the fitted growth.
inline void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(10000)->Arg(100000)->Complexity()->Unit(benchmark::kMicrosecond);
}

// Counts what one pass works on, for the times per element and the fit.
inline void count(benchmark::State& state) {
  state.SetComplexityN(state.range(0));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

}  // namespace workload

#endif  // ORVANE_BENCH_WORKLOAD_H_
