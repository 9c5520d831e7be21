#include "ports/range_list.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace orvane {
namespace {

constexpr std::uint32_t kMaxPort = std::numeric_limits<std::uint16_t>::max();

// The standard binary search, with "does not overlap" in the place of "comes before". The elements
// are not partitioned by that test, so which element is found depends on the probes: always the
// middle first.
template <typename Iterator, typename Overlaps>
Iterator searchOverlap(Iterator first, std::size_t count, const Overlaps& overlaps) {
  while (count > 0) {
    const std::size_t half = count / 2;
    const Iterator middle = std::next(first, static_cast<std::ptrdiff_t>(half));
    if (overlaps(*middle)) {
      count = half;
    } else {
      first = std::next(middle);
      count -= half + 1;
    }
  }
  return first;
}

bool overlap(Bounds a, Bounds b) {
  return OrvanePortRange(a.start, a.end).overlap(OrvanePortRange(b.start, b.end));
}

}  // namespace

std::set<OrvanePortRange>::iterator addRange(std::set<OrvanePortRange>& ranges,
                                             const OrvanePortRange& range, Bounds& covered) {
  covered = {range.getStart(), range.getEnd()};
  const auto found = searchOverlap(ranges.begin(), ranges.size(),
                                   [&](const OrvanePortRange& r) { return r.overlap(range); });
  if (found == ranges.end()) {
    ranges.insert(range);
    return found;
  }
  auto node = ranges.extract(found);
  node.value().mergeRange(OrvanePortRange(covered.start, covered.end));
  auto widened = ranges.insert(std::move(node));
  if (!widened.inserted) {
    auto sameEnd = ranges.extract(widened.position);
    sameEnd.value().mergeRange(widened.node.value());
    widened = ranges.insert(std::move(sameEnd));
  }
  covered = {widened.position->getStart(), widened.position->getEnd()};
  return widened.position;
}

void erasePorts(std::set<unsigned short>& ports, Bounds covered) {
  if (covered.start > std::min(covered.end, kMaxPort)) return;
  auto port = ports.lower_bound(static_cast<unsigned short>(covered.start));
  while (port != ports.end() && *port <= covered.end) port = ports.erase(port);
}

Bounds RangeList::add(Bounds range) {
  const auto byEnd = [](Bounds a, Bounds b) { return a.end < b.end; };
  if (ranges_.empty() || (ranges_.back().end < range.start && range.start <= range.end)) {
    ranges_.push_back(range);  // in ascending order nothing overlaps
    return range;
  }
  const auto found = searchOverlap(ranges_.begin(), ranges_.size(),
                                   [&](Bounds element) { return overlap(element, range); });
  if (found == ranges_.end()) {
    const auto place = std::lower_bound(ranges_.begin(), ranges_.end(), range, byEnd);
    if (place == ranges_.end() || place->end != range.end) ranges_.insert(place, range);
    return range;
  }
  Bounds widened = {std::min(found->start, range.start), std::max(found->end, range.end)};
  const auto place = std::lower_bound(found + 1, ranges_.end(), widened, byEnd);
  if (place != ranges_.end() && place->end == widened.end) {
    place->start = std::min(place->start, widened.start);
    widened = *place;
    ranges_.erase(found);
  } else {
    *std::move(found + 1, place, found) = widened;
  }
  return widened;
}

}  // namespace orvane
