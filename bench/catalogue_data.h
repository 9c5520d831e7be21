// Catalogues and what is done with them.

#ifndef ORVANE_BENCH_CATALOGUE_DATA_H_
#define ORVANE_BENCH_CATALOGUE_DATA_H_

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "compare.h"
#include "workload.h"

namespace data {

inline const std::string kRead = "catalogue read";
inline const std::string kWritten = "catalogue written";
inline const std::string kSelected = "catalogue selected by UPIDs";
inline const std::string kTenthSelected = "catalogue selected by a tenth as many UPIDs";
inline const std::string kUnknown = "unknown UPIDs";
inline const std::string kKnown = "known UPIDs";
inline const std::string kUnknownShuffled = "unknown UPIDs, in random order";
inline const std::string kKnownShuffled = "known UPIDs, in random order";
inline const std::string kMerged = "catalogue merged";
inline const std::string kExpanded = "catalogue ports expanded";

inline const bench::Sizes kSizes = {1000, 4000, 20000, 100000};

// Two ports and a range, which is short because some operations write out all of its numbers.
inline std::string portList(workload::Random& random) {
  const unsigned int start = workload::pick(random, 1, 60000);
  return std::to_string(workload::pick(random, 1, 65535)) + "," +
         std::to_string(workload::pick(random, 1, 65535)) + "," + std::to_string(start) + "-" +
         std::to_string(start + workload::pick(random, 1, 20));
}

using Upids = std::vector<unsigned int>;

// An entry for each UPID, with what `portsOf` makes of a random generator.
template <typename PortsOf>
OrvaneAppInfoArray catalogue(const Upids& upids, PortsOf portsOf) {
  workload::Random random(1);
  OrvaneAppInfoArray entries;
  for (const unsigned int upid : upids) {
    OrvaneAppInfo entry;
    entry.setUPID(upid);
    entry.setPorts(portsOf(random));
    entry.setFQN("application " + std::to_string(upid));
    entries.add(entry);
  }
  return entries;
}

// `size` UPIDs in a row.
inline Upids ascending(std::int64_t size, unsigned int first = 1) {
  Upids list(static_cast<std::size_t>(size));
  std::iota(list.begin(), list.end(), first);
  return list;
}

inline OrvaneAppInfoArray catalogue(std::int64_t size) {
  return catalogue(ascending(size), portList);
}

// An application for each entry, whose ports go with the entry's.
inline OrvaneAppMapping mapping(std::int64_t size) {
  workload::Random random(2);
  OrvaneAppMapping applications;
  OrvaneApplication application;
  for (std::int64_t upid = 1; upid <= size; ++upid) {
    OrvanePortMapping item;
    item.setPorts(portList(random));
    application.setUpid(static_cast<unsigned int>(upid));
    application.getItems() = {item};
    applications.addEx(application);
  }
  return applications;
}

// As many UPIDs as there are entries, half of them unknown. They are in the order of the entries,
// so that the growth is that of the operations and not that of memory visited at random.
inline Upids upids(std::int64_t size) {
  return ascending(size, static_cast<unsigned int>(size) / 2);
}

// The same all over the numbers, the entries and the UPIDs in random order.
struct Shuffled {
  explicit Shuffled(std::int64_t size) : known(static_cast<std::size_t>(size)), asked(known) {
    workload::Random random(3);
    const auto any = [&] { return workload::pick(random, 0, ~0U); };
    std::ranges::generate(known, any);
    std::ranges::copy(known, asked.begin());
    std::generate(asked.begin() + size / 2, asked.end(), any);
    std::ranges::shuffle(asked, random);
  }

  Upids known;  // what the catalogue has entries for
  Upids asked;
};

// A few UPIDs of a catalogue, by the places of its entries.
struct Few {
  std::string name;
  Upids (*upids)(const Upids& known);
};

inline const std::vector<Few> kFew = {
    {"catalogue selected by 4 UPIDs",
     [](const Upids& known) -> Upids {
       const std::size_t part = known.size() / 8;
       return {known[7 * part], known[part], known[5 * part], known[3 * part]};
     }},
    {"catalogue selected by 4 UPIDs, first",
     [](const Upids& known) { return Upids(known.begin(), known.begin() + 4); }},
    {"catalogue selected by 4 UPIDs, middle",
     [](const Upids& known) {
       const auto middle = known.begin() + static_cast<std::ptrdiff_t>(known.size() / 2);
       return Upids(middle, middle + 4);
     }},
    {"catalogue selected by 4 UPIDs, 2 unknown",
     [](const Upids& known) -> Upids {
       return {known[known.size() / 2], known.front() + 1, known.back(), known.back() + 1};
     }},
};

// Catalogues with ranges whose numbers are written out.
struct Expanded {
  std::string name;
  bench::Sizes sizes;
  unsigned int least;  // the length of a range, but for the highest
  unsigned int most;
};

inline const std::vector<Expanded> kExpandedRanges = {
    {"catalogue ports expanded, tens", {1000, 4000, 20000}, 2, 100},
    {"catalogue ports expanded, hundreds", {100, 1000, 10000}, 100, 1000},
    {"catalogue ports expanded, thousands", {10, 100, 1000}, 1000, 5000},
};

// A range in each entry, which starts with a number of one to five digits.
inline OrvaneAppInfoArray catalogue(std::int64_t size, const Expanded& kind) {
  return catalogue(ascending(size), [&](workload::Random& random) {
    unsigned int least = 1;
    for (unsigned int digits = workload::pick(random, 1, 5); digits > 1; --digits) least *= 10;
    const unsigned int start = workload::pick(random, least, std::min(10 * least - 1, 60000U));
    const unsigned int end = start + workload::pick(random, kind.least, kind.most) - 1;
    return std::to_string(start) + "-" + std::to_string(end);
  });
}

}  // namespace data

#endif  // ORVANE_BENCH_CATALOGUE_DATA_H_
