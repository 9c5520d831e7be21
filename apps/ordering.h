// The orderings of applications.

#ifndef ORVANE_APPS_ORDERING_H_
#define ORVANE_APPS_ORDERING_H_

#include <vector>

#include "orvane/app_mapping.h"
#include "ports/item_order.h"

namespace orvane {

// OrvaneApplication::lexItemsLess(), both ways in one pass.
Order compareNamesAndItems(const OrvaneApplication& a, const OrvaneApplication& b);

// The ordering of updated sections: by UPID, then compareNamesAndItems().
Order compareApplications(const OrvaneApplication& a, const OrvaneApplication& b);

// Whether neither of two applications of one UPID comes before the other in that ordering.
bool equivalent(const OrvaneApplication& a, const OrvaneApplication& b);

// An application and its UPID, which mostly tells it apart from others without looking at it.
struct IndexedApplication {
  unsigned int upid;
  const OrvaneApplication* application;
};

// The applications of a collection in the order of OrvaneAppMapping::sortByUpid().
std::vector<IndexedApplication> orderedIndex(const OrvaneAppMapping& mapping);

}  // namespace orvane

#endif  // ORVANE_APPS_ORDERING_H_
