#include "ports/range_list.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <limits>
#include <utility>

#include "ports/watcher.h"

namespace orvane {
namespace {

// The standard binary search over ranks from 0, with "does not overlap" in the place of "comes
// before". The elements are not partitioned by that test, so which one is found depends on the
// probes: always the middle first.
template <typename Overlaps>
std::size_t searchOverlap(std::size_t count, Overlaps overlaps) {
  std::size_t first = 0;
  while (count > 0) {
    const std::size_t half = count / 2;
    if (overlaps(first + half)) {
      count = half;
    } else {
      first += half + 1;
      count -= half + 1;
    }
  }
  return first;
}

bool overlap(Bounds a, Bounds b) {
  return OrvanePortRange(a.start, a.end).overlap(OrvanePortRange(b.start, b.end));
}

}  // namespace

template <typename Watcher>
std::set<OrvanePortRange>::iterator addRange(std::set<OrvanePortRange>& ranges,
                                             const OrvanePortRange& range, Bounds& covered,
                                             Watcher& watcher) {
  const Bounds added = {range.getStart(), range.getEnd()};
  covered = added;
  auto probe = ranges.begin();
  std::size_t probeRank = 0;
  const auto stepTo = [&](std::size_t rank) {
    for (; probeRank < rank; ++probeRank) ++probe;
    for (; probeRank > rank; --probeRank) --probe;
    return probe;
  };
  const std::size_t rank = searchOverlap(
      ranges.size(), [&](std::size_t middle) { return stepTo(middle)->overlap(range); });
  const auto found = stepTo(rank);
  if (found == ranges.end()) {
    if (!ranges.insert(range).second) watcher.skipped(covered);
    return found;
  }
  auto node = ranges.extract(found);
  node.value().mergeRange(OrvanePortRange(added.start, added.end));
  auto widened = ranges.insert(std::move(node));
  if (!widened.inserted) {
    auto sameEnd = ranges.extract(widened.position);
    sameEnd.value().mergeRange(widened.node.value());
    widened = ranges.insert(std::move(sameEnd));
  }
  covered = {widened.position->getStart(), widened.position->getEnd()};
  watcher.merged(added, covered);
  return widened.position;
}

template std::set<OrvanePortRange>::iterator addRange(std::set<OrvanePortRange>&,
                                                      const OrvanePortRange&, Bounds&, Unwatched&);
template std::set<OrvanePortRange>::iterator addRange(std::set<OrvanePortRange>&,
                                                      const OrvanePortRange&, Bounds&, Reporter&);

void erasePorts(std::set<unsigned short>& ports, Bounds covered) {
  auto port = firstInside(ports, covered);
  while (port != ports.end() && *port <= covered.end) port = ports.erase(port);
}

template <typename Watcher>
Bounds RangeList::add(Bounds range, Watcher& watcher) {
  if (size_ == 0 || (blocks_.back().back().end < range.start && range.start <= range.end)) {
    append(range);  // in ascending order nothing overlaps
    return range;
  }
  const Place found = findOverlap(range);
  if (isEnd(found)) {
    const Place place = lowerBound(range.end);
    if (isEnd(place) || at(place).end != range.end) {
      insert(place, range);
    } else {
      watcher.skipped(range);
    }
    return range;
  }
  const Bounds widened = widen(found, range);
  watcher.merged(range, widened);
  return widened;
}

template Bounds RangeList::add(Bounds, Unwatched&);
template Bounds RangeList::add(Bounds, Reporter&);

// A range that has the new end already becomes one with the widened one.
Bounds RangeList::widen(Place held, Bounds by) {
  Bounds widened = {std::min(at(held).start, by.start), std::max(at(held).end, by.end)};
  if (widened.end == at(held).end) return at(held) = widened;
  erase(held);
  const Place place = lowerBound(widened.end);
  if (!isEnd(place) && at(place).end == widened.end) {
    widened.start = std::min(at(place).start, widened.start);
    return at(place) = widened;
  }
  insert(place, widened);
  return widened;
}

RangeList::Place RangeList::placeOf(std::size_t rank) const {
  if (rank == size_) return {blocks_.size() - 1, blocks_.back().size()};
  std::size_t block = 0;
  for (std::size_t step = sums_.size() / 2; step > 0; step /= 2) {
    const std::size_t sum = sums_[block + step];
    const bool isBehind = sum <= rank;  // which no processor can guess: hence no branch
    block += isBehind ? step : 0;
    rank -= isBehind ? sum : 0;
  }
  return {block, rank};
}

RangeList::Place RangeList::findOverlap(Bounds range) const {
  return placeOf(searchOverlap(size_, [&](std::size_t middle) {
    const Place place = placeOf(middle);
    return overlap(blocks_[place.block][place.index], range);
  }));
}

RangeList::Place RangeList::lowerBound(std::uint32_t end) const {
  const auto endsBelow = [=](Bounds range) { return range.end < end; };
  const auto block = std::partition_point(blocks_.begin(), blocks_.end() - 1,
                                          [&](const Block& b) { return endsBelow(b.back()); });
  const auto place = std::partition_point(block->begin(), block->end(), endsBelow);
  return {static_cast<std::size_t>(block - blocks_.begin()),
          static_cast<std::size_t>(place - block->begin())};
}

void RangeList::insert(Place place, Bounds range) {
  Block& block = blocks_[place.block];
  block.insert(block.begin() + static_cast<std::ptrdiff_t>(place.index), range);
  ++size_;
  if (block.size() <= kBlock) {
    changeSize(place.block, 1);
    return;
  }
  // Where ranges are appended, the full block stays full.
  const bool appended = place.block + 1 == blocks_.size() && place.index + 1 == block.size();
  const auto middle = appended ? block.end() - 1 : block.begin() + kBlock / 2;
  Block upper;
  upper.reserve(kBlock + 1);
  upper.assign(middle, block.end());
  block.erase(middle, block.end());
  blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(place.block) + 1, std::move(upper));
  sumSizes();
}

void RangeList::erase(Place place) {
  Block& block = blocks_[place.block];
  block.erase(block.begin() + static_cast<std::ptrdiff_t>(place.index));
  --size_;
  if (block.empty() && blocks_.size() > 1) {
    blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(place.block));
    sumSizes();
  } else {
    changeSize(place.block, static_cast<std::size_t>(-1));
  }
}

void RangeList::changeSize(std::size_t block, std::size_t by) {
  for (std::size_t i = block + 1; i <= blocks_.size(); i += i & -i) sums_[i] += by;
}

void RangeList::sumSizes() {
  sums_.assign(std::bit_ceil(blocks_.size() + 1), std::numeric_limits<std::size_t>::max());
  std::fill_n(sums_.begin(), blocks_.size() + 1, 0);
  for (std::size_t i = 0; i < blocks_.size(); ++i) changeSize(i, blocks_[i].size());
}

}  // namespace orvane
