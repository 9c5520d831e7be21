#include <climits>
#include <functional>
#include <iterator>
#include <map>
#include <numeric>
#include <random>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "plain_tree.h"
#include "upid_sample.h"

namespace {

using Siblings = std::vector<std::pair<unsigned int, unsigned int>>;

std::string written(const OrvaneUpidNode& node) {
  OrvaneUpidArray array;
  array.add(node);
  array.front().reserved = 1;  // never written
  return written(array);
}

// A copy in memory of its own, so that reading beyond it is caught.
std::vector<char> prefix(const std::string& bytes, std::size_t length) {
  return {bytes.data(), bytes.data() + length};
}

TEST(UpidNode, HasEachFieldAtItsOffset) {
  std::string bytes(kSize + 1, '\0');
  std::iota(bytes.begin(), bytes.end(), '\xFF');  // 0, 1, 2 ... from an odd address on
  const OrvaneUpidNode read(bytes.data() + 1, 0);
  bytes.replace(1 + 28, 4, 4, '\0');  // the reserved word is not carried
  EXPECT_EQ(written(read), bytes.substr(1));
  EXPECT_EQ(
      words({read.getUpid(), read.getParentUpid(), read.getFirstChild(), read.getNumOfChildren(),
             read.getSibling(), read.getPI(), read.getSPI(), read.reserved, read.getFlags()}) +
          std::string(read.getName(), 32) + words({read.getCurrentChildIdx()}),
      bytes.substr(1));
  OrvaneUpidNode set;
  EXPECT_EQ(written(set), std::string(kSize, '\0'));
  set.setUpid(read.getUpid());
  set.setParentUpid(read.getParentUpid());
  set.setFirstChild(read.getFirstChild());
  set.setNumOfChildren(read.getNumOfChildren());
  set.setSibling(read.getSibling());
  set.setPI(read.getPI());
  set.setSPI(read.getSPI());
  set.setFlags(read.getFlags());
  set.setCurrentChildIdx(read.getCurrentChildIdx());
  set.setName(read.getName());
  set.reserved = 1;
  EXPECT_EQ(written(set), bytes.substr(1));
  set.copy(&read);
  EXPECT_EQ(set.reserved, 1);
}

TEST(UpidNode, GivesItsRecord) {
  OrvaneUpidNode held = node(record(1, std::string(32, 'n')));
  held.reserved = 1;
  const UPID_TREE_NODE_S own = held.record();
  EXPECT_EQ(own.reserved, 0);
  const UPID_TREE_NODE_S* const shown = node(record(2)).get();
  EXPECT_EQ(held.record().upid, 1);
  EXPECT_EQ(shown->upid, 2);  // which record() leaves alone
  EXPECT_EQ(held.get(), shown);
  EXPECT_EQ(shown->reserved, 0);
  EXPECT_EQ(written(OrvaneUpidNode(&own)), written(OrvaneUpidNode(shown)));
}

// One record for all nodes, of which the checked twins know nothing.
TEST(UpidNode, ShowsTheLastNodeThatATrustingOperationWrote) {
  OrvaneUpidTree nodes;
  nodes.setBuffer(tree(3, 6, record(1, "", 2, 2) + record(2, "", 0, 0, 3) + record(3)).data(), 0);
  OrvaneUpidArray array;
  array.add(nodes[1]);
  array.add(nodes[2]);
  std::string room(3 * kSize, '\0');
  int length = 0;
  const struct {
    std::function<void()> write;
    unsigned int shown;
  } cases[] = {
      {[&] { nodes.getBuffer(room.data(), length); }, 3},
      {[&] { nodes.getChildrenBuffer(1, room.data()); }, 3},
      {[&] { array.getBuffer(room.data()); }, 2},
      {[&] { nodes.getBufferChecked(room); }, 99},
      {[&] { nodes.getChildrenBufferChecked(1, room); }, 99},
      {[&] { array.getBufferChecked(room); }, 99},
      {[&] { nodes.getBuffer(nullptr, length); }, 99},  // nothing is written
      {[&] { nodes.getChildrenBuffer(9, room.data()); }, 99},
      {[&] { array.getBuffer(nullptr); }, 99},
      {[&] { OrvaneUpidTree().getBuffer(room.data(), length); }, 99},
      {[&] { OrvaneUpidArray().getBuffer(room.data()); }, 99},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    SCOPED_TRACE(i);
    const UPID_TREE_NODE_S* const shown = node(record(99)).get();
    cases[i].write();
    EXPECT_EQ(shown->upid, cases[i].shown);
  }
}

TEST(UpidNode, KeepsFlagsAndValidityTogether) {
  const struct {
    unsigned int flags;
    int valid;
    unsigned int changed;
  } cases[] = {{0, 1, 1}, {4, 6, 5}, {5, 0, 4}, {0xFFFFFFFF, -2, 0xFFFFFFFF}};
  for (const auto& c : cases) {
    OrvaneUpidNode node;
    node.setFlags(c.flags);
    node = OrvaneUpidNode(node);
    EXPECT_EQ(node.valid, static_cast<int>(c.flags & 1));
    node.setValid(c.valid);
    node.copy(&node);
    EXPECT_EQ(node.valid, c.valid);
    EXPECT_EQ(node.getFlags(), c.changed);
    EXPECT_EQ(node.getValid(), c.valid != 0 ? 1 : 0);
  }
}

TEST(UpidNode, IgnoresShortAndMissingData) {
  const std::string whole = record(1, std::string(32, 'n'));
  OrvaneUpidNode held = node(whole);
  for (std::size_t length = 0; length < kSize; ++length) {
    EXPECT_FALSE(held.copyChecked(prefix(record(9), length)));
    EXPECT_EQ(OrvaneUpidNode(held).setNameChecked(prefix(whole, length)), length >= 32);
  }
  held.copy(nullptr);
  held.copy(&held);
  held.setName(nullptr);
  EXPECT_EQ(written(held), whole);
  EXPECT_TRUE(held.copyChecked(prefix(record(9), kSize)));
  EXPECT_EQ(written(held), record(9));
  EXPECT_EQ(written(OrvaneUpidNode(nullptr, 72)), std::string(kSize, '\0'));
}

TEST(UpidTree, KeepsTheFirstNodeOfAUpid) {
  OrvaneUpidTree held;
  const std::string buffer = tree(4, 6, record(7, "a") + record(3) + record(7, "b") + record(5));
  held.setBuffer(("?" + buffer).data() + 1, -1);
  held.add(node(record(3, "c")));
  const std::string second = tree(2, 66, record(5, "d") + record(4));
  for (std::size_t length = 0; length < second.size(); ++length) {
    EXPECT_FALSE(held.setBufferChecked(prefix(second, length)));
  }
  EXPECT_FALSE(held.setBufferChecked(tree(0x1C71C71D, 66, record(9))));  // of 40 bytes, modulo 2^32
  EXPECT_TRUE(OrvaneUpidTree().setBufferChecked(tree(0, 66, "")));
  held.setBuffer(nullptr, 0);
  EXPECT_EQ(held.getTCPUpid(), 6);
  EXPECT_EQ(written(held), record(3) + record(5) + record(7, "a"));
  EXPECT_TRUE(held.setBufferChecked(second + "rest"));
  const OrvaneUpidTree copy = held;
  EXPECT_EQ(copy.getTCPUpid(), 66);
  EXPECT_EQ(copy.getUDPUpid(), 17);
  EXPECT_EQ(written(copy), record(3) + record(4) + record(5) + record(7, "a"));
  int length = 0;
  copy.getBuffer(nullptr, length);
  EXPECT_EQ(length, 288);
  std::string nodes(288, '?');
  copy.getBuffer(nodes.data(), length);
  EXPECT_EQ(nodes, written(copy));
  OrvaneUpidArray array;
  array.setBuffer(nodes.data(), length);
  std::string again(288, '?');
  EXPECT_EQ(array.getBuffer(again.data()), 288);
  EXPECT_EQ(again, nodes);
}

TEST(UpidTree, ReadsNodesInAnyOrder) {
  std::mt19937 random(5);
  std::map<unsigned int, std::string> first;
  std::string records;
  for (unsigned int i = 0; i < 3000; ++i) {
    const auto upid = static_cast<unsigned int>(i < 50 ? i : random() >> random() % 32);
    const std::string added = record(upid, std::to_string(i));
    first.try_emplace(upid, added);
    records += added;
  }
  std::string inOrder;
  for (const auto& [upid, added] : first) inOrder += added;
  for (const std::size_t piece : {1U, 60U, 3000U}) {
    SCOPED_TRACE(piece);
    OrvaneUpidTree held;
    for (std::size_t i = 0; i < 3000; i += piece) {
      held.setBufferChecked(tree(piece, 6, records.substr(i * kSize, piece * kSize)));
    }
    EXPECT_EQ(written(held), inOrder);
  }
}

// References hold while nodes are added, and when a tree or array is assigned to itself.
TEST(UpidTree, KeepsNodesWhereTheyAre) {
  OrvaneUpidTree nodes;
  nodes.setBuffer(tree(2, 6, record(2) + record(4)).data(), 0);
  OrvaneUpidArray array;
  array.setBuffer(record(2).data(), 72);
  const OrvaneUpidNode* const inTree = &nodes[2];
  const OrvaneUpidNode* const inArray = array.data();
  const auto& same = nodes;
  nodes = same;
  nodes.setBuffer(tree(3, 6, record(1) + record(2) + record(3)).data(), 0);
  const auto& sameArray = array;
  array = sameArray;
  EXPECT_EQ(&nodes[2], inTree);
  EXPECT_EQ(array.data(), inArray);
  OrvaneUpidTree copy;
  copy.add(node(record(9)));
  copy = nodes;
  EXPECT_EQ(copy.getTCPUpid(), 6);
  EXPECT_EQ(written(copy), record(1) + record(2) + record(3) + record(4));
  OrvaneUpidArray copies;
  copies.add(node(record(9)));
  copies = array;
  EXPECT_EQ(written(copies), record(2));
}

TEST(UpidTree, NeverInsertsWhenLookingUp) {
  OrvaneUpidTree held;
  held.add(node(record(1)));
  for (const unsigned int upid : {1U, 2U}) held[upid].setPI(99);
  EXPECT_EQ(std::as_const(held)[1].getPI(), 99);
  EXPECT_EQ(std::as_const(held)[2].getPI(), 0);
  EXPECT_EQ(held.get(2).getPI(), 0);
  EXPECT_EQ(held.size(), 1);
}

TEST(UpidTree, WritesTheChildrenOfANode) {
  const struct {
    unsigned int firstChild, numOfChildren;
    Siblings siblings;
    std::vector<unsigned int> children;
  } cases[] = {
      {0, 2, {{0, 2}, {2, 0}}, {}},                  // none
      {9, 2, {{2, 0}}, {}},                          // one that the tree lacks
      {3, 0, {{2, 4}, {3, 2}, {4, 0}}, {3, 2}},      // not counted: up to the closing node
      {2, 0, {{2, 0}}, {}},                          // the closing node alone
      {2, 2, {{2, 3}, {3, 0}}, {2, 3}},              // counted: with the last one
      {2, 2, {{2, 3}, {3, 4}, {4, 0}}, {2, 3}},      // and a closing node
      {2, 1, {{2, 3}, {3, 0}}, {2}},                 // more than counted
      {2, 0xFFFFFFFF, {{2, 3}, {3, 0}}, {2, 3}},     // fewer than counted
      {2, 0, {{2, 3}, {3, 9}}, {2, 3}},              // broken off
      {2, 0, {{2, 3}, {3, 2}}, {2, 3, 2}},           // a ring, cut at the size of the tree
      {2, 0xFFFFFFFF, {{2, 3}, {3, 2}}, {2, 3, 2}},  // and counted
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.siblings));
    std::string records = record(1, "", c.firstChild, c.numOfChildren);
    for (const auto& [upid, sibling] : c.siblings) records += record(upid, "", 0, 0, sibling);
    OrvaneUpidTree held;
    held.setBuffer(tree(1 + c.siblings.size(), 6, records).data(), 0);
    std::string children;
    for (const unsigned int upid : c.children) children += written(held[upid]);
    std::vector<char> room(children.size());
    held.getChildrenBuffer(1, room.data());
    EXPECT_EQ(std::string(room.begin(), room.end()), children);
    const auto write = [&](std::span<char> to) { return held.getChildrenBufferChecked(1, to); };
    EXPECT_EQ(writtenBy(c.children.size(), write), children);
    EXPECT_EQ(held.getChildrenBufferChecked(8, room), 0);
  }
}

