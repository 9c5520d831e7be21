#include "ports/item_order.h"

namespace orvane {

Order compareItems(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  if (a.ip.address != b.ip.address) {
    return {.less = a.ip.address < b.ip.address, .greater = b.ip.address < a.ip.address};
  }
  const Order ports = compareSequences(a.ports, b.ports, orderBy(OrvanePortArrayLess()));
  const Order ranges = compareSequences(a.ranges, b.ranges, orderBy(OrvaneRangeSetLess()));
  return {.less = ports.less || ranges.less, .greater = ports.greater || ranges.greater};
}

}  // namespace orvane
