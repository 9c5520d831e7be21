// Catalogues and what is done with them.

#ifndef ORVANE_BENCH_CATALOGUE_DATA_H_
#define ORVANE_BENCH_CATALOGUE_DATA_H_

#include <numeric>
#include <string>
#include <vector>

#include "compare.h"
#include "workload.h"

namespace data {

inline const std::string kRead = "catalogue read";
inline const std::string kWritten = "catalogue written";
inline const std::string kSelected = "catalogue selected by UPIDs";
inline const std::string kUnknown = "unknown UPIDs";
inline const std::string kKnown = "known UPIDs";
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

inline OrvaneAppInfoArray catalogue(std::int64_t size) {
  workload::Random random(1);
  OrvaneAppInfoArray entries;
  for (std::int64_t upid = 1; upid <= size; ++upid) {
    OrvaneAppInfo entry;
    entry.setUPID(static_cast<unsigned int>(upid));
    entry.setPorts(portList(random).c_str());
    entry.setFQN(("application " + std::to_string(upid)).c_str());
    entries.add(entry);
  }
  return entries;
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
inline std::vector<unsigned int> upids(std::int64_t size) {
  std::vector<unsigned int> list(static_cast<std::size_t>(size));
  std::iota(list.begin(), list.end(), static_cast<unsigned int>(size) / 2);
  return list;
}

}  // namespace data

#endif  // ORVANE_BENCH_CATALOGUE_DATA_H_
