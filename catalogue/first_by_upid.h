// Look-ups by UPID for operations on a list of UPIDs.

#ifndef ORVANE_CATALOGUE_FIRST_BY_UPID_H_
#define ORVANE_CATALOGUE_FIRST_BY_UPID_H_

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "orvane/app_info.h"
#include "orvane/application.h"
#include "ports/first_by_key.h"

namespace orvane {

inline unsigned int upidOf(const OrvaneAppInfo& entry) { return entry.getUPID(); }
inline unsigned int upidOf(const OrvaneApplication& application) { return application.getUpid(); }

template <typename Element>
using Found = std::vector<const Element*>;

// So many UPIDs at most are looked for without a table.
inline constexpr std::size_t kFew = 8;

// Finds in one walk over the elements the first with each of a few UPIDs.
template <typename Element>
void findFew(std::span<const unsigned int> upids, std::span<const Element> elements,
             Found<Element>& found) {
  // A bit for the last six bits of each UPID that is not found yet. Most elements are passed over
  // by it alone, which takes half the time of comparing with each.
  const auto bitOf = [](unsigned int upid) { return std::uint64_t{1} << upid % 64; };
  std::uint64_t sought = 0;
  for (const unsigned int upid : upids) sought |= bitOf(upid);
  for (const Element& element : elements) {
    const unsigned int upid = upidOf(element);
    if ((sought >> upid % 64 & 1) == 0) continue;
    sought = 0;
    for (std::size_t i = 0; i < upids.size(); ++i) {
      if (found[i] != nullptr) continue;
      if (upids[i] == upid) {
        found[i] = &element;
      } else {
        sought |= bitOf(upids[i]);
      }
    }
    if (sought == 0) return;
  }
}

// Calls take(UPID's index, first element with it or null) for each UPID in one walk over both.
// False, after some calls, when the UPIDs do not ascend, or an unknown one may be further on since
// the elements do not.
template <typename Element, typename Take>
bool takeAscending(std::span<const unsigned int> upids, std::span<const Element> elements,
                   Take take) {
  const Element* element = elements.data();
  const Element* const end = element + elements.size();
  unsigned int before = 0;  // the UPID of the element before
  unsigned int last = 0;    // the UPID before
  bool isAllFound = true;
  for (std::size_t i = 0; i < upids.size(); ++i) {
    const unsigned int upid = upids[i];
    if (upid < last) return false;
    last = upid;
    for (; element != end && upidOf(*element) < upid; ++element) {
      if (upidOf(*element) < before) return false;
      before = upidOf(*element);
    }
    const bool isFound = element != end && upidOf(*element) == upid;
    isAllFound = isAllFound && isFound;
    take(i, isFound ? element : nullptr);
  }
  const auto key = [](const Element& next) { return upidOf(next); };
  return isAllFound || std::ranges::is_sorted(element, end, {}, key);
}

// Finds them with a table of the UPIDs. Most elements with others are passed over by the last bits
// of their UPIDs alone, which takes a third to a half of the time of looking them up.
template <typename Element>
void findByTable(std::span<const unsigned int> upids, std::span<const Element> elements,
                 Found<Element>& found) {
  FirstByKey<const Element*> first;
  first.reserve(upids.size());
  constexpr std::size_t kBitsPerUpid = 16;
  std::vector<bool> isSought(std::bit_ceil(kBitsPerUpid * upids.size()));
  const std::size_t mask = isSought.size() - 1;
  for (const unsigned int upid : upids) {
    first.tryEmplace(upid, nullptr);
    isSought[upid & mask] = true;
  }
  for (const Element& element : elements) {
    const unsigned int upid = upidOf(element);
    if (!isSought[upid & mask]) continue;
    const Element** const sought = first.find(upid);
    if (sought != nullptr && *sought == nullptr) *sought = &element;
  }
  std::ranges::transform(upids, found.begin(),
                         [&](unsigned int upid) { return *first.find(upid); });
}

// The first element with each of the given UPIDs, or null, in the order of the UPIDs.
template <typename Element>
Found<Element> firstByUpid(std::span<const unsigned int> upids, std::span<const Element> elements) {
  Found<Element> found(upids.size());
  if (upids.size() <= kFew) {
    if (!upids.empty()) findFew(upids, elements, found);
    return found;
  }
  const auto take = [&](std::size_t i, const Element* element) { found[i] = element; };
  if (!takeAscending(upids, elements, take)) findByTable(upids, elements, found);
  return found;
}

}  // namespace orvane

#endif  // ORVANE_CATALOGUE_FIRST_BY_UPID_H_
