// The orderings of items.

#ifndef ORVANE_PORTS_ITEM_ORDER_H_
#define ORVANE_PORTS_ITEM_ORDER_H_

#include <algorithm>

#include "orvane/port_mapping.h"
#include "ports/differences.h"

namespace orvane {

// The ordering of OrvanePortMappingLess, both ways in one pass.
Order compareItems(const OrvanePortMapping& a, const OrvanePortMapping& b);

// Whether neither of two items is less than the other, in two parts: by addresses and sizes, and,
// if those are the same, by elements.
inline bool sameSizes(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  return a.ip.address == b.ip.address && a.ports.size() == b.ports.size() &&
         a.ranges.size() == b.ranges.size();
}
inline bool sameElements(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  const auto sameEnd = [](const OrvanePortRange& x, const OrvanePortRange& y) {
    return x.getEnd() == y.getEnd();
  };
  return std::equal(a.ports.begin(), a.ports.end(), b.ports.begin()) &&
         std::equal(a.ranges.begin(), a.ranges.end(), b.ranges.begin(), sameEnd);
}

// A strict weak ordering with the same equivalents: by address, then ports, then ranges.
Order compareItemsInTurn(const OrvanePortMapping& a, const OrvanePortMapping& b);

}  // namespace orvane

#endif  // ORVANE_PORTS_ITEM_ORDER_H_
