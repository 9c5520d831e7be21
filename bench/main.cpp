// The main program of every benchmark.

#include <malloc.h>

#include <limits>

#include "compare.h"

int main(int argc, char** argv) {
  // Memory that is given back stays with the process: else large results would mostly measure how
  // the system hands out pages.
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  bench::addAll();
#ifdef ORVANE_BENCH_PEERS
  bench::addPeers();
#endif
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
