#include "orvane/upid_tree.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "upid/node_buffer.h"

namespace {

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
  while (next != 0 && children.size() < most) {
    const auto child = tree.find(next);
    if (child == tree.end()) break;
    next = child->second.sibling;
    if (next != 0 || counted) children.emplace_back(child->second);
  }
  return children;
}

}  // namespace

OrvaneUpidTree::~OrvaneUpidTree() = default;

void OrvaneUpidTree::add(const OrvaneUpidNode& node) { try_emplace(end(), node.upid, node); }

OrvaneUpidNode& OrvaneUpidTree::get(unsigned int upid) {
  const auto found = find(upid);
  if (found != end()) return found->second;
  placeholder = OrvaneUpidNode();
  return placeholder;
}

const OrvaneUpidNode& OrvaneUpidTree::get(unsigned int upid) const {
  static const OrvaneUpidNode cleared;
  const auto found = find(upid);
  return found == end() ? cleared : found->second;
}

void OrvaneUpidTree::setBuffer(const char* buffer, int /*length*/) {
  if (buffer == nullptr) return;
  const std::size_t count = orvane::readWord(buffer);
  setBufferChecked({buffer, kHeaderSize + count * orvane::kNodeSize});
}

bool OrvaneUpidTree::setBufferChecked(std::span<const char> buffer) {
  if (buffer.size() < kHeaderSize) return false;
  const std::size_t count = orvane::readWord(buffer.data());
  if (count > (buffer.size() - kHeaderSize) / orvane::kNodeSize) return false;

  const char* next = buffer.data();
  for (unsigned int& word : header) {
    word = orvane::readWord(next);
    next += sizeof word;
  }
  for (const char* const last = next + count * orvane::kNodeSize; next != last;
       next += orvane::kNodeSize) {
    const UPID_TREE_NODE_S record = orvane::readNode(next);
    try_emplace(end(), record.upid, &record);  // mostly they come ascending
  }
  return true;
}

void OrvaneUpidTree::getBuffer(char* buffer, int& length) const {
  const std::size_t room = size() * orvane::kNodeSize;
  length = static_cast<int>(room);
  if (buffer != nullptr) getBufferChecked({buffer, room});
}

std::optional<std::size_t> OrvaneUpidTree::getBufferChecked(std::span<char> buffer) const {
  return orvane::writeNodes(*this, buffer, &value_type::second);
}

void OrvaneUpidTree::getChildrenBuffer(unsigned int upid, char* buffer) const {
  if (buffer == nullptr) return;
  const Children children = childrenOf(*this, upid);
  orvane::writeNodes(children, {buffer, children.size() * orvane::kNodeSize});
}

std::optional<std::size_t> OrvaneUpidTree::getChildrenBufferChecked(unsigned int upid,
                                                                    std::span<char> buffer) const {
  return orvane::writeNodes(childrenOf(*this, upid), buffer);
}
