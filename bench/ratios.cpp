// Reads results of the benchmarks (JSON, with repetitions) and writes a table of ratios: for each
// operation the library's median time per element, its ratio to the floor at each size by medians
// and by least times with the growth of the latter, and its ratio to each peer at the largest size.
//   ratios RESULTS.json...

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "compare.h"

namespace {

using TimeBySize = std::map<std::int64_t, double>;  // nanoseconds

// Of all rounds.
struct Times {
  TimeBySize median;
  TimeBySize least;
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
    TimeBySize& bySize = statistic == bench::kLeast ? times.least : times.median;
    bySize[std::stoll(name.substr(size))] =
        run.at("real_time").get<double>() * units.at(run.at("time_unit"));
  }
  std::ranges::sort(operations, {}, &Operation::place);
  return operations;
}

std::string rounded(double number, int digits) {
  std::ostringstream text;
  text.precision(digits);
  text << std::fixed << number;
  return text.str();
}

// The exponent x of n^x that fits the ratios best.
double growthOf(const TimeBySize& times, const TimeBySize& floor) {
  double n = 0;
  double sumX = 0;
  double sumY = 0;
  double sumXX = 0;
  double sumXY = 0;
  for (const auto& [size, time] : times) {
    if (!floor.contains(size)) continue;
    const double x = std::log(static_cast<double>(size));
    const double y = std::log(time / floor.at(size));
    n += 1;
    sumX += x;
    sumY += y;
    sumXX += x * x;
    sumXY += x * y;
  }
  return n < 2 ? 0 : (n * sumXY - sumX * sumY) / (n * sumXX - sumX * sumX);
}

// The ratios at each size, joined by " / ".
std::string ratiosOf(const TimeBySize& times, const TimeBySize& floor) {
  std::string ratios;
  for (const auto& [size, time] : times) {
    ratios += (ratios.empty() ? "" : " / ") + rounded(time / floor.at(size), 2);
  }
  return ratios;
}

std::string rowOf(const Operation& operation) {
  const Times& library = operation.ways.at(bench::kLibrary);
  std::string sizes;
  std::string times;
  for (const auto& [size, time] : library.median) {
    const std::string separator = sizes.empty() ? "" : " / ";
    sizes += separator + std::to_string(size);
    times += separator + rounded(time / static_cast<double>(size), 1);
  }
  std::string toFloor = " |  | ";
  std::string peers;
  for (const auto& [way, other] : operation.ways) {
    if (way == bench::kLibrary) continue;
    if (way == bench::kFloor) {
      toFloor = ratiosOf(library.median, other.median) + " | " +
                ratiosOf(library.least, other.least) + " | n^" +
                rounded(growthOf(library.least, other.least), 2);
    } else {
      const auto& [size, time] = *other.median.rbegin();
      peers += (peers.empty() ? "" : ", ") + way + " " + rounded(library.median.at(size) / time, 2);
    }
  }
  return "| " + operation.name + " | " + sizes + " | " + times + " | " + toFloor + " | " + peers +
         " |\n";
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
