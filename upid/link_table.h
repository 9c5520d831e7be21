// The siblings of all nodes of a tree, for chains that lead through much of it.

#ifndef ORVANE_UPID_LINK_TABLE_H_
#define ORVANE_UPID_LINK_TABLE_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <vector>

#include "upid/tree_report.h"

namespace orvane {

struct Link {
  unsigned int upid;
  unsigned int sibling;
  const OrvaneUpidNode* node;
};

// What lies between the first UPID and the last is cut into about as many slots as there are nodes,
// and a look-up searches one slot only: mostly one or two links, and with UPIDs chosen to crowd one
// no more than a search of all would.
class LinkTable {
 public:
  // REQUIRES: there are nodes.
  explicit LinkTable(const Nodes& nodes) : first_(nodes.begin()->first) {
    links_.reserve(nodes.size());
    for (const auto& [upid, node] : nodes) links_.push_back({upid, node.sibling, &node});
    while ((links_.back().upid - first_) >> shift_ >= links_.size()) ++shift_;
    starts_.resize(slotOf(links_.back().upid) + 2);
    for (const Link& link : links_) ++starts_[slotOf(link.upid) + 1];
    std::partial_sum(starts_.begin(), starts_.end(), starts_.begin());
  }

  // Null when no node has that UPID.
  const Link* find(unsigned int upid) const {
    const std::size_t slot = slotOf(upid);
    if (slot + 1 >= starts_.size()) return nullptr;
    const Link* const end = links_.data() + starts_[slot + 1];
    const Link* const found =
        std::ranges::lower_bound(links_.data() + starts_[slot], end, upid, {}, &Link::upid);
    return found == end || found->upid != upid ? nullptr : found;
  }

 private:
  // For a UPID below the first it is the last one or beyond.
  std::size_t slotOf(unsigned int upid) const { return (upid - first_) >> shift_; }

  std::vector<Link> links_;            // ascending by UPID
  std::vector<std::uint32_t> starts_;  // of each slot, and the end of the last
  unsigned int first_;
  int shift_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_UPID_LINK_TABLE_H_
