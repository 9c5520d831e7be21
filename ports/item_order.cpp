#include "ports/item_order.h"

namespace orvane {
namespace {

// The lexicographic comparison of two sequences, both ways at once.
template <typename Set, typename Less>
Order compareSets(const Set& a, const Set& b, Less less) {
  auto x = a.begin();
  auto y = b.begin();
  for (; x != a.end() && y != b.end(); ++x, ++y) {
    if (less(*x, *y)) return {.less = true, .greater = false};
    if (less(*y, *x)) return {.less = false, .greater = true};
  }
  return {.less = y != b.end(), .greater = x != a.end()};
}

}  // namespace

Order compareItems(const OrvanePortMapping& a, const OrvanePortMapping& b) {
  if (a.ip.address != b.ip.address) {
    return {.less = a.ip.address < b.ip.address, .greater = b.ip.address < a.ip.address};
  }
  const Order ports = compareSets(a.ports, b.ports, OrvanePortArrayLess());
  const Order ranges = compareSets(a.ranges, b.ranges, OrvaneRangeSetLess());
  return {.less = ports.less || ranges.less, .greater = ports.greater || ranges.greater};
}

}  // namespace orvane
