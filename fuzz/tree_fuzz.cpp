// Tree and node buffers: read as a standard map filled node by node is, with or without a report,
// written, and read again; their children, outlines and findings.

#include <orvane/orvane.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <span>
#include <vector>

#include "fuzz.h"
#include "tests/plain_tree.h"

namespace {

constexpr std::size_t kNode = sizeof(UPID_TREE_NODE_S);
constexpr std::size_t kHeader = 36;

template <typename Nodes>
std::string written(const Nodes& nodes) {
  const std::size_t size = nodes.size() * kNode;
  const auto room = std::make_unique<char[]>(size);
  if (size > 0) fuzz::require(!nodes.getBufferChecked({room.get(), size - 1}));
  fuzz::require(nodes.getBufferChecked({room.get(), size}) == size);
  return {room.get(), size};
}

// What the operations that trust the caller do with the same buffer.
void readTrusting(const OrvaneUpidTree& tree, std::span<const char> buffer) {
  OrvaneUpidTree trusting;
  trusting.setBuffer(buffer.data(), static_cast<int>(buffer.size()));
  const std::string nodes = written(tree);
  const auto room = std::make_unique<char[]>(nodes.size());
  int length = 0;
  trusting.getBuffer(room.get(), length);
  fuzz::require(std::string(room.get(), static_cast<std::size_t>(length)) == nodes);
  fuzz::require(std::ranges::equal(trusting.header, tree.header));
}

// The children of a node, as they are when followed step by step.
void writeChildren(const OrvaneUpidTree& tree, unsigned int upid) {
  const std::string expected = written(plain::childrenOf(tree, upid));
  const auto room = std::make_unique<char[]>(expected.size());
  const std::span<char> buffer(room.get(), expected.size());
  if (!expected.empty()) {
    fuzz::require(!tree.getChildrenBufferChecked(upid, buffer.subspan(1)));
  }
  fuzz::require(tree.getChildrenBufferChecked(upid, buffer) == expected.size());
  fuzz::require(std::string(room.get(), expected.size()) == expected);
  const auto again = std::make_unique<char[]>(expected.size());
  tree.getChildrenBuffer(upid, again.get());
  fuzz::require(std::string(again.get(), expected.size()) == expected);
}

// What a reporting operation leaves of an empty object, which is to be what the plain one left.
template <typename Nodes, typename... Arguments>
OrvaneFindings reported(const Nodes& left, bool whole, bool (Nodes::*read)(Arguments...),
                        std::span<const char> buffer) {
  Nodes nodes;
  OrvaneFindings findings;
  fuzz::require((nodes.*read)(buffer, findings) == whole && written(nodes) == written(left));
  std::size_t line = 0;
  for (const OrvaneFinding& finding : findings) {
    const std::string_view kind = finding.kind;
    fuzz::require(finding.line >= line || kind == "rest");
    line = finding.line;
    fuzz::require(whole != (kind == "cut-short"));
  }
  return findings;
}

std::size_t countOf(const OrvaneFindings& findings, std::string_view kind) {
  return static_cast<std::size_t>(std::ranges::count(findings, kind, &OrvaneFinding::kind));
}

// Every node at most once, a parent before its children; what is not drawn is found, or closes a
// chain.
void drawOutline(const OrvaneUpidTree& tree) {
  std::map<const OrvaneUpidNode*, std::size_t> depths = {{nullptr, 0}};
  for (const OrvaneUpidPlace& place : tree.outline()) {
    fuzz::require(depths.contains(place.parent));
    const std::size_t depth = place.parent == nullptr ? 0 : depths[place.parent] + 1;
    fuzz::require(place.depth == depth && depths.try_emplace(place.node, depth).second);
    fuzz::require(&tree[place.node->getUpid()] == place.node);
  }
  OrvaneFindings findings;
  tree.addFindings(findings);
  for (const OrvaneFinding& finding : findings) {
    fuzz::require(finding.line == 0 &&
                  tree.contains(static_cast<unsigned>(std::stoul(finding.key))));
  }
  fuzz::require(countOf(findings, "unreachable") <= tree.size() + 1 - depths.size());
}

void readTree(std::span<const char> buffer) {
  OrvaneUpidTree tree;
  std::uint32_t count = 0;
  if (buffer.size() >= kHeader) std::memcpy(&count, buffer.data(), sizeof count);
  const bool whole =
      buffer.size() >= kHeader && (buffer.size() - kHeader) / kNode >= std::size_t{count};
  fuzz::require(tree.setBufferChecked(buffer) == whole);
  const OrvaneFindings findings = reported(tree, whole, &OrvaneUpidTree::setBufferReported, buffer);
  if (!whole) {
    fuzz::require(tree.empty() && tree.header[1] == 0);
    return;
  }
  std::map<unsigned int, OrvaneUpidNode> plain;
  for (std::size_t i = 0; i < count; ++i) {
    const OrvaneUpidNode node(buffer.data() + kHeader + i * kNode, kNode);
    plain.try_emplace(node.getUpid(), node);
  }
  OrvaneUpidArray inOrder;
  for (const auto& [upid, node] : plain) inOrder.add(node);
  fuzz::require(written(tree) == written(inOrder));
  fuzz::require(countOf(findings, "duplicate-upid") == count - plain.size());
  readTrusting(tree, buffer);
  drawOutline(tree);
  for (const auto& [upid, node] : tree) writeChildren(tree, upid);
}

// A long chain, whose links the input moves: by pairs of words, which node, and what follows it.
void moveLinks(std::span<const char> buffer) {
  std::vector<unsigned int> words(buffer.size() / sizeof(unsigned int));
  if (words.size() < 2) return;
  std::memcpy(words.data(), buffer.data(), words.size() * sizeof words[0]);
  const unsigned int step = 1 + words[0] % 7'000'000;
  OrvaneUpidTree tree = plain::ring(step);
  tree[step].setNumOfChildren(words[1]);
  for (std::size_t i = 2; i + 1 < words.size(); i += 2) {
    tree[(1 + words[i] % 600) * step].setSibling(words[i] % 2 == 0 ? words[i + 1]
                                                                   : words[i + 1] % 601 * step);
  }
  writeChildren(tree, step);
}

void readArray(std::span<const char> buffer) {
  OrvaneUpidArray array;
  fuzz::require(array.setBufferChecked(buffer) == (buffer.size() % kNode == 0));
  OrvaneUpidArray plain;
  std::map<unsigned int, OrvaneUpidNode> byUpid;
  for (std::size_t at = 0; buffer.size() % kNode == 0 && at < buffer.size(); at += kNode) {
    const OrvaneUpidNode node(buffer.data() + at, kNode);
    OrvaneUpidNode checked;
    fuzz::require(checked.copyChecked(buffer.subspan(at)));
    const UPID_TREE_NODE_S record = checked.record();
    fuzz::require(std::memcmp(&record, node.get(), kNode) == 0);
    byUpid.try_emplace(node.getUpid(), node);
    const std::string_view field(node.getName(), sizeof node.name);
    const std::string_view name = field.substr(0, field.find('\0'));
    if (std::ranges::all_of(name, [](char c) { return c >= 0; })) plain.add(node);
  }
  fuzz::require(written(array) == written(plain));
  const bool whole = buffer.size() % kNode == 0;
  const OrvaneFindings findings =
      reported(array, whole, &OrvaneUpidArray::setBufferReported, buffer);
  OrvaneUpidTree tree;
  fuzz::require(tree.addNodesChecked(buffer) == whole);
  const OrvaneFindings ofTree = reported(tree, whole, &OrvaneUpidTree::addNodesReported, buffer);
  fuzz::require(countOf(findings, "name") == countOf(ofTree, "name"));
  OrvaneUpidArray inOrder;
  for (const auto& [upid, node] : byUpid) inOrder.add(node);
  fuzz::require(written(tree) == written(inOrder));
  OrvaneUpidArray trusting;
  trusting.setBuffer(buffer.data(), static_cast<int>(buffer.size()));
  fuzz::require(!whole || written(trusting) == written(array));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span buffer(reinterpret_cast<const char*>(data), size);
  readTree(buffer);
  readArray(buffer);
  moveLinks(buffer);
  return 0;
}
