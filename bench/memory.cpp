// The memory that reading a mapping text takes: what is held afterwards and the most that was held
// meanwhile, beside the same containers made by hand at once. Writes a table.
//   memory [APPLICATIONS]

#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <memory>
#include <string>

#include "counted_memory.h"
#include "plain.h"
#include "workload.h"
#ifdef ORVANE_BENCH_PEERS
#define SI_NO_CONVERSION
#include <SimpleIni.h>
#endif

namespace {

using bench::measure;
using bench::Use;

void write(const char* way, Use use, Use floor) {
  const auto ratio = [](std::size_t a, std::size_t b) {
    return static_cast<double>(a) / static_cast<double>(b);
  };
  std::cout << "| " << way << " | " << use.held / 1024 << " | " << use.peak / 1024 << " | "
            << ratio(use.held, floor.held) << " | " << ratio(use.peak, floor.peak) << " |\n";
}

}  // namespace

int main(int argc, char** argv) {
  const OrvaneAppMapping mapping = workload::applications(argc > 1 ? std::atol(argv[1]) : 100000);
  const std::string text = mapping.getSection(true);
  const auto parsed = plain::applicationsOf(mapping);
  const Use floor = measure([&] { return plain::build(parsed); });
  std::cout
      << std::fixed << std::setprecision(2)
      << "| memory after reading a mapping text | held, KiB | peak, KiB | held to floor | peak "
         "to floor |\n|---|---|---|---|---|\n";
  write("floor", floor, floor);
  write("library", measure([&] {
          OrvaneAppMapping read;
          read.setSection(text.c_str());
          return read;
        }),
        floor);
#ifdef ORVANE_BENCH_PEERS
  // It keeps the pairs as texts and a copy of the whole text.
  write("SimpleIni", measure([&] {
          auto read = std::make_unique<CSimpleIniA>(false, true);
          read->LoadData(text.data(), text.size());
          return read;
        }),
        floor);
#endif
  return 0;
}
