// The mapping ordering, both ways in one pass, and the differences of two ordered lists.

#ifndef ORVANE_PORTS_ITEM_ORDER_H_
#define ORVANE_PORTS_ITEM_ORDER_H_

#include <vector>

#include "orvane/port_mapping.h"

namespace orvane {

// How a stands to b in an ordering in which each can be less than the other.
struct Order {
  bool less;     // a < b
  bool greater;  // b < a
};

// The ordering of OrvanePortMappingLess.
Order compareItems(const OrvanePortMapping& a, const OrvanePortMapping& b);

// What each of two ordered lists has and the other has not, as two standard set differences would
// list it, one from each side.
template <typename T>
struct Differences {
  std::vector<const T*> older;
  std::vector<const T*> newer;
};

// One set difference: appends what [a, aEnd) has and [b, bEnd) has not.
template <typename T, typename Compare>
void appendMissing(const T* a, const T* aEnd, const T* b, const T* bEnd, Compare compare,
                   std::vector<const T*>& missing) {
  while (a != aEnd && b != bEnd) {
    const Order order = compare(*a, *b);
    if (order.less) {
      missing.push_back(a++);
    } else {
      if (!order.greater) ++a;
      ++b;
    }
  }
  while (a != aEnd) missing.push_back(a++);
}

// Both differences. One walk serves the two, until elements that are each less than the other send
// the walks separate ways.
template <typename T, typename Compare>
Differences<T> differences(const T* older, const T* olderEnd, const T* newer, const T* newerEnd,
                           Compare compare) {
  Differences<T> result;
  while (older != olderEnd && newer != newerEnd) {
    const Order order = compare(*older, *newer);
    if (order.less && order.greater) break;
    if (order.less) {
      result.older.push_back(older++);
    } else if (order.greater) {
      result.newer.push_back(newer++);
    } else {
      ++older;
      ++newer;
    }
  }
  appendMissing(older, olderEnd, newer, newerEnd, compare, result.older);
  appendMissing(newer, newerEnd, older, olderEnd, compare, result.newer);
  return result;
}

}  // namespace orvane

#endif  // ORVANE_PORTS_ITEM_ORDER_H_
