#include "apps/item_list.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "ports/port_list.h"

namespace orvane {
namespace {

template <typename Group>
bool byAddress(const Group& a, const Group& b) {
  return a.item.address < b.item.address;
}

OrvanePortMapping withoutPorts(const ItemFields& fields) {
  OrvanePortMapping item;
  item.ip.address = fields.address;
  item.uniqueBlockNumber = fields.uniqueBlockNumber;
  item.selectorInfo = fields.selectorInfo;
  return item;
}

// What an item has and one with its address lacks.
OrvanePortMapping lackedBy(const OrvanePortMapping& held, const OrvanePortMapping& item) {
  OrvanePortMapping missing;
  missing.ip.address = item.ip.address;
  missing.ports = missingFrom(held.ports, item.ports);
  missing.ranges = missingFrom(held.ranges, item.ranges);
  return missing;
}

}  // namespace

void mergeItem(OrvanePortMapping& item, OrvanePortMapping& held) {
  splice(item.ports, held.ports);
  splice(item.ranges, held.ranges);
}

OrvanePortMapping* addItem(OrvanePortMapping&& item, OrvaneItems& items) {
  const auto place = items.lower_bound(item);
  if (place == items.end() || !(*place == item)) return items.insert(place, std::move(item));
  mergeItem(item, *place);
  return place;
}

void appendItem(OrvanePortMapping item, OrvaneItems& items) {
  if (items.empty() || items.back() < item) {
    items.insert(items.end(), std::move(item));
  } else {
    mergeItem(item, items.back());
  }
}

OrvanePortMapping* addItem(const OrvanePortMapping& item, OrvaneItems& items) {
  const auto held = items.find(item);
  return addItem(held == items.end() ? OrvanePortMapping(item) : lackedBy(*held, item), items);
}

void addItems(OrvaneItems&& more, OrvaneItems& items) {
  items.merge(more);
  for (OrvanePortMapping& item : more) mergeItem(item, *items.find(item));
}

void addItems(const OrvaneItems& more, OrvaneItems& items) {
  OrvaneItems added;
  for (const OrvanePortMapping& item : more) {
    const auto held = items.find(item);
    added.insert(added.end(),
                 held == items.end() ? OrvanePortMapping(item) : lackedBy(*held, item));
  }
  addItems(std::move(added), items);
}

template <typename Watcher>
void readRecordItem(const ApplicationRecord& record, OrvaneItems& items, Watcher& watcher) {
  const ItemFields fields = readItemFields(record, watcher);
  OrvanePortMapping item = withoutPorts(fields);
  readPortList(fields.portList, item, watcher);
  if constexpr (Watcher::kWatches) {
    const auto held = items.find(item);
    if (held != items.end()) watcher.sameItem(watcher.placesOf(record), item, *held);
  }
  addItem(std::move(item), items);
}

template <typename Watcher>
void order(std::vector<ItemGroup<Watcher>>& groups, std::size_t applications) {
  using Group = ItemGroup<Watcher>;
  const auto place = [](const Group& group) {
    return std::pair(group.application, group.item.address);
  };
  if (std::ranges::is_sorted(groups, {}, place)) return;
  std::vector<std::size_t> ends(applications + 1);
  for (const Group& group : groups) ++ends[group.application + 1];
  std::partial_sum(ends.begin(), ends.end(), ends.begin());
  std::vector<Group> ordered(groups.size());
  for (const Group& group : groups) ordered[ends[group.application]++] = group;
  groups.swap(ordered);
  for (auto first = groups.begin(); first != groups.end();) {
    const auto last = groups.begin() + static_cast<std::ptrdiff_t>(ends[first->application]);
    if (!std::is_sorted(first, last, byAddress<Group>)) {
      std::stable_sort(first, last, byAddress<Group>);
    }
    first = last;
  }
}

template <typename Watcher>
OrvaneItems readItems(std::span<const ItemGroup<Watcher>> groups, Watcher& watcher) {
  std::size_t addresses = groups.empty() ? 0 : 1;
  for (std::size_t i = 1; i < groups.size(); ++i) {
    if (byAddress(groups[i - 1], groups[i])) ++addresses;
  }
  OrvaneItems items;
  items.reserve(addresses);
  for (const ItemGroup<Watcher>& group : groups) {
    OrvanePortMapping item = withoutPorts(group.item);
    if (items.empty() || items.back() < item) {
      watcher.newItem(group.item, group.places);
      readPortList(group.item.portList, *items.insert(items.end(), std::move(item)), watcher);
    } else {
      readPortList(group.item.portList, item, watcher);
      watcher.sameItem(group.places, item, items.back());
      mergeItem(item, items.back());
    }
  }
  return items;
}

template void readRecordItem(const ApplicationRecord&, OrvaneItems&, UnwatchedApplications&);
template void readRecordItem(const ApplicationRecord&, OrvaneItems&, ApplicationReporter&);
template void order(std::vector<ItemGroup<UnwatchedApplications>>&, std::size_t);
template void order(std::vector<ItemGroup<ApplicationReporter>>&, std::size_t);
template OrvaneItems readItems(std::span<const ItemGroup<UnwatchedApplications>>,
                               UnwatchedApplications&);
template OrvaneItems readItems(std::span<const ItemGroup<ApplicationReporter>>,
                               ApplicationReporter&);

}  // namespace orvane
