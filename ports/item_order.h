// The orderings of items.

#ifndef ORVANE_PORTS_ITEM_ORDER_H_
#define ORVANE_PORTS_ITEM_ORDER_H_

#include "orvane/port_mapping.h"
#include "ports/differences.h"

namespace orvane {

// The ordering of OrvanePortMappingLess, both ways in one pass.
Order compareItems(const OrvanePortMapping& a, const OrvanePortMapping& b);

// A strict weak ordering with the same equivalents: by address, then ports, then ranges.
Order compareItemsInTurn(const OrvanePortMapping& a, const OrvanePortMapping& b);

}  // namespace orvane

#endif  // ORVANE_PORTS_ITEM_ORDER_H_
