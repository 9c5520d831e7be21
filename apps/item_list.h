// Adding items to the item list of an application, as OrvaneApplication::addItem() does.

#ifndef ORVANE_APPS_ITEM_LIST_H_
#define ORVANE_APPS_ITEM_LIST_H_

#include <cstddef>
#include <span>
#include <vector>

#include "apps/application_fields.h"
#include "apps/application_watcher.h"
#include "orvane/application.h"

namespace orvane {

// Moves the ports and ranges of an item to the one with its address.
void mergeItem(OrvanePortMapping& item, OrvanePortMapping& held);

// Adds an item, or its ports and ranges to the item with its address; returns the item held.
OrvanePortMapping* addItem(OrvanePortMapping&& item, OrvaneItems& items);
OrvanePortMapping* addItem(const OrvanePortMapping& item, OrvaneItems& items);

// Adds an item, whose address is not below that of any held, to a list that has room for it.
void appendItem(OrvanePortMapping item, OrvaneItems& items);

// Adds the items of another list.
void addItems(OrvaneItems&& more, OrvaneItems& items);
void addItems(const OrvaneItems& more, OrvaneItems& items);

// Reads the item of a record and adds it.
template <typename Watcher>
void readRecordItem(const ApplicationRecord& record, OrvaneItems& items, Watcher& watcher);

// What a group of a section text says: which application it belongs to, and what its item is.
template <typename Watcher>
struct ItemGroup {
  std::size_t application = 0;
  ItemFields item;
  [[no_unique_address]] typename Watcher::ItemPlaces places;
};

// Puts the groups of that many applications in order of application and address; those with the
// same stay in their order.
template <typename Watcher>
void order(std::vector<ItemGroup<Watcher>>& groups, std::size_t applications);

// The items of groups that are in order and belong to one application, those with one address
// united.
template <typename Watcher>
OrvaneItems readItems(std::span<const ItemGroup<Watcher>> groups, Watcher& watcher);

}  // namespace orvane

#endif  // ORVANE_APPS_ITEM_LIST_H_