TEST(UpidTree, WritesLongChainsStepByStep) {
  for (const unsigned int step : {1U, 2U, 7'000'000U}) {
    for (const unsigned int from :
         {7U, 600U, 86U}) {  // the second of the chain, its middle, its end
      for (const unsigned int to : {0U, 1U, step, 601 * step, 0xFFFFFFFF}) {
        for (const unsigned int count : {0U, 1U, 300U, 301U, 600U, 0xFFFFFFFF}) {
          OrvaneUpidTree held = plain::ring(step);
          held[step].setNumOfChildren(count);
          held[from * step].setSibling(to);
          const OrvaneUpidArray children = plain::childrenOf(held, step);
          const auto write = [&](std::span<char> room) {
            return held.getChildrenBufferChecked(step, room);
          };
          EXPECT_EQ(writtenBy(children.size(), write), written(children))
              << step << " " << from << " " << to << " " << count;
        }
      }
    }
  }
}

// More nodes than 16 bits count, from the last to the first, each but the last with the next one as
// sibling.
TEST(UpidTree, HoldsLargeTrees) {
  constexpr unsigned int kMany = 70'000;
  std::string records;
  for (unsigned int upid = kMany; upid > 0; --upid) {
    records += record(upid, "", 2, 0, upid < kMany ? upid + 1 : 0);
  }
  OrvaneUpidTree held;
  EXPECT_TRUE(held.setBufferChecked(tree(kMany, 6, records)));
  EXPECT_EQ(held.size(), kMany);
  std::string room(records.size(), '\0');
  const std::size_t length = (kMany - 2) * kSize;  // all but the first and the last
  EXPECT_EQ(held.getChildrenBufferChecked(1, room), length);
  EXPECT_TRUE(written(held).compare(kSize, length, room, 0, length) == 0);  // too long to show
}

