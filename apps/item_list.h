// Adding items to the item list of an application, as OrvaneApplication::addItem() does.

#ifndef ORVANE_APPS_ITEM_LIST_H_
#define ORVANE_APPS_ITEM_LIST_H_

#include <vector>

#include "orvane/application.h"

namespace orvane {

using LateItems = std::vector<OrvanePortMapping>;

// Adds the ports and ranges of an item to the one with its address.
void mergeItem(const OrvanePortMapping& item, OrvanePortMapping& held);

// Adds a copy of the item, or merges it into the one with its address; returns the item held.
OrvanePortMapping* addItem(const OrvanePortMapping& item, OrvaneItems& items);

// Adds the items of another list; both are walked once when there are many.
void addItems(const OrvaneItems& more, OrvaneItems& items);

// Adds items in the order in which they stand, all at once.
void addLate(LateItems late, OrvaneItems& items);

}  // namespace orvane

#endif  // ORVANE_APPS_ITEM_LIST_H_
