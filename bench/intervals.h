// Port lists in an interval set that others wrote.

#ifndef ORVANE_BENCH_INTERVALS_H_
#define ORVANE_BENCH_INTERVALS_H_

#include <boost/icl/interval_set.hpp>
#include <charconv>
#include <string>

namespace intervals {

using Set = boost::icl::interval_set<unsigned int>;
using Interval = Set::interval_type;

inline Interval of(unsigned int first, unsigned int last) { return Interval::closed(first, last); }

// A well-formed list; its ports and ranges are all the same to the set.
inline Set read(const std::string& list) {
  Set set;
  const char* next = list.data();
  const char* const end = next + list.size();
  while (next < end) {
    unsigned int first = 0;
    next = std::from_chars(next, end, first).ptr;
    unsigned int last = first;
    if (next < end && *next == '-') next = std::from_chars(next + 1, end, last).ptr;
    set.add(of(first, last));
    ++next;
  }
  return set;
}

}  // namespace intervals

#endif  // ORVANE_BENCH_INTERVALS_H_
