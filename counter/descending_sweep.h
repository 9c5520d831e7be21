// Whether ranges meet others, told in one walk over both.

#ifndef ORVANE_COUNTER_DESCENDING_SWEEP_H_
#define ORVANE_COUNTER_DESCENDING_SWEEP_H_

#include <algorithm>
#include <cstdint>
#include <limits>

#include "ports/range_list.h"
#include "ports/text_in.h"

namespace orvane {

// Tells of one range after the other, asked in descending order of their ends, whether it meets an
// element of a list in ascending order of their ends. By the overlap test, an element that ends
// above the range meets it when it starts at or below its end, one that ends below when it ends at
// or above its start. So the smallest start above and the next end below answer for all elements,
// whatever the order of their starts and also for bounds out of order. With equal ends the test
// depends on which of the two is asked: the first rule holds when that is the element
// (std::greater_equal), the second when it is the range (std::greater).
template <typename Iterator, typename EndsAbove>
class DescendingSweep {
 public:
  template <typename List>
  DescendingSweep(const List& list, EndsAbove endsAbove)
      : next_(list.rbegin()), last_(list.rend()), endsAbove_(endsAbove) {}

  bool meets(Bounds range) {
    for (; next_ != last_ && endsAbove_(boundsOf(*next_).end, range.end); ++next_) {
      smallestStart_ = std::min<std::uint64_t>(smallestStart_, boundsOf(*next_).start);
    }
    return smallestStart_ <= range.end || (next_ != last_ && boundsOf(*next_).end >= range.start);
  }

 private:
  Iterator next_;
  Iterator last_;
  EndsAbove endsAbove_;
  std::uint64_t smallestStart_ = std::numeric_limits<std::uint64_t>::max();
};

template <typename List, typename EndsAbove>
DescendingSweep(const List&, EndsAbove)
    -> DescendingSweep<typename List::const_reverse_iterator, EndsAbove>;

// The first element, in order, that passes the test; all are tested, from the last to the first.
template <typename Iterator, typename Test>
Iterator findFirstDescending(Iterator first, Iterator last, Test test) {
  Iterator found = last;
  for (Iterator element = last; element != first;) {
    if (test(*--element)) found = element;
  }
  return found;
}

}  // namespace orvane

#endif  // ORVANE_COUNTER_DESCENDING_SWEEP_H_
