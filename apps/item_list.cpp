#include "apps/item_list.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvane {
namespace {

// Merges items that ascend by address into a list; those with one address in their order.
template <typename Iterator>
void mergeAscending(Iterator first, Iterator last, OrvaneItems& items) {
  OrvaneItems merged;
  merged.reserve(items.size() + static_cast<std::size_t>(std::distance(first, last)));
  auto* held = items.begin();
  for (; first != last; ++first) {
    while (held != items.end() && !(*first < *held)) {
      merged.insert(merged.end(), std::move(*held++));
    }
    if (!merged.empty() && merged.back() == *first) {
      mergeItem(*first, merged.back());
    } else {
      merged.insert(merged.end(), *first);
    }
  }
  while (held != items.end()) merged.insert(merged.end(), std::move(*held++));
  items.swap(merged);
}

}  // namespace

void mergeItem(const OrvanePortMapping& item, OrvanePortMapping& held) {
  held.addPorts(item.ports);
  held.addRanges(item.ranges);
}

OrvanePortMapping* addItem(const OrvanePortMapping& item, OrvaneItems& items) {
  const auto place = items.lower_bound(item);
  if (place == items.end() || !(*place == item)) return items.insert(place, item);
  mergeItem(item, *place);
  return place;
}

void addItems(const OrvaneItems& more, OrvaneItems& items) {
  constexpr std::size_t kFew = 8;
  if (more.size() > kFew && &more != &items) {
    mergeAscending(more.begin(), more.end(), items);
  } else {
    for (const OrvanePortMapping& item : more) addItem(item, items);
  }
}

void addLate(LateItems late, OrvaneItems& items) {
  if (late.empty()) return;
  std::ranges::stable_sort(late, {}, &OrvanePortMapping::getIpAddress);
  mergeAscending(std::make_move_iterator(late.begin()), std::make_move_iterator(late.end()), items);
}

}  // namespace orvane
