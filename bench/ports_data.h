// Port lists and what is done with them.

#ifndef ORVANE_BENCH_PORTS_DATA_H_
#define ORVANE_BENCH_PORTS_DATA_H_

#include <algorithm>
#include <numeric>
#include <set>
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

// Lists of one to ten items, two of three of them ports, of as many digits as it comes. No range
// lies within another.
inline Lists fewItems(std::int64_t size) {
  workload::Random random(2);
  const auto number = [&] {
    const unsigned int digits = workload::pick(random, 1, 16);
    return workload::pick(random, 1U << (digits - 1), (1U << digits) - 1);
  };
  Lists lists;
  for (std::int64_t made = 0; made < size;) {
    Lists items(workload::pick(random, 1, 10));
    for (std::string& item : items) {
      const unsigned int first = number();
      item = std::to_string(first);
      if (workload::pick(random, 1, 3) == 1) {
        item += '-' + std::to_string(first + workload::pick(random, 1, 500));
      }
    }
    const std::string list = join(items);
    if (!std::ranges::is_sorted(read(list).getRanges(), {}, &OrvanePortRange::getStart)) continue;
    made += static_cast<std::int64_t>(items.size());
    lists.push_back(list);
  }
  return lists;
}

// Two ports of three, at random places, and ranges of two between all of them.
inline Lists mixedList(std::int64_t size) {
  workload::Random random(3);
  const auto ranges = static_cast<std::size_t>(size / 3);
  const std::size_t step = 65536 / ranges;
  std::set<unsigned int> ports;
  while (ports.size() < 2 * ranges) ports.insert(workload::pick(random, 1, 65535));
  Lists items;
  for (std::size_t start = 1; start < ranges * step; start += step) {
    items.push_back(std::to_string(start) + '-' + std::to_string(start + 1));
  }
  // Behind the ranges, which swallow those before them.
  for (const unsigned int port : ports) items.push_back(std::to_string(port));
  return {join(items)};
}

inline const bench::Sizes kShortSizes = {100, 1000, 10000, 100000};
inline const bench::Sizes kLongSizes = {1000, 3000, 10000, 30000};
inline const bench::Sizes kMixedSizes = {1000, 4000, 15000, 60000};

inline const Kind kShort = {"short", kShortSizes, shortLists};
inline const Kind kOrdered = {"long, ordered", kLongSizes, orderedList};
inline const Kind kFew = {"of 1 to 10 items", kShortSizes, fewItems};
inline const Kind kMixed = {"long, mixed", kMixedSizes, mixedList};
inline const Kind kRandom = {"long, in random order", kLongSizes, randomList};

inline const std::string kRead = "port list read, ";
inline const std::string kWritten = "port list written, ";
inline const std::string kDifference = "port difference text, ";

// What is missing in every second item of a list.
struct Difference {
  OrvanePortMapping older;
  OrvanePortMapping newer;
};

inline Difference difference(const Kind& kind, std::int64_t size) {
  Difference result = {{}, read(kind.make(size).front())};
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
