#include "orvane/upid_tree.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <new>
#include <numeric>
#include <vector>

#include "upid/link_table.h"
#include "upid/node_buffer.h"
#include "upid/tree_report.h"

namespace {

using orvane::Nodes;
using Children = std::vector<std::reference_wrapper<const OrvaneUpidNode>>;

constexpr std::size_t kHeaderSize = sizeof OrvaneUpidTree::header;

// The chain of children; one that leads back to itself is cut at the size of the tree.
Children childrenOf(const OrvaneUpidTree& tree, unsigned int upid) {
  const OrvaneUpidNode& parent = tree[upid];
  const bool counted = parent.numOfChildren != 0;
  const std::size_t most =
      counted ? std::min<std::size_t>(parent.numOfChildren, tree.size()) : tree.size();
  Children children;
  if (counted) children.reserve(most);
  unsigned int next = parent.firstChild;
  const auto take = [&](const OrvaneUpidNode& child, unsigned int sibling) {
    next = sibling;
    if (next != 0 || counted) children.emplace_back(child);
  };
  // A chain that has led through a part of the tree, and may lead through a quarter, pays for a
  // walk over all of it: with 8,000 children or more, in any order, that saves two thirds and more
  // of a chain through the whole tree. One that ends soon after that takes up to twice as long, so
  // the part is larger where nobody says how many follow.
  const std::size_t part = 128 + tree.size() / (counted ? 16 : 6);
  const std::size_t few = most < tree.size() / 4 ? most : std::min(most, part);
  while (next != 0 && children.size() < few) {
    const auto child = tree.find(next);
    if (child == tree.end()) return children;
    take(child->second, child->second.sibling);
  }
  if (next == 0 || children.size() == most) return children;
  const orvane::LinkTable links(tree);
  while (next != 0 && children.size() < most) {
    const orvane::Link* const child = links.find(next);
    if (child == nullptr) break;
    take(*child->node, child->sibling);
  }
  return children;
}

// Sorts keys by their upper half, eleven bits at a time; equal ones keep their order. Against
// std::sort() it saves a third and more of reading a tree of 10,000 nodes or more in any order.
void sortByUpperHalf(std::vector<std::uint64_t>& keys) {
  constexpr std::size_t kDigits = 1 << 11;
  std::vector<std::uint64_t> sorted(keys.size());
  for (const int shift : {32, 43, 54}) {
    const auto digit = [=](std::uint64_t key) {
      return static_cast<std::size_t>(key >> shift) & (kDigits - 1);
    };
    std::array<std::size_t, kDigits> place = {};
    for (const std::uint64_t key : keys) ++place[digit(key)];
    std::exclusive_scan(place.begin(), place.end(), place.begin(), std::size_t{0});
    for (const std::uint64_t key : keys) sorted[place[digit(key)]++] = key;
    keys.swap(sorted);
  }
}

// Has a record brought to the cache; it reaches into a second line.
void prefetch(const char* record) {
  constexpr std::size_t kCacheLine = 64;
  __builtin_prefetch(record);
  __builtin_prefetch(record + kCacheLine);
}

std::uint32_t upidAt(const char* record) { return orvane::readWord(record); }

// Calls take(record) for each record of a node buffer in ascending order of UPIDs; those with one
// UPID stay in the order of the buffer.
template <typename Take>
void forEachSorted(std::span<const char> records, Take take) {
  std::vector<std::uint64_t> keys(records.size() / orvane::kNodeSize);  // UPID, then place
  for (std::size_t i = 0; i < keys.size(); ++i) {
    keys[i] = std::uint64_t{upidAt(records.data() + i * orvane::kNodeSize)} << 32 | i;
  }
  sortByUpperHalf(keys);
  const auto recordOf = [&](std::uint64_t key) {
    return records.data() + static_cast<std::uint32_t>(key) * orvane::kNodeSize;
  };
  // Having the records, which lie anywhere, brought to the cache in time saves two fifths of
  // reading a tree of 100,000 nodes, and two thirds at a million.
  constexpr std::size_t kAhead = 4;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (i + kAhead < keys.size()) prefetch(recordOf(keys[i + kAhead]));
    take(recordOf(keys[i]));
  }
}

struct UnwatchedTree {
  void headerCutShort(std::size_t /*size*/) {}
  void miscounted(std::size_t /*counted*/, std::size_t /*found*/) {}
  void recordCutShort() {}
  void read(const char* /*record*/, bool /*isFirst*/) {}
  void finish(const Nodes& /*held*/, std::span<const char> /*records*/) {}
};

// The nodes of a node buffer, the first of several with one UPID.
template <typename Watch>
Nodes nodesOf(std::span<const char> records, Watch& watch) {
  Nodes nodes;
  auto place = nodes.end();
  const auto add = [&](const char* record) {
    const UPID_TREE_NODE_S node = orvane::readNode(record);
    const std::size_t before = nodes.size();
    place = nodes.try_emplace(place, node.upid, &node);
    watch.read(record, nodes.size() != before);
  };
  // Mostly they come ascending: adding these as they are saves a fifth against sorting them too.
  // The rest are sorted, so that each has its place beside the last.
  const char* next = records.data();
  const char* const end = next + records.size();
  for (const char* previous = next; next != end; previous = next, next += orvane::kNodeSize) {
    if (upidAt(next) < upidAt(previous)) break;
    add(next);
  }
  if (next != end) forEachSorted({next, end}, add);
  return nodes;
}

