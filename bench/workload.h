// What the benchmarks work on: made by a generator with a fixed seed, so that every run has the
// same.

#ifndef ORVANE_BENCH_WORKLOAD_H_
#define ORVANE_BENCH_WORKLOAD_H_

#include <orvane/orvane.h>

#include <array>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>

namespace workload {

using Random = std::mt19937;

inline unsigned int pick(Random& random, unsigned int least, unsigned int most) {
  return std::uniform_int_distribution<unsigned int>(least, most)(random);
}

// Ports and ranges at random places.
inline std::string portList(Random& random, unsigned int ports, unsigned int ranges) {
  std::string list;
  for (; ports > 0; --ports) {
    list += (list.empty() ? "" : ",") + std::to_string(pick(random, 1, 65535));
  }
  for (; ranges > 0; --ranges) {
    const unsigned int start = pick(random, 1, 60000);
    list += "," + std::to_string(start) + "-" + std::to_string(start + pick(random, 1, 500));
  }
  return list;
}

// `size` applications of 1 to 4 items, with the UPIDs 1 to size.
inline OrvaneAppMapping applications(std::int64_t size) {
  const auto count = static_cast<unsigned int>(size);
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
      const unsigned int ports = pick(random, 1, 8);
      item.setPorts(portList(random, ports, pick(random, 0, 3)));
      item.setIp(0x0A000000U + pick(random, 1, 1U << 16));
      item.setUniqueBlockNumber(pick(random, 1, 1000));
      application.addItem(item);
    }
    mapping.push_back(application);
  }
  return mapping;
}

// What may change in an application, from what sizes show to what only a walk to the last item
// finds.
inline constexpr auto kChanges = std::to_array<void (*)(OrvaneApplication&)>(
    {[](OrvaneApplication& one) { one.getItems().front().getPorts().insert(65535); },
     [](OrvaneApplication& one) { one.setName("renamed application"); },
     [](OrvaneApplication& one) { one.getItems().back().getRanges().emplace(60000, 65000); },
     [](OrvaneApplication& one) {
       auto& ports = one.getItems().back().getPorts();
       if (!ports.empty()) ports.erase(std::prev(ports.end()));
       ports.insert(65535);
     },
     [](OrvaneApplication& one) {
       auto& ports = one.getItems().back().getPorts();
       if (!ports.empty()) ports.erase(ports.begin());
       ports.insert(1);
     }});

// The same, with every `step`-th application changed in one of these ways, which take turns.
inline OrvaneAppMapping changed(const OrvaneAppMapping& mapping, std::size_t step) {
  OrvaneAppMapping result(mapping);
  for (std::size_t i = 0; i * step < result.size(); ++i) {
    kChanges[i % kChanges.size()](result[i * step]);
  }
  return result;
}

}  // namespace workload

#endif  // ORVANE_BENCH_WORKLOAD_H_
