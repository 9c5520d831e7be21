#include "apps/ordering.h"

#include "apps/application_fields.h"

namespace orvane {
namespace {

// The first pair of items that can be told apart decides, each side by what it asks first.
Order compareItemLists(const OrvaneItems& a, const OrvaneItems& b) {
  const auto* x = a.begin();
  const auto* y = b.begin();
  for (; x != a.end() && y != b.end(); ++x, ++y) {
    const Order order = compareItems(*x, *y);
    if (order.less || order.greater) return order;
  }
  return {.less = y != b.end(), .greater = x != a.end()};
}

}  // namespace

Order compareNamesAndItems(const OrvaneApplication& a, const OrvaneApplication& b) {
  const int names = nameOf(a).compare(nameOf(b));
  const Order items = compareItemLists(a.items, b.items);
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
