#include "ports/item_order.h"

namespace orvane {
namespace {

Order compareAddresses(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  return {.less = a.ip.address < b.ip.address, .greater = b.ip.address < a.ip.address};
}

Order comparePorts(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  return compareSequences(a.ports, b.ports, orderBy(OrvanePortArrayLess()));
}

Order compareRanges(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  return compareSequences(a.ranges, b.ranges, orderBy(OrvaneRangeSetLess()));
}

}  // namespace

Order compareItems(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  if (a.ip.address != b.ip.address) return compareAddresses(a, b);
  const Order ports = comparePorts(a, b);
  const Order ranges = compareRanges(a, b);
  return {.less = ports.less || ranges.less, .greater = ports.greater || ranges.greater};
}

Order compareItemsInTurn(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  for (const auto compare : {compareAddresses, comparePorts, compareRanges}) {
    const Order order = compare(a, b);
    if (order.less || order.greater) return order;
  }
  return {.less = false, .greater = false};
}

}  // namespace orvane
