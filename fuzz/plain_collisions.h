// Collisions, found by comparing everything with everything: what the library's way has to give as
// well.

#ifndef ORVANE_FUZZ_PLAIN_COLLISIONS_H_
#define ORVANE_FUZZ_PLAIN_COLLISIONS_H_

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "orvane/collisions.h"

namespace plain {

using Intervals = std::vector<std::pair<std::uint64_t, std::uint64_t>>;

struct Use {
  const OrvaneApplication* application = nullptr;
  const OrvanePortMapping* item = nullptr;
  unsigned int address = 0;
  Intervals ports = {};
};

template <typename Ports, typename Ranges>
void addPorts(const Ports& ports, const Ranges& ranges, Intervals& intervals) {
  for (const auto& port : ports) intervals.emplace_back(port, port);
  for (const OrvanePortRange& range : ranges) {
    if (range.getStart() <= range.getEnd()) {
      intervals.emplace_back(range.getStart(), range.getEnd());
    }
  }
}

inline std::vector<Use> usesOf(const OrvaneAppMapping& applications) {
  std::vector<Use> uses;
  for (const OrvaneApplication& application : applications) {
    for (const OrvanePortMapping& item : application.getItems()) {
      uses.push_back({&application, &item, item.getIpAddress()});
      addPorts(item.getPorts(), item.getRanges(), uses.back().ports);
    }
  }
  return uses;
}

inline std::vector<Use> usesOf(const OrvanePortCounter& counter) {
  std::map<unsigned int, Intervals> byAddress;
  for (const OrvaneSock& socket : counter.getSockets()) {
    const unsigned int port = socket.port.getPort();
    const OrvanePortRange range =
        port != 0 ? OrvanePortRange(port, port) : static_cast<OrvanePortRange>(socket.port);
    addPorts(std::vector<unsigned int>(), std::vector{range}, byAddress[socket.address]);
  }
  addPorts(counter.getPorts(), counter.getRanges(), byAddress[0]);
  std::vector<Use> uses;
  uses.reserve(byAddress.size());
  for (const auto& [address, ports] : byAddress) uses.push_back({nullptr, nullptr, address, ports});
  std::rotate(uses.begin(), uses.begin() + 1, uses.end());  // what is on every address comes last
  return uses;
}

inline Intervals inCommon(const Use& a, const Use& b) {
  Intervals common;
  if (a.address != 0 && b.address != 0 && a.address != b.address) return common;
  for (const auto& [first, last] : a.ports) {
    for (const auto& [otherFirst, otherLast] : b.ports) {
      const auto begin = std::max(first, otherFirst);
      const auto end = std::min(last, otherLast);
      if (begin <= end) common.emplace_back(begin, end);
    }
  }
  std::ranges::sort(common);
  return common;
}

// Those of each use with the others, with all or with those of later applications.
inline std::vector<OrvaneCollision> collisions(const std::vector<Use>& uses,
                                               const std::vector<Use>& others, bool within) {
  std::vector<OrvaneCollision> collisions;
  for (const Use& use : uses) {
    for (const Use& other : others) {
      if (within && other.application <= use.application) continue;
      OrvaneCollision collision = {use.application, use.item,      other.application,
                                   other.item,      other.address, {}};
      for (const auto& [first, last] : inCommon(use, other)) {
        const auto start = static_cast<unsigned int>(first);
        const auto end = static_cast<unsigned int>(last);
        if (!collision.ports.empty() && first <= collision.ports.back().getEnd() + 1ULL) {
          collision.ports.back().mergeRange({start, end});
        } else {
          collision.ports.emplace_back(start, end);
        }
      }
      if (!collision.ports.empty()) collisions.push_back(collision);
    }
  }
  return collisions;
}

inline bool isSame(const OrvaneCollision& a, const OrvaneCollision& b) {
  return a.application == b.application && a.item == b.item &&
         a.otherApplication == b.otherApplication && a.otherItem == b.otherItem &&
         a.otherAddress == b.otherAddress && a.ports == b.ports;
}

// Whether the library gives what is found here: within the applications, with others, and with what
// is in use.
inline bool areFound(const OrvaneAppMapping& applications) {
  const std::vector<Use> uses = usesOf(applications);
  return std::ranges::equal(OrvaneCollisions(applications), collisions(uses, uses, true), isSame);
}

template <typename Others>
bool areFound(const OrvaneAppMapping& applications, const Others& others) {
  return std::ranges::equal(OrvaneCollisions(applications, others),
                            collisions(usesOf(applications), usesOf(others), false), isSame);
}

}  // namespace plain

#endif  // ORVANE_FUZZ_PLAIN_COLLISIONS_H_
