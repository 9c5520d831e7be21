#include "apps/item_list.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "ports/port_list.h"

namespace orvane {
namespace {

bool byAddress(const ItemGroup& a, const ItemGroup& b) { return a.item.address < b.item.address; }

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

OrvanePortMapping readItem(const ItemFields& fields) {
  OrvanePortMapping item = withoutPorts(fields);
  readPortList(fields.portList, item);
  return item;
}

void order(std::vector<ItemGroup>& groups, std::size_t applications) {
  const auto place = [](const ItemGroup& group) {
    return std::pair(group.application, group.item.address);
  };
  if (std::ranges::is_sorted(groups, {}, place)) return;
  std::vector<std::size_t> ends(applications + 1);
  for (const ItemGroup& group : groups) ++ends[group.application + 1];
  std::partial_sum(ends.begin(), ends.end(), ends.begin());
  std::vector<ItemGroup> ordered(groups.size());
  for (const ItemGroup& group : groups) ordered[ends[group.application]++] = group;
  groups.swap(ordered);
  for (auto first = groups.begin(); first != groups.end();) {
    const auto last = groups.begin() + static_cast<std::ptrdiff_t>(ends[first->application]);
    if (!std::is_sorted(first, last, byAddress)) std::stable_sort(first, last, byAddress);
    first = last;
  }
}

OrvaneItems readItems(std::span<const ItemGroup> groups) {
  std::size_t addresses = groups.empty() ? 0 : 1;
  for (std::size_t i = 1; i < groups.size(); ++i) {
    if (byAddress(groups[i - 1], groups[i])) ++addresses;
  }
  OrvaneItems items;
  items.reserve(addresses);
  for (const ItemGroup& group : groups) {
    OrvanePortMapping item = withoutPorts(group.item);
    if (items.empty() || items.back() < item) {
      readPortList(group.item.portList, *items.insert(items.end(), std::move(item)));
    } else {
      readPortList(group.item.portList, item);
      mergeItem(item, items.back());
    }
  }
  return items;
}

}  // namespace orvane
