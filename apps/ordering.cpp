#include "apps/ordering.h"

#include "apps/application_fields.h"

namespace orvane {

Order compareNamesAndItems(const OrvaneApplication& a, const OrvaneApplication& b) {
  const int names = nameOf(a).compare(nameOf(b));
  const Order items = compareSequences(a.items, b.items, compareItems);
  return {.less = names < 0 || items.less, .greater = names > 0 || items.greater};
}

Order compareApplications(const OrvaneApplication& a, const OrvaneApplication& b) {
  if (a.upid != b.upid) return {.less = a.upid < b.upid, .greater = b.upid < a.upid};
  return compareNamesAndItems(a, b);
}

}  // namespace orvane

bool OrvaneApplication::lexItemsLess(const OrvaneApplication& other) const {
  return orvane::compareNamesAndItems(*this, other).less;
}
