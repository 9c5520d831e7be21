// The mapping ordering, both ways in one pass.

#ifndef ORVANE_PORTS_ITEM_ORDER_H_
#define ORVANE_PORTS_ITEM_ORDER_H_

#include "orvane/port_mapping.h"
#include "ports/differences.h"

namespace orvane {

// The ordering of OrvanePortMappingLess.
Order compareItems(const OrvanePortMapping& a, const OrvanePortMapping& b);

}  // namespace orvane

#endif  // ORVANE_PORTS_ITEM_ORDER_H_
