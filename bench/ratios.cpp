// Reads results of the benchmarks (JSON, with repetitions) and writes a table of ratios: for each
// operation the library's median time per element, its ratio to the floor at each size by medians
// and by least times with the growth of the latter, and its ratio to each peer at the largest size.
//   ratios RESULTS.json...

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "compare.h"
#include "growth.h"

namespace {

// Of all rounds, in nanoseconds.
struct Times {
  bench::BySize median;
  bench::BySize least;
};

struct Operation {
  std::string name;
  int place;  // its rank in its file, which lists the runs as they were drawn
  std::map<std::string, Times> ways;
};

// The operations of a file. Times stand under "operation/way/size/manual_time_median" and the same
// with "least".
std::vector<Operation> read(const nlohmann::json& results) {
  std::vector<Operation> operations;
  const std::map<std::string, double> units = {{"ns", 1}, {"us", 1e3}, {"ms", 1e6}, {"s", 1e9}};
  for (const auto& run : results.at("benchmarks")) {
    const std::string statistic = run.value("aggregate_name", "");
    if (statistic != "median" && statistic != bench::kLeast) continue;
    const std::string name = run.at("run_name");
    const std::size_t way = name.find('/') + 1;
    const std::size_t size = name.find('/', way) + 1;
    const std::string operation = name.substr(0, way - 1);
    auto found = std::ranges::find(operations, operation, &Operation::name);
    const int place = run.at("family_index");
    if (found == operations.end()) found = operations.insert(found, {operation, place, {}});
    found->place = std::min(found->place, place);
    Times& times = found->ways[name.substr(way, size - 1 - way)];
    bench::BySize& bySize = statistic == bench::kLeast ? times.least : times.median;
    bySize[std::stoll(name.substr(size))] =
        run.at("real_time").get<double>() * units.at(run.at("time_unit"));
  }
  std::ranges::sort(operations, {}, &Operation::place);
  return operations;
}

std::string rowOf(const Operation& operation) {
  const Times& library = operation.ways.at(bench::kLibrary);
  std::string sizes;
  bench::BySize times;
  for (const auto& [size, time] : library.median) {
    sizes += (sizes.empty() ? "" : " / ") + std::to_string(size);
    times[size] = time / static_cast<double>(size);
  }
  std::string toFloor = " |  | ";
  std::string peers;
  for (const auto& [way, other] : operation.ways) {
    if (way == bench::kLibrary) continue;
    if (way == bench::kFloor) {
      const bench::BySize least = bench::ratiosOf(library.least, other.least);
      toFloor = bench::joined(bench::ratiosOf(library.median, other.median), 2) + " | " +
                bench::joined(least, 2) + " | " + bench::growthOf(least);
    } else {
      const auto& [size, time] = *other.median.rbegin();
      peers += (peers.empty() ? "" : ", ") + way + " " +
               bench::rounded(library.median.at(size) / time, 2);
    }
  }
  return "| " + operation.name + " | " + sizes + " | " + bench::joined(times, 1) + " | " + toFloor +
         " | " + peers + " |\n";
}

}  // namespace

int main(int argc, char** argv) {
  std::cout
      << "| operation | sizes | ns per element | to floor | least to floor | growth | to peers |\n"
      << "|---|---|---|---|---|---|---|\n";
  for (int i = 1; i < argc; ++i) {
    std::ifstream file(argv[i]);
    if (!file) {
      std::cerr << "ratios: cannot read " << argv[i] << "\n";
      return 2;
    }
    for (const Operation& operation : read(nlohmann::json::parse(file))) {
      std::cout << rowOf(operation);
    }
  }
  return 0;
}