TEST(UpidArray, ReadsTheRecordsThatALengthHolds) {
  const std::string buffer = record(2) + record(1);
  for (const int length : {INT_MIN, -72, 0, 71, 72, 143, 144}) {
    SCOPED_TRACE(length);
    const std::size_t bytes = length < 0 ? 0 : static_cast<std::size_t>(length);
    const std::string expected = buffer.substr(0, bytes / kSize * kSize);
    OrvaneUpidArray array;
    array.setBuffer(("?" + buffer).data() + 1, length);
    array.setBuffer(nullptr, length);
    EXPECT_EQ(written(array), expected);
    EXPECT_EQ(array.getBuffer(nullptr), expected.size());
    EXPECT_EQ(array.getBufferLength(), expected.size());
    const bool whole = bytes % kSize == 0;
    EXPECT_EQ(array.setBufferChecked(prefix(buffer, bytes)), whole);
    EXPECT_EQ(written(array), whole ? expected + expected : expected);
  }
}

TEST(UpidArray, DropsNamesThatAreNoPlainText) {
  const std::string taken[] = {"", "dns", std::string(32, '\x7F'), std::string("ftp\0\xE9", 5)};
  const std::string dropped[] = {"\x80", "caf\xE9", std::string(31, 'a') + "\xFF"};
  std::string all;
  std::string plain;
  for (const std::string& name : taken) plain += record(0xE9E9E9E9, name);
  for (const std::string& name : dropped) all += record(1, name);
  all += plain;
  for (std::size_t end = kSize; end <= plain.size(); end += kSize) plain[end - 4] = '\xE9';
  OrvaneUpidArray array;
  EXPECT_TRUE(array.setBufferChecked(all + plain));
  EXPECT_EQ(written(array), all.substr(3 * kSize) + plain);
}

}  // namespace
