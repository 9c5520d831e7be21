// The application ordering.

#ifndef ORVANE_APPS_ORDERING_H_
#define ORVANE_APPS_ORDERING_H_

#include "orvane/application.h"
#include "ports/item_order.h"

namespace orvane {

// OrvaneApplication::lexItemsLess(), both ways in one pass.
Order compareNamesAndItems(const OrvaneApplication& a, const OrvaneApplication& b);

// The ordering of updated sections: by UPID, then compareNamesAndItems().
Order compareApplications(const OrvaneApplication& a, const OrvaneApplication& b);

}  // namespace orvane

#endif  // ORVANE_APPS_ORDERING_H_
