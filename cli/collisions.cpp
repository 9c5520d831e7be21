#include "cli/collisions.h"

#include <algorithm>
#include <utility>

namespace orvane::cli {

std::vector<Interval> intervalsOf(const OrvanePortMapping& item) {
  std::vector<Interval> intervals;
  for (const unsigned short port : item.getPorts()) intervals.push_back({port, port});
  for (const OrvanePortRange& range : item.getRanges()) {
    if (range.getStart() <= range.getEnd()) intervals.push_back({range.getStart(), range.getEnd()});
  }
  return intervals;
}

std::string portListOf(std::vector<Interval> intervals) {
  std::ranges::sort(intervals, {}, &Interval::first);
  std::vector<Interval> joined;
  for (const Interval& next : intervals) {
    if (!joined.empty() && next.first <= std::uint64_t{joined.back().last} + 1) {
      joined.back().last = std::max(joined.back().last, next.last);
    } else {
      joined.push_back(next);
    }
  }
  std::string text;
  for (const auto& [first, last] : joined) {
    if (!text.empty()) text.push_back(',');
    text += std::to_string(first);
    if (last != first) text += "-" + std::to_string(last);
  }
  return text;
}

UseIndex::UseIndex(const std::vector<Use>& uses) {
  for (std::size_t use = 0; use < uses.size(); ++use) {
    const std::uint32_t address = uses[use].ports.getIpAddress();
    List& list = address == 0 ? onEveryAddress_ : onAddress_[address];
    for (const Interval& ports : intervalsOf(uses[use].ports)) {
      list.push_back({ports, use, 0});
      all_.push_back({ports, use, 0});
    }
  }
  order(all_);
  order(onEveryAddress_);
  for (auto& [address, list] : onAddress_) order(list);
}

void UseIndex::order(List& list) {
  std::ranges::sort(list, {}, [](const Entry& entry) { return entry.ports.first; });
  std::uint32_t highest = 0;
  for (Entry& entry : list) {
    highest = std::max(highest, entry.ports.last);
    entry.highestLast = highest;
  }
}

std::vector<Collision> UseIndex::collisionsOf(const OrvanePortMapping& item) const {
  std::unordered_map<std::size_t, std::vector<Interval>> found;
  const auto own = onAddress_.find(item.getIpAddress());
  for (const Interval& ports : intervalsOf(item)) {
    if (item.getIpAddress() == 0) {
      collect(all_, ports, found);
    } else {
      collect(onEveryAddress_, ports, found);
      if (own != onAddress_.end()) collect(own->second, ports, found);
    }
  }
  std::vector<Collision> collisions;
  collisions.reserve(found.size());
  for (auto& [use, ports] : found) collisions.push_back({use, std::move(ports)});
  std::ranges::sort(collisions, {}, &Collision::use);
  return collisions;
}

// Walks back from the last entry that begins at or before the last port, as long as any entry
// further back can still reach the first one.
void UseIndex::collect(const List& list, Interval ports,
                       std::unordered_map<std::size_t, std::vector<Interval>>& found) {
  auto entry =
      std::ranges::upper_bound(list, ports.last, {}, [](const Entry& e) { return e.ports.first; });
  while (entry != list.begin() && (--entry)->highestLast >= ports.first) {
    if (entry->ports.last < ports.first) continue;
    found[entry->use].push_back(
        {std::max(entry->ports.first, ports.first), std::min(entry->ports.last, ports.last)});
  }
}

}  // namespace orvane::cli
