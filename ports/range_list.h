// The merging of ranges, for one range added to a set and for a whole list being read.

#ifndef ORVANE_PORTS_RANGE_LIST_H_
#define ORVANE_PORTS_RANGE_LIST_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <set>
#include <vector>

#include "orvane/port_range.h"

namespace orvane {

// The bounds of a range, as plain data.
struct Bounds {
  std::uint32_t start;
  std::uint32_t end;
};

// Adds one range to a set, as OrvanePortMapping::addRange() describes. `covered` becomes the range
// whose single ports are swallowed. Returns the position of the widened range, or the end position
// when nothing overlapped.
std::set<OrvanePortRange>::iterator addRange(std::set<OrvanePortRange>& ranges,
                                             const OrvanePortRange& range, Bounds& covered);

// Removes the ports inside a range.
void erasePorts(std::set<unsigned short>& ports, Bounds covered);

// The ranges of a list while it is being read: a sorted array answers the probes by rank that
// merging needs in constant time, where a set would have to step. A short list stays on the stack.
class RangeList {
 public:
  RangeList() { ranges_.reserve(kShortList); }
  RangeList(const RangeList&) = delete;
  RangeList& operator=(const RangeList&) = delete;

  // Adds one range as addRange() does for a set; returns the range whose ports are swallowed.
  Bounds add(Bounds range);

  // The ranges, by their ends.
  auto begin() const { return ranges_.begin(); }
  auto end() const { return ranges_.end(); }

 private:
  static constexpr std::size_t kShortList = 64;

  alignas(Bounds) std::array<std::byte, kShortList * sizeof(Bounds)> room_;
  std::pmr::monotonic_buffer_resource memory_{room_.data(), room_.size()};
  std::pmr::vector<Bounds> ranges_{&memory_};
};

}  // namespace orvane

#endif  // ORVANE_PORTS_RANGE_LIST_H_
