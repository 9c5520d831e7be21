// Look-ups by UPID for operations on a list of UPIDs.

#ifndef ORVANE_CATALOGUE_FIRST_BY_UPID_H_
#define ORVANE_CATALOGUE_FIRST_BY_UPID_H_

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

#include "orvane/app_info.h"
#include "orvane/application.h"
#include "ports/first_by_key.h"

namespace orvane {

inline unsigned int upidOf(const OrvaneAppInfo& entry) { return entry.getUPID(); }
inline unsigned int upidOf(const OrvaneApplication& application) { return application.getUpid(); }

// Finds in one walk over both, for UPIDs that ascend, the first element with each of them. False
// when the elements do not ascend.
template <typename Element>
bool findAscending(std::span<const unsigned int> upids, std::span<const Element> elements,
                   std::vector<const Element*>& found) {
  std::size_t next = 0;
  unsigned int last = 0;
  for (const Element& element : elements) {
    const unsigned int upid = upidOf(element);
    if (upid < last) return false;
    last = upid;
    while (next < upids.size() && upids[next] < upid) ++next;
    for (; next < upids.size() && upids[next] == upid; ++next) found[next] = &element;
  }
  return true;
}

// The first element with each of the given UPIDs, or null, in the order of the UPIDs.
template <typename Element>
std::vector<const Element*> firstByUpid(std::span<const unsigned int> upids,
                                        std::span<const Element> elements) {
  std::vector<const Element*> found(upids.size());
  if (std::ranges::is_sorted(upids) && findAscending(upids, elements, found)) return found;

  FirstByKey<const Element*> first;
  first.reserve(upids.size());
  for (const unsigned int upid : upids) first.tryEmplace(upid, nullptr);
  for (const Element& element : elements) {
    const Element** const sought = first.find(upidOf(element));
    if (sought != nullptr && *sought == nullptr) *sought = &element;
  }
  std::ranges::transform(upids, found.begin(),
                         [&](unsigned int upid) { return *first.find(upid); });
  return found;
}

}  // namespace orvane

#endif  // ORVANE_CATALOGUE_FIRST_BY_UPID_H_
