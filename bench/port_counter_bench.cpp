// Collision checks that find nothing, each beside the plain walk that asks for one element after
// the other.

#include <algorithm>

#include "workload.h"

namespace {

constexpr unsigned int kFirstAddress = 0x0A000000;

struct OpenCounter : OrvanePortCounter {
  using OrvanePortCounter::ranges;
};

// `count` ranges of two ports that begin `step` apart, at `first`.
std::set<OrvanePortRange> ranges(std::int64_t count, unsigned int first, unsigned int step) {
  std::set<OrvanePortRange> set;
  for (unsigned int start = first; count > 0; --count, start += step) set.emplace(start, start + 1);
  return set;
}

std::set<unsigned short> ports(unsigned int count, unsigned int first, unsigned int step) {
  std::set<unsigned short> set;
  for (; count > 0; --count, first += step) set.insert(static_cast<unsigned short>(first));
  return set;
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(10000)->Complexity()->Unit(benchmark::kMicrosecond);
}

template <typename Check>
void run(benchmark::State& state, Check check) {
  for (auto _ : state) {
    if (check()) return state.SkipWithError("nothing should collide");
  }
  workload::count(state);
}

// 20,000 ports, with as many ranges in use as the size says, spread between them.
void checkPorts(benchmark::State& state, bool plain) {
  const auto wanted = ports(20000, 1, 3);
  OpenCounter counter;
  counter.ranges = ranges(state.range(0), 2, static_cast<unsigned int>(60000 / state.range(0)));
  run(state, [&] {
    if (!plain) return counter.checkPorts(wanted) != 0;
    return std::ranges::any_of(wanted, [&](unsigned short port) {
      return counter.checkPort(port) ||
             std::ranges::any_of(counter.ranges, [&](const auto& r) { return r.isInRange(port); });
    });
  });
}
BENCHMARK_CAPTURE(checkPorts, whole, false)->Apply(sizes);
BENCHMARK_CAPTURE(checkPorts, plain, true)->Apply(sizes);

// As many ranges as are in use, in turns.
void checkRanges(benchmark::State& state, bool plain) {
  const auto wanted = ranges(state.range(0), 1, 4);
  OpenCounter counter;
  counter.ranges = ranges(state.range(0), 3, 4);
  run(state, [&] {
    if (!plain) return counter.checkRanges(wanted);
    return std::ranges::any_of(wanted, [&](const auto& range) {
      return std::ranges::any_of(counter.ranges, [&](const auto& r) { return r.overlap(range); });
    });
  });
}
BENCHMARK_CAPTURE(checkRanges, whole, false)->Apply(sizes);
BENCHMARK_CAPTURE(checkRanges, plain, true)->Apply(sizes);

// The same, with sockets in use.
void checkRangesAndSockets(benchmark::State& state, bool plain) {
  const auto wanted = ranges(state.range(0), 1, 4);
  OrvanePortMapping used;
  used.setPorts(ports(static_cast<unsigned int>(state.range(0) / 10), 3, 4));
  OrvanePortCounter counter;
  for (unsigned int address = 0; address < 10; ++address) {
    counter.addSocket(kFirstAddress + address, used.getPortsAsString().c_str());
  }
  run(state, [&] {
    if (!plain) return counter.checkRanges(wanted);
    return std::ranges::any_of(wanted, [&](const auto& range) { return counter.overlap(range); });
  });
}
BENCHMARK_CAPTURE(checkRangesAndSockets, whole, false)->Apply(sizes);
BENCHMARK_CAPTURE(checkRangesAndSockets, plain, true)->Apply(sizes);

// A mapping of 1,000 ports, and of 1,000 ranges, with as many sockets in use as the size says, on
// 1,000 addresses.
void checkMapping(benchmark::State& state, bool plain) {
  OrvanePortMapping used;
  used.setPorts(ports(static_cast<unsigned int>(state.range(0) / 1000), 4, 4));
  OrvanePortCounter counter;
  for (unsigned int address = 0; address < 1000; ++address) {
    counter.addSocket(kFirstAddress + address, used.getPortsAsString().c_str());
  }
  OrvanePortMapping wanted;
  wanted.setPorts(ports(1000, 1, 4));
  wanted.setRanges(ranges(1000, 2, 4));
  const unsigned int address = kFirstAddress + 500;
  const auto collides = [&](const auto& port) {
    return counter.checkSocket(address, port) || counter.sockOverlap(address, port);
  };
  run(state, [&] {
    if (!plain) return counter.checkSocket(address, wanted, false);
    return std::ranges::any_of(wanted.getPorts(), collides) ||
           std::ranges::any_of(wanted.getRanges(), collides);
  });
}
BENCHMARK_CAPTURE(checkMapping, whole, false)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(checkMapping, plain, true)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
