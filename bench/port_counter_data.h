// Ports in use, and what is checked against them. Nothing collides, so that every check goes
// through all there is, except where collisions are listed.

#ifndef ORVANE_BENCH_PORT_COUNTER_DATA_H_
#define ORVANE_BENCH_PORT_COUNTER_DATA_H_

#include <algorithm>
#include <iterator>
#include <numeric>
#include <set>
#include <string>
#include <vector>

#include "compare.h"
#include "workload.h"

namespace data {

inline const std::string kRegistered = "counter: sockets registered";
inline const std::string kPrinted = "counter: printed";
inline const std::string kCheckPorts = "checkPorts: 20,000 against ranges";
inline const std::string kCheckRanges = "checkRanges: against as many ranges";
inline const std::string kCheckMixed = "checkRanges: against ten times the sockets";
inline const std::string kCheckMapping = "checkSocket: a mapping against sockets";
inline const std::string kCheckAllPorts = "checkPorts: 20,000 against ranges and as many ports";
inline const std::string kCheckAll = "checkRanges: against ranges, ports and sockets";
inline const std::string kCheckSmall = "checkSocket: a small mapping on each address";

inline const std::string kCollisions = "collisions: within a collection";
inline const std::string kCollisionsWide = "collisions: within one with all ports";

inline const bench::Sizes kSocketSizes = {1000, 10000, 30000, 100000};
inline const bench::Sizes kRangeSizes = {1000, 2500, 5000, 10000};
inline const bench::Sizes kUsedSizes = {500, 1000, 4000, 8000};
inline const bench::Sizes kAddressSizes = {64, 256, 1024, 4096};

inline const bench::Sizes kItemSizes = {10000, 40000, 160000, 640000};

inline constexpr unsigned int kFirstAddress = 0x0A000000;

using Ports = std::set<unsigned short>;
using Ranges = std::set<OrvanePortRange>;

inline Ports ports(std::int64_t count, unsigned int first, unsigned int step) {
  Ports set;
  for (; count > 0; --count, first += step) set.insert(static_cast<unsigned short>(first));
  return set;
}

// Ranges of two ports that begin `step` apart, at `first`.
inline Ranges ranges(std::int64_t count, unsigned int first, unsigned int step) {
  Ranges set;
  for (; count > 0; --count, first += step) set.emplace(first, first + 1);
  return set;
}

// What is in use, as texts: on each address a list of ports; on all of them one list.
struct Texts {
  std::vector<std::string> sockets;
  std::string all;
};

// `size` sockets, a hundred on each address, and a tenth as many ports and ranges.
inline Texts texts(std::int64_t size) {
  Texts result;
  OrvanePortMapping list;
  for (std::int64_t made = 0; made < size; made += 100) {
    list.setPorts(ports(100, static_cast<unsigned int>(1 + made % 6000), 7));
    result.sockets.push_back(list.getPortsAsString());
  }
  list.setPorts(ports(size / 20, 1, 7));
  list.setRanges(ranges(size / 20, 3, 7));
  result.all = list.getPortsAsString();
  return result;
}

inline unsigned int addressOf(std::size_t index) {
  return kFirstAddress + static_cast<unsigned int>(index);
}

inline OrvanePortCounter counter(const Texts& texts) {
  OrvanePortCounter used;
  for (std::size_t i = 0; i < texts.sockets.size(); ++i) {
    used.addSocket(addressOf(i), texts.sockets[i].c_str());
  }
  used.add(texts.all.c_str());
  return used;
}

// 20,000 ports and, spread between them, as many ranges as the size says.
struct PortCheck {
  explicit PortCheck(std::int64_t size)
      : wanted(ports(20000, 1, 3)),
        used(ranges(size, 2, 3 * static_cast<unsigned int>(20000 / size))) {}

  Ports wanted;
  Ranges used;
};

// As many ranges on both sides, in turns.
struct RangeCheck {
  explicit RangeCheck(std::int64_t size) : wanted(ranges(size, 1, 6)), used(ranges(size, 3, 6)) {}

  Ranges wanted;
  Ranges used;
};

// The same, with sockets as well, each between the ranges: ten times as many as ranges, on a
// thousand addresses.
struct MixedCheck : RangeCheck {
  explicit MixedCheck(std::int64_t size) : RangeCheck(size), socketPorts(ports(size / 100, 5, 6)) {}

  Ports socketPorts;
};

// 1,000 ports and 1,000 ranges on one address, with sockets on a thousand addresses, those of each
// spread over all of them.
struct MappingCheck {
  explicit MappingCheck(std::int64_t size)
      : wantedPorts(ports(1000, 1, 4)),
        wantedRanges(ranges(1000, 2, 4)),
        socketPorts(ports(size / 1000, stepOf(size), stepOf(size))) {}

