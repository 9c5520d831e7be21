#include <malloc.h>

#include <algorithm>
#include <iostream>
#include <limits>
#include <string>
#include <vector>

#include "hostile.h"

namespace {

using bench::Operation;
using bench::Run;
using bench::Variant;

constexpr std::size_t kSizes[] = {1 << 19, 1 << 21, 1 << 23};
constexpr double kNever = std::numeric_limits<double>::infinity();

void write(const Operation& operation, const std::vector<std::vector<double>>& least) {
  for (std::size_t i = 0; i < least.size(); ++i) {
    const auto& [name, twin, prepare] = operation.variants[i];
    if (twin.empty()) continue;
    const auto place = std::ranges::find(operation.variants, twin, &Variant::name);
    const auto& friendly = least[static_cast<std::size_t>(place - operation.variants.begin())];
    std::cout << "| " << operation.name << " | " << name << " | " << twin << " |";
    for (std::size_t size = 0; size < std::size(kSizes); ++size) {
      if (least[i][size] == kNever || friendly[size] == kNever) {
        std::cout << " - | - |";
      } else {
        std::cout << ' ' << least[i][size] * 1000 << " | " << least[i][size] / friendly[size]
                  << " |";
      }
    }
    std::cout << '\n' << std::flush;
  }
}

// Measures the variants by turns. What takes seconds runs once, and not at the next size.
void measure(const Operation& operation) {
  constexpr double kSeconds = 1.5;
  std::vector<std::vector<double>> least(operation.variants.size());
  for (const std::size_t size : kSizes) {
    std::vector<Run> runs(least.size());
    for (std::size_t i = 0; i < runs.size(); ++i) {
      if (least[i].empty() || least[i].back() < kSeconds) {
        runs[i] = operation.variants[i].prepare(size / operation.itemSize);
      }
      least[i].push_back(kNever);
    }
    auto start = bench::Clock::now();
    for (int round = 0; round < 5 || (round < 20 && bench::since(start) < 1); ++round) {
      for (std::size_t i = 0; i < runs.size(); ++i) {
        if (runs[i] == nullptr) continue;
        malloc_trim(0);
        const auto begin = bench::Clock::now();
        const auto result = runs[i]();
        least[i].back() = std::min(least[i].back(), bench::since(begin));
        if (least[i].back() > kSeconds) runs[i] = nullptr;
      }
      if (round == 0) start = bench::Clock::now();  // without what is far too slow
    }
  }
  write(operation, least);
}

}  // namespace

void bench::compareTwins(const std::string& only) {
  std::cout << "\n| operation | hostile | friendly |";
  for (const std::size_t size : kSizes) {
    std::cout << ' ' << static_cast<double>(size) / (1 << 20) << " MiB, ms | ratio |";
  }
  std::cout << "\n|---|---|---|---|---|---|---|---|---|\n" << std::flush;
  for (const Operation& operation : operations()) {
    if (operation.name.find(only) != std::string::npos) measure(operation);
  }
}
