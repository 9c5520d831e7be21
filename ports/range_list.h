// The merging of ranges, for one range added to a set and for a whole list being read.

#ifndef ORVANE_PORTS_RANGE_LIST_H_
#define ORVANE_PORTS_RANGE_LIST_H_

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

#include "orvane/port_range.h"
#include "ports/text_in.h"

namespace orvane {

inline Bounds boundsOf(const OrvanePortRange& range) { return {range.getStart(), range.getEnd()}; }
inline Bounds boundsOf(Bounds bounds) { return bounds; }

// Adds one range to a set, as OrvanePortMapping::addRange() describes. `covered` becomes the range
// whose single ports are swallowed. Returns the position of the widened range, or the end position
// when nothing overlapped.
template <typename Watcher>
std::set<OrvanePortRange>::iterator addRange(std::set<OrvanePortRange>& ranges,
                                             const OrvanePortRange& range, Bounds& covered,
                                             Watcher& watcher);

// The first port inside a range; the end position when there is none.
inline std::set<unsigned short>::const_iterator firstInside(const std::set<unsigned short>& ports,
                                                            Bounds range) {
  if (range.start > kMaxPort) return ports.end();
  const auto port = ports.lower_bound(static_cast<unsigned short>(range.start));
  return port != ports.end() && *port <= range.end ? port : ports.end();
}

// Removes the ports inside a range.
void erasePorts(std::set<unsigned short>& ports, Bounds covered);

// The ranges of a list while it is being read, by their ends. Merging needs probes by rank, for
// which a set would have to step: this one keeps blocks of them, and sums of their sizes by which
// it finds a rank in a few steps.
class RangeList {
 public:
  // Adds one range as addRange() does for a set; returns the range whose ports are swallowed.
  template <typename Watcher>
  Bounds add(Bounds range, Watcher& watcher);

  // Puts a range that ends after all others at the end, as it is.
  void append(Bounds range) {
    if (blocks_.empty()) {
      blocks_.emplace_back();
      sumSizes();
    }
    insert({blocks_.size() - 1, blocks_.back().size()}, range);
  }

  // Calls take(start, end) for each range, in order.
  template <typename Take>
  void forEach(Take take) const {
    for (const Block& block : blocks_) {
      for (const Bounds& range : block) take(range.start, range.end);
    }
  }

 private:
  static constexpr std::size_t kBlock = 512;

  using Block = std::vector<Bounds>;  // ascending by end; empty only while the list is

  struct Place {
    std::size_t block;
    std::size_t index;
  };

  bool isEnd(Place place) const { return place.index == blocks_[place.block].size(); }
  Bounds& at(Place place) { return blocks_[place.block][place.index]; }

  // The end position is that of the last block.
  Place placeOf(std::size_t rank) const;
  Place findOverlap(Bounds range) const;
  Place lowerBound(std::uint32_t end) const;
  Bounds widen(Place held, Bounds by);
  void insert(Place place, Bounds range);
  void erase(Place place);
  void changeSize(std::size_t block, std::size_t by);
  void sumSizes();

  std::vector<Block> blocks_;  // there is one once anything was added
  // A binary indexed tree: element i has the sizes of as many blocks up to the i-th, counted from
  // 1, as the lowest bit of i says. It is filled up to a power of two by what is above every rank.
  std::vector<std::size_t> sums_;
  std::size_t size_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_PORTS_RANGE_LIST_H_
