// Node buffers in and out of trees and arrays, per node.

#include <cstring>
#include <map>
#include <memory>
#include <utility>

#include "upid_data.h"

namespace {

std::shared_ptr<const OrvaneUpidTree> tree(const data::Records& records) {
  const auto nodes = std::make_shared<OrvaneUpidTree>();
  nodes->setBufferChecked(data::treeBuffer(records));
  return nodes;
}

// At the floor the order of the records is known.
void addTreeReading(const std::string& operation, data::Records (*recordsOf)(std::int64_t)) {
  bench::add(operation, bench::kLibrary, data::kSizes, [=](std::int64_t size) {
    return [buffer = data::treeBuffer(recordsOf(size))] {
      auto held = std::make_unique<OrvaneUpidTree>();
      held->setBufferChecked(buffer);
      return held;
    };
  });
  bench::add(operation, bench::kFloor, data::kSizes, [=](std::int64_t size) {
    const auto nodes = std::make_shared<const data::Records>(recordsOf(size));
    std::vector<const UPID_TREE_NODE_S*> inOrder;
    for (const UPID_TREE_NODE_S& node : *nodes) inOrder.push_back(&node);
    std::ranges::sort(inOrder, {}, &UPID_TREE_NODE_S::upid);
    return [nodes, inOrder] {
      std::map<unsigned int, OrvaneUpidNode> held;
      for (const UPID_TREE_NODE_S* node : inOrder) held.emplace_hint(held.end(), node->upid, node);
      return held;
    };
  });
}

char* copyNode(const UPID_TREE_NODE_S& node, char* to) {
  std::memcpy(to, &node, data::kNodeSize);
  return to + data::kNodeSize;
}

// A way that gets the tree and room for as many nodes as `size`.
template <typename Write>
void addWriting(const std::string& operation, const std::string& way, const bench::Sizes& sizes,
                data::Records (*recordsOf)(std::int64_t), Write write) {
  bench::add(operation, way, sizes, [=](std::int64_t size) {
    return [=, held = tree(recordsOf(size)),
            buffer = std::string(static_cast<std::size_t>(size) * data::kNodeSize,
                                 '\0')]() mutable { return write(*held, buffer); };
  });
}

void addTreeWriting() {
  const auto add = [](const std::string& way, auto write) {
    addWriting(data::kTreeWritten, way, data::kSizes, data::ascending, write);
  };
  add(bench::kLibrary, [](const OrvaneUpidTree& held, std::string& buffer) {
    return held.getBufferChecked(buffer);
  });
  add(bench::kFloor, [](const OrvaneUpidTree& held, std::string& buffer) {
    char* next = buffer.data();
    for (const auto& [upid, node] : held) next = copyNode(node, next);
    return next;
  });
}

// The children of every node that has some: each node of the tree once.
void addChildrenWriting() {
  const auto add = [](const std::string& way, auto write) {
    bench::add(data::kChildrenWritten, way, data::kSizes, [=](std::int64_t size) {
      return [=, held = tree(data::ascending(size))] {
        for (unsigned int upid = 1; upid <= held->size() / 10; ++upid) {
          char buffer[10 * data::kNodeSize];
          write(*held, upid, buffer);
          benchmark::DoNotOptimize(buffer);
        }
        return held->size();
      };
    });
  };
  add(bench::kLibrary, [](const OrvaneUpidTree& held, unsigned int upid, std::span<char> buffer) {
    benchmark::DoNotOptimize(held.getChildrenBufferChecked(upid, buffer));
  });
  add(bench::kFloor, [](const OrvaneUpidTree& held, unsigned int upid, std::span<char> buffer) {
    char* next = buffer.data();
    for (auto child = held.find(held[upid].firstChild); child != held.end();
         child = held.find(child->second.sibling)) {
      next = copyNode(child->second, next);
    }
  });
}

// All children of one node. At the floor every node is found in a flat table of all of them, which
// is made anew.
void addChainWriting() {
  const auto add = [](const std::string& way, auto write) {
    addWriting(data::kChainWritten, way, data::kChainSizes, data::chained, write);
  };
  add(bench::kLibrary, [](const OrvaneUpidTree& held, std::string& buffer) {
    return held.getChildrenBufferChecked(1, buffer);
  });
  add(bench::kFloor, [](const OrvaneUpidTree& held, std::string& buffer) {
    using Place = std::pair<unsigned int, const OrvaneUpidNode*>;
    std::vector<Place> places;
    places.reserve(held.size());
    for (const auto& [upid, node] : held) places.emplace_back(upid, &node);
    char* next = buffer.data();
    for (unsigned int upid = held[1].firstChild; upid != 0;) {
      const auto place = std::ranges::lower_bound(places, upid, {}, &Place::first);
      if (place == places.end() || place->first != upid) break;
      next = copyNode(*place->second, next);
      upid = place->second->sibling;
    }
    return next;
  });
}

void addArrayReading() {
  bench::add(data::kArrayRead, bench::kLibrary, data::kSizes, [](std::int64_t size) {
    return [buffer = data::nodeBuffer(data::ascending(size))] {
      OrvaneUpidArray held;
      held.setBufferChecked(buffer);
      return held;
    };
  });
  bench::add(data::kArrayRead, bench::kFloor, data::kSizes, [](std::int64_t size) {
    return [nodes = data::ascending(size)] {
      std::vector<OrvaneUpidNode> held;
      held.reserve(nodes.size());
      for (const UPID_TREE_NODE_S& node : nodes) held.emplace_back(&node);
      return held;
    };
  });
}

void addArrayWriting() {
  const auto add = [](const std::string& way, auto write) {
    bench::add(data::kArrayWritten, way, data::kSizes, [=](std::int64_t size) {
      OrvaneUpidArray held;
      held.setBufferChecked(data::nodeBuffer(data::ascending(size)));
      return [=, buffer = std::string(held.size() * data::kNodeSize, '\0')]() mutable {
        return write(held, buffer);
      };
    });
  };
  add(bench::kLibrary, [](const OrvaneUpidArray& held, std::string& buffer) {
    return held.getBufferChecked(buffer);
  });
  add(bench::kFloor, [](const OrvaneUpidArray& held, std::string& buffer) {
    char* next = buffer.data();
    for (const OrvaneUpidNode& node : held) next = copyNode(node, next);
    return next;
  });
}

}  // namespace

void bench::addAll() {
  addTreeReading(data::kReadAscending, data::ascending);
  addTreeReading(data::kReadShuffled, data::shuffled);
  addTreeWriting();
  addChildrenWriting();
  addChainWriting();
  addArrayReading();
  addArrayWriting();
}
