// Node buffers in and out of trees and arrays, with the standard library at hand.

#include <cstring>
#include <map>
#include <memory>

#include "upid_data.h"

namespace {

using Map = std::map<unsigned int, UPID_TREE_NODE_S>;

// Filled node by node, as they come.
Map mapOf(const data::Records& nodes) {
  Map map;
  for (const UPID_TREE_NODE_S& node : nodes) map.emplace(node.upid, node);
  return map;
}

void addTreeReading(const std::string& operation, data::Records (*recordsOf)(std::int64_t)) {
  bench::add(operation, "std::map", data::kSizes,
             [=](std::int64_t size) { return [nodes = recordsOf(size)] { return mapOf(nodes); }; });
}

data::Records childrenOf(const Map& map, unsigned int upid) {
  data::Records children;
  for (auto child = map.find(map.at(upid).firstChild); child != map.end();
       child = map.find(child->second.sibling)) {
    children.push_back(child->second);
  }
  return children;
}

void addChildrenWriting() {
  bench::add(data::kChildrenWritten, "std::map", data::kSizes, [](std::int64_t size) {
    return [map = mapOf(data::ascending(size))] {
      for (unsigned int upid = 1; upid <= map.size() / 10; ++upid) {
        benchmark::DoNotOptimize(childrenOf(map, upid));
      }
      return map.size();
    };
  });
}

void addChainWriting() {
  bench::add(data::kChainWritten, "std::map", data::kChainSizes, [](std::int64_t size) {
    return [map = mapOf(data::chained(size))] { return childrenOf(map, 1); };
  });
}

// Only nodes with names of ASCII are kept.
void addArrayReading() {
  bench::add(data::kArrayRead, "copy_if", data::kSizes, [](std::int64_t size) {
    return [nodes = data::ascending(size)] {
      std::vector<OrvaneUpidNode> held;
      held.reserve(nodes.size());
      for (const UPID_TREE_NODE_S& node : nodes) {
        const auto isAscii = [](char byte) { return static_cast<signed char>(byte) >= 0; };
        if (std::all_of(node.name, node.name + std::strlen(node.name), isAscii)) {
          held.emplace_back(&node);
        }
      }
      return held;
    };
  });
}

}  // namespace

void bench::addPeers() {
  addTreeReading(data::kReadAscending, data::ascending);
  addTreeReading(data::kReadShuffled, data::shuffled);
  addChildrenWriting();
  addChainWriting();
  addArrayReading();
}
