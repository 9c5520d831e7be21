#include "apps/ordering.h"

#include <algorithm>

#include "apps/application_fields.h"

namespace orvane {
namespace {

// By UPID, name and items: a strict weak ordering, which compareApplications() is not.
bool comesBefore(const IndexedApplication& a, const IndexedApplication& b) {
  if (a.upid != b.upid) return a.upid < b.upid;
  const int names = nameOf(*a.application).compare(nameOf(*b.application));
  if (names != 0) return names < 0;
  return compareSequences(a.application->items, b.application->items, compareItemsInTurn).less;
}

}  // namespace

Order compareNamesAndItems(const OrvaneApplication& a, const OrvaneApplication& b) {
  const int names = nameOf(a).compare(nameOf(b));
  const Order items = compareSequences(a.items, b.items, compareItems);
  return {.less = names < 0 || items.less, .greater = names > 0 || items.greater};
}

Order compareApplications(const OrvaneApplication& a, const OrvaneApplication& b) {
  if (a.upid != b.upid) return {.less = a.upid < b.upid, .greater = b.upid < a.upid};
  if (equivalent(a, b)) return {.less = false, .greater = false};
  return compareNamesAndItems(a, b);
}

// Sizes of all items come before any walk, not only because they often tell: the items of an
// application are then fetched all together, which halves the time of comparing collections that
// do not fit the caches.
bool equivalent(const OrvaneApplication& a, const OrvaneApplication& b) {
  return std::ranges::equal(a.items, b.items, sameSizes) && nameOf(a) == nameOf(b) &&
         std::ranges::equal(a.items, b.items, sameElements);
}

std::vector<IndexedApplication> orderedIndex(const OrvaneAppMapping& mapping) {
  std::vector<IndexedApplication> index;
  index.reserve(mapping.size());
  for (const OrvaneApplication& application : mapping) {
    index.push_back({application.upid, &application});
  }
  if (!std::ranges::is_sorted(index, comesBefore)) std::ranges::stable_sort(index, comesBefore);
  return index;
}

}  // namespace orvane

bool OrvaneApplication::lexItemsLess(const OrvaneApplication& other) const {
  return orvane::compareNamesAndItems(*this, other).less;
}
