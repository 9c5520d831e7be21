// What one ordered sequence has and another lacks.

#ifndef ORVANE_PORTS_DIFFERENCES_H_
#define ORVANE_PORTS_DIFFERENCES_H_

#include <compare>
#include <span>
#include <vector>

namespace orvane {

// How a stands to b in an ordering in which each can be less than the other.
struct Order {
  bool less;     // a < b
  bool greater;  // b < a
};

// The order of elements by an ordinary "less".
template <typename Less>
auto orderBy(Less less) {
  return [less](const auto& a, const auto& b) {
    return Order{.less = less(a, b), .greater = less(b, a)};
  };
}

// Calls take(element) for each element of `some` that `others` lacks: the standard set difference.
template <typename Some, typename Others, typename Compare, typename Take>
void forEachMissing(const Some& some, const Others& others, Compare compare, Take take) {
  auto a = some.begin();
  auto b = others.begin();
  while (a != some.end() && b != others.end()) {
    const Order order = compare(*a, *b);
    if (order.less) {
      take(*a++);
    } else {
      if (!order.greater) ++a;
      ++b;
    }
  }
  while (a != some.end()) take(*a++);
}

// The lexicographic comparison of two sequences, both ways at once.
template <typename Sequence, typename Compare>
Order compareSequences(const Sequence& a, const Sequence& b, Compare compare) {
  auto x = a.begin();
  auto y = b.begin();
  for (; x != a.end() && y != b.end(); ++x, ++y) {
    const Order order = compare(*x, *y);
    if (order.less || order.greater) return order;
  }
  return {.less = y != b.end(), .greater = x != a.end()};
}

// Calls take(a, b) for the elements of each key of two sequences that are ordered by that: the n-th
// of one with the n-th of the other, and with null where the other has fewer. Stops when a call
// gives false, and tells whether none did.
template <typename Sequence, typename Key, typename Take>
bool forEachPair(const Sequence& older, const Sequence& newer, Key key, Take take) {
  auto a = older.begin();
  auto b = newer.begin();
  while (a != older.end() || b != newer.end()) {
    const std::strong_ordering order = a == older.end()   ? std::strong_ordering::greater
                                       : b == newer.end() ? std::strong_ordering::less
                                                          : key(*a) <=> key(*b);
    const auto* const one = std::is_lteq(order) ? &*a++ : nullptr;
    const auto* const other = std::is_gteq(order) ? &*b++ : nullptr;
    if (!take(one, other)) return false;
  }
  return true;
}

// What each of two ordered lists has and the other has not.
template <typename T>
struct Differences {
  std::vector<const T*> older;
  std::vector<const T*> newer;
};

// What an element of a list of objects, or of pointers to them, stands for.
template <typename T>
const T& objectOf(const T& element) {
  return element;
}
template <typename T>
const T& objectOf(const T* element) {
  return *element;
}

// As two standard set differences would list it, one from each side. One walk serves the two, which
// compares only once, until elements that are each less than the other send the walks separate
// ways. The lists are of objects or of pointers to them.
template <typename T, typename List, typename Compare>
Differences<T> differences(const List& older, const List& newer, Compare compare) {
  Differences<T> result;
  const auto compareObjects = [&](const auto& a, const auto& b) {
    return compare(objectOf(a), objectOf(b));
  };
  auto a = older.begin();
  auto b = newer.begin();
  while (a != older.end() && b != newer.end()) {
    const Order order = compareObjects(*a, *b);
    if (order.less && order.greater) break;
    if (order.less) {
      result.older.push_back(&objectOf(*a++));
    } else if (order.greater) {
      result.newer.push_back(&objectOf(*b++));
    } else {
      ++a;
      ++b;
    }
  }
  const std::span restOfOlder(a, older.end());
  const std::span restOfNewer(b, newer.end());
  forEachMissing(restOfOlder, restOfNewer, compareObjects,
                 [&](const auto& missing) { result.older.push_back(&objectOf(missing)); });
  forEachMissing(restOfNewer, restOfOlder, compareObjects,
                 [&](const auto& missing) { result.newer.push_back(&objectOf(missing)); });
  return result;
}

}  // namespace orvane

#endif  // ORVANE_PORTS_DIFFERENCES_H_
