// The children of a node, followed step by step: what the library's ways have to give as well.

#ifndef ORVANE_TESTS_PLAIN_TREE_H_
#define ORVANE_TESTS_PLAIN_TREE_H_

#include <algorithm>
#include <map>

#include "orvane/upid_array.h"
#include "orvane/upid_tree.h"

namespace plain {

inline OrvaneUpidArray childrenOf(const std::map<unsigned int, OrvaneUpidNode>& nodes,
                                  unsigned int upid) {
  OrvaneUpidArray found;
  const auto parent = nodes.find(upid);
  if (parent == nodes.end() || parent->second.getFirstChild() == 0) return found;
  const unsigned int counted = parent->second.getNumOfChildren();
  const std::size_t most = counted != 0 && counted < nodes.size() ? counted : nodes.size();
  for (auto next = nodes.find(parent->second.getFirstChild());
       next != nodes.end() && found.size() < most; next = nodes.find(next->second.getSibling())) {
    const bool last = next->second.getSibling() == 0;
    if (!last || counted != 0) found.add(next->second);
    if (last) break;
  }
  return found;
}

// The first of 600 nodes has all of them as children, in a chain that jumps about and leads back to
// the first: 7 is a primitive root of 601. The UPIDs are multiples of `step`; the last one is far.
inline OrvaneUpidTree ring(unsigned int step) {
  OrvaneUpidTree tree;
  for (unsigned int i = 1; i <= 600; ++i) {
    OrvaneUpidNode node;
    node.upid = i * step;
    node.firstChild = step;
    node.sibling = i * 7 % 601 * step;
    tree.add(node);
  }
  OrvaneUpidNode last;
  last.upid = 0xFFFFFFFF;
  tree.add(last);
  return tree;
}

}  // namespace plain

#endif  // ORVANE_TESTS_PLAIN_TREE_H_
