// Look-ups by UPID for operations on a list of UPIDs.

#ifndef ORVANE_CATALOGUE_FIRST_BY_UPID_H_
#define ORVANE_CATALOGUE_FIRST_BY_UPID_H_

#include <memory_resource>
#include <span>
#include <unordered_map>

#include "orvane/app_info.h"
#include "orvane/application.h"

namespace orvane {

inline unsigned int upidOf(const OrvaneAppInfo& entry) { return entry.getUPID(); }
inline unsigned int upidOf(const OrvaneApplication& application) { return application.getUpid(); }

// The first element with each of the given UPIDs, found in one walk over the elements, which must
// not change meanwhile.
template <typename Element>
class FirstByUpid {
 public:
  FirstByUpid(std::span<const unsigned int> upids, std::span<const Element> elements) {
    first_.reserve(upids.size());
    for (const unsigned int upid : upids) first_.try_emplace(upid, nullptr);
    for (const Element& element : elements) {
      const auto sought = first_.find(upidOf(element));
      if (sought != first_.end() && sought->second == nullptr) sought->second = &element;
    }
  }

  // Null when there is none.
  // REQUIRES: `upid` is one of those given.
  const Element* operator[](unsigned int upid) const { return first_.find(upid)->second; }

 private:
  std::pmr::monotonic_buffer_resource memory_;  // keeps the nodes together
  std::pmr::unordered_map<unsigned int, const Element*> first_{&memory_};
};

}  // namespace orvane

#endif  // ORVANE_CATALOGUE_FIRST_BY_UPID_H_
