// Node buffers.

#ifndef ORVANE_BENCH_UPID_DATA_H_
#define ORVANE_BENCH_UPID_DATA_H_

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <string>
#include <vector>

#include "compare.h"
#include "workload.h"

namespace data {

inline const std::string kReadAscending = "tree read, ascending";
inline const std::string kReadShuffled = "tree read, shuffled";
inline const std::string kTreeWritten = "tree written";
inline const std::string kChildrenWritten = "children written";
inline const std::string kChainWritten = "children written, one long chain";
inline const std::string kArrayRead = "array read";
inline const std::string kArrayWritten = "array written";

inline const bench::Sizes kSizes = {1000, 10000, 100000, 1000000};
inline const bench::Sizes kChainSizes = {2000, 8000, 32000, 65000};

inline constexpr std::size_t kNodeSize = sizeof(UPID_TREE_NODE_S);

using Records = std::vector<UPID_TREE_NODE_S>;

// Nodes 1 to `size`; each of the first tenth has ten children, a chain of every (size / 10)th.
inline Records ascending(std::int64_t size) {
  const auto count = static_cast<unsigned int>(size);
  Records nodes(count);
  for (unsigned int upid = 1; upid <= count; ++upid) {
    UPID_TREE_NODE_S& node = nodes[upid - 1];
    node.upid = upid;
    node.firstChild = upid <= count / 10 ? upid : 0;
    node.numOfChildren = upid <= count / 10 ? 10 : 0;
    node.sibling = upid + count / 10 <= count ? upid + count / 10 : 0;
    std::snprintf(node.name, sizeof node.name, "protocol %u", upid);
  }
  return nodes;
}

inline Records shuffled(std::int64_t size) {
  Records nodes = ascending(size);
  std::shuffle(nodes.begin(), nodes.end(), workload::Random(1));
  return nodes;
}

// Node 1 and its children, `size` of them, whose chain leads through them in random order.
inline Records chained(std::int64_t size) {
  Records nodes(static_cast<std::size_t>(size) + 1);
  std::vector<unsigned int> chain(nodes.size());
  std::iota(chain.begin(), chain.end(), 1U);
  std::shuffle(chain.begin() + 1, chain.end(), workload::Random(1));
  nodes[0].firstChild = chain[1];
  nodes[0].numOfChildren = static_cast<unsigned int>(size);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    UPID_TREE_NODE_S& node = nodes[chain[i] - 1];
    node.upid = chain[i];
    if (i > 0 && i + 1 < nodes.size()) node.sibling = chain[i + 1];
  }
  return nodes;
}

inline std::string nodeBuffer(const Records& nodes) {
  return {reinterpret_cast<const char*>(nodes.data()), nodes.size() * kNodeSize};
}

inline std::string treeBuffer(const Records& nodes) {
  const unsigned int header[9] = {static_cast<unsigned int>(nodes.size()), 6, 17};
  return std::string(reinterpret_cast<const char*>(header), sizeof header) + nodeBuffer(nodes);
}

}  // namespace data

#endif  // ORVANE_BENCH_UPID_DATA_H_