template <typename Watch>
void mergeNodes(Nodes& held, std::span<const char> records, Watch& watch) {
  // Read aside, so that nothing has changed when memory runs out.
  Nodes nodes = nodesOf(records, watch);
  watch.finish(held, records);
  if (held.empty()) held.swap(nodes);
  for (auto place = held.end(); !nodes.empty();) {
    place = held.insert(place, nodes.extract(nodes.begin()));
  }
}

template <typename Watch>
bool readNodeBuffer(Nodes& held, std::span<const char> buffer, Watch watch) {
  if (buffer.size() % orvane::kNodeSize != 0) {
    watch.recordCutShort();
    return false;
  }
  mergeNodes(held, buffer, watch);
  return true;
}

template <typename Watch>
bool readTreeBuffer(OrvaneUpidTree& tree, std::span<const char> buffer, Watch watch) {
  if (buffer.size() < kHeaderSize) {
    watch.headerCutShort(buffer.size());
    return false;
  }
  const std::size_t count = orvane::readWord(buffer.data());
  const std::size_t found = (buffer.size() - kHeaderSize) / orvane::kNodeSize;
  if (count > found) {
    watch.miscounted(count, found);
    return false;
  }
  mergeNodes(tree, buffer.subspan(kHeaderSize, count * orvane::kNodeSize), watch);
  const char* next = buffer.data();
  for (unsigned int& word : tree.header) {
    word = orvane::readWord(next);
    next += sizeof word;
  }
  return true;
}

}  // namespace

OrvaneUpidTree::~OrvaneUpidTree() = default;

OrvaneUpidTree& OrvaneUpidTree::operator=(const OrvaneUpidTree& other) {
  if (this != &other) *this = OrvaneUpidTree(other);
  return *this;
}

void OrvaneUpidTree::add(const OrvaneUpidNode& node) { try_emplace(end(), node.upid, node); }

OrvaneUpidNode& OrvaneUpidTree::get(unsigned int upid) {
  const auto found = find(upid);
  if (found != end()) return found->second;
  placeholder = OrvaneUpidNode();
  return placeholder;
}

const OrvaneUpidNode& OrvaneUpidTree::get(unsigned int upid) const {
  const auto found = find(upid);
  if (found != end()) return found->second;
  // Never destroyed: what is destroyed after main() may still look up.
  alignas(OrvaneUpidNode) static std::byte room[sizeof(OrvaneUpidNode)];
  static const OrvaneUpidNode& cleared = *new (room) OrvaneUpidNode;
  return cleared;
}

void OrvaneUpidTree::setBuffer(const char* buffer, int /*length*/) {
  if (buffer == nullptr) return;
  const std::size_t count = orvane::readWord(buffer);
  setBufferChecked({buffer, kHeaderSize + count * orvane::kNodeSize});
}

bool OrvaneUpidTree::setBufferChecked(std::span<const char> buffer) {
  return readTreeBuffer(*this, buffer, UnwatchedTree());
}

bool OrvaneUpidTree::setBufferReported(std::span<const char> buffer, OrvaneFindings& findings) {
  return readTreeBuffer(*this, buffer, orvane::TreeReport(buffer, kHeaderSize, findings));
}

bool OrvaneUpidTree::addNodesChecked(std::span<const char> buffer) {
  return readNodeBuffer(*this, buffer, UnwatchedTree());
}

bool OrvaneUpidTree::addNodesReported(std::span<const char> buffer, OrvaneFindings& findings) {
  return readNodeBuffer(*this, buffer, orvane::TreeReport(buffer, 0, findings));
}

void OrvaneUpidTree::getBuffer(char* buffer, int& length) const {
  const std::size_t room = size() * orvane::kNodeSize;
  length = static_cast<int>(room);
  if (buffer != nullptr && room > 0) {
    getBufferChecked({buffer, room});
    rbegin()->second.get();
  }
}

std::optional<std::size_t> OrvaneUpidTree::getBufferChecked(std::span<char> buffer) const {
  return orvane::writeNodes(*this, buffer, &value_type::second);
}

void OrvaneUpidTree::getChildrenBuffer(unsigned int upid, char* buffer) const {
  if (buffer == nullptr) return;
  const Children children = childrenOf(*this, upid);
  if (children.empty()) return;
  orvane::writeNodes(children, {buffer, children.size() * orvane::kNodeSize});
  children.back().get().get();
}

std::optional<std::size_t> OrvaneUpidTree::getChildrenBufferChecked(unsigned int upid,
                                                                    std::span<char> buffer) const {
  return orvane::writeNodes(childrenOf(*this, upid), buffer);
}
