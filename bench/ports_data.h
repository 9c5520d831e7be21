// Port lists and what is done with them.

#ifndef ORVANE_BENCH_PORTS_DATA_H_
#define ORVANE_BENCH_PORTS_DATA_H_

#include <numeric>
#include <string>
#include <vector>

#include "compare.h"
#include "workload.h"

namespace data {

// Lists of about ten items each, as many as make `size` items; or one list of `size` items.
using Lists = std::vector<std::string>;

struct Kind {
  std::string name;
  bench::Sizes sizes;
  Lists (*make)(std::int64_t size);
};

inline std::string join(const Lists& items) {
  return std::accumulate(items.begin(), items.end(), std::string(),
                         [](const std::string& text, const std::string& item) {
                           return text.empty() ? item : text + "," + item;
                         });
}

inline Lists shortLists(std::int64_t size) {
  workload::Random random(1);
  Lists lists;
  for (std::int64_t made = 0; made < size; made += 10) {
    lists.push_back(workload::portList(random, 7, 3));
  }
  return lists;
}

// Two single ports and a range of two, over and over, in ascending order.
inline Lists orderedList(std::int64_t size) {
  std::string list;
  for (std::int64_t i = 0; i < size; ++i) {
    if (i > 0) list += ',';
    list += std::to_string(1 + 2 * i);
    if (i % 3 == 2) list += '-' + std::to_string(2 + 2 * i);
  }
  return {list};
}

// As many single ports and ranges, at random places; one range in three meets another.
inline Lists randomList(std::int64_t size) {
  workload::Random random(1);
  std::string list;
  for (std::int64_t i = 0; i < size; ++i) {
    if (i > 0) list += ',';
    if (i % 3 == 2) {
      const unsigned int start = workload::pick(random, 1, static_cast<unsigned int>(50 * size));
      list += std::to_string(start) + '-' + std::to_string(start + workload::pick(random, 1, 60));
    } else {
      list += std::to_string(workload::pick(random, 1, 65535));
    }
  }
  return {list};
}

inline const bench::Sizes kShortSizes = {100, 1000, 10000, 100000};
inline const bench::Sizes kLongSizes = {1000, 3000, 10000, 30000};

inline const Kind kShort = {"short", kShortSizes, shortLists};
inline const Kind kOrdered = {"long, ordered", kLongSizes, orderedList};
inline const Kind kRandom = {"long, in random order", kLongSizes, randomList};

inline const std::string kRead = "port list read, ";
inline const std::string kWritten = "port list written, ";
inline const std::string kDifference = "port difference text";

inline OrvanePortMapping read(const std::string& list) {
  OrvanePortMapping mapping;
  mapping.setPorts(list);
  return mapping;
}

inline std::vector<OrvanePortMapping> read(const Lists& lists) {
  std::vector<OrvanePortMapping> mappings;
  for (const std::string& list : lists) mappings.push_back(read(list));
  return mappings;
}

// What is missing in every second item of a list.
struct Difference {
  OrvanePortMapping older;
  OrvanePortMapping newer;
};

inline Difference difference(std::int64_t size) {
  Difference result = {{}, read(orderedList(size).front())};
  bool held = false;
  for (const unsigned short port : result.newer.getPorts()) {
    if ((held = !held)) result.older.getPorts().insert(port);
  }
  for (const OrvanePortRange& range : result.newer.getRanges()) {
    if ((held = !held)) result.older.getRanges().insert(range);
  }
  return result;
}

}  // namespace data

#endif  // ORVANE_BENCH_PORTS_DATA_H_
