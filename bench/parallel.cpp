// How far two threads get at once with collections of their own: each reads them, compares them
// with older ones and writes them. Writes a table.
//   parallel [ROUNDS]

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "workload.h"

namespace {

constexpr std::size_t kCollections = 64;
constexpr std::int64_t kApplications = 10000;

// The length of what is written, so that no step is for nothing.
std::size_t process(const OrvaneAppMapping& older, std::string_view text) {
  OrvaneAppMapping newer;
  newer.setSection(text);
  std::string written;
  older.appendUpdatedSection(written, newer, true);
  newer.appendSection(written, true);
  return written.size();
}

// The seconds that the collections take, of which each of `count` threads has its share.
double measure(std::size_t count, const OrvaneAppMapping& older, const std::string& text) {
  std::vector<std::size_t> lengths(count);
  const auto start = std::chrono::steady_clock::now();
  {
    std::vector<std::jthread> threads;
    threads.reserve(count);
    for (std::size_t& length : lengths) {
      threads.emplace_back([&] {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < kCollections / count; ++i) sum += process(older, text);
        length = sum;
      });
    }
  }
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  if (std::ranges::find(lengths, 0U) != lengths.end()) std::abort();
  return took.count();
}

double medianOf(std::vector<double> times) {
  std::ranges::sort(times);
  const std::size_t half = times.size() / 2;
  return times.size() % 2 != 0 ? times[half] : (times[half - 1] + times[half]) / 2;
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 4;
  const OrvaneAppMapping older = workload::applications(kApplications);
  std::string text;
  workload::changed(older, 10).appendSection(text, true);
  // One, two, two, one: a machine that grows slower or faster meets both alike.
  std::vector<double> one;
  std::vector<double> two;
  for (int round = 0; round < rounds; ++round) {
    one.push_back(measure(1, older, text));
    two.push_back(measure(2, older, text));
    two.push_back(measure(2, older, text));
    one.push_back(measure(1, older, text));
  }
  std::cout << std::fixed << std::setprecision(2) << "| " << kCollections << " collections of "
            << kApplications << " applications | one thread, s | two threads, s | two to one |\n"
            << "|---|---|---|---|\n| read, compared and written | " << medianOf(one) << " | "
            << medianOf(two) << " | " << medianOf(two) / medianOf(one) << " |\n";
  return 0;
}