  static unsigned int stepOf(std::int64_t size) {
    return 4 * static_cast<unsigned int>(1000000 / size);
  }

  Ports wantedPorts;
  Ranges wantedRanges;
  Ports socketPorts;
};

// As many of each as asked for, at random places, so that none meets another.
inline std::vector<Ranges> scattered(const std::vector<std::int64_t>& counts) {
  std::vector<std::size_t> owners;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    owners.insert(owners.end(), static_cast<std::size_t>(counts[i]), i);
  }
  workload::Random random(static_cast<unsigned int>(owners.size()));
  std::ranges::shuffle(owners, random);
  std::vector<unsigned int> numbers(65535);
  std::iota(numbers.begin(), numbers.end(), 1U);
  std::vector<unsigned int> starts;
  std::ranges::sample(numbers, std::back_inserter(starts),
                      static_cast<std::ptrdiff_t>(owners.size()), random);
  starts.push_back(65536);
  std::vector<Ranges> sets(counts.size());
  for (std::size_t i = 0; i < owners.size(); ++i) {
    sets[owners[i]].emplace(starts[i], starts[i + 1] - 1);
  }
  return sets;
}

inline Ports startsOf(const Ranges& ranges) {
  Ports set;
  for (const OrvanePortRange& range : ranges) {
    set.insert(static_cast<unsigned short>(range.getStart()));
  }
  return set;
}

// 20,000 ports, with ranges and up to as many ports in use between them.
struct AllPortsCheck {
  explicit AllPortsCheck(std::int64_t size) : AllPortsCheck(scattered({20000, size, size})) {}
  explicit AllPortsCheck(const std::vector<Ranges>& sets)
      : wanted(startsOf(sets[0])), usedPorts(startsOf(sets[1])), used(sets[2]) {}

  Ports wanted;
  Ports usedPorts;
  Ranges used;
};

// As many ranges on both sides, a quarter as many ports, and as many sockets on 256 addresses.
struct AllCheck {
  explicit AllCheck(std::int64_t size) : AllCheck(scattered({size, size, size / 4, size / 4})) {}
  explicit AllCheck(const std::vector<Ranges>& sets)
      : wanted(sets[0]),
        used(sets[1]),
        usedPorts(startsOf(sets[2])),
        socketPorts(startsOf(sets[3])) {}

  Ranges wanted;
  Ranges used;
  Ports usedPorts;
  Ports socketPorts;  // each on another address than the one before
};

// Eight ports and three ranges, to be asked for on `size` addresses in random order, with sixteen
// sockets on each.
struct SmallCheck {
  explicit SmallCheck(std::int64_t size) : SmallCheck(size, scattered({8, 3, 3000})) {}
  SmallCheck(std::int64_t size, const std::vector<Ranges>& sets) {
    wanted.setPorts(startsOf(sets[0]));
    wanted.setRanges(sets[1]);
    const Ports free = startsOf(sets[2]);
    workload::Random random(static_cast<unsigned int>(size));
    for (std::size_t i = 0; i < static_cast<std::size_t>(size); ++i) {
      addresses.push_back(addressOf(i));
      Ports& ports = socketPorts.emplace_back();
      std::ranges::sample(free, std::inserter(ports, ports.end()), 16, random);
    }
    std::ranges::shuffle(addresses, random);
  }

  OrvanePortMapping wanted;
  std::vector<unsigned int> addresses;
  std::vector<Ports> socketPorts;
};

// Applications of one item each, `size` in all, on a hundred addresses. Every tenth one collides
// with the next of its address, and, where asked for, one of them with all of its address.
inline OrvaneAppMapping applications(std::int64_t size, bool withAllPorts) {
  const auto count = static_cast<unsigned int>(size);
  OrvaneAppMapping mapping;
  mapping.reserve(count);
  for (unsigned int i = 0; i < count; ++i) {
    OrvanePortMapping item;
    item.setIp(kFirstAddress + i % 100);
    const unsigned int first = 1 + i / 100 * 10;
    item.setPorts(ports(3, first, 2));
    item.setRanges(ranges(1, first + (i / 100 % 10 == 0 ? 9 : 6), 0));
    if (withAllPorts && i == count / 2) item.setRanges({OrvanePortRange(1, 65535)});
    OrvaneApplication application;
    application.setUpid(i + 1);
    application.addItem(item);
    mapping.push_back(std::move(application));
  }
  return mapping;
}

}  // namespace data

#endif  // ORVANE_BENCH_PORT_COUNTER_DATA_H_
