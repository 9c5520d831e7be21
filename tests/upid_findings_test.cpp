// What the readers of node and tree buffers report, and what is wrong with the links of a tree.

#include <gtest/gtest.h>
#include <orvane/upid_array.h>
#include <orvane/upid_tree.h>

#include <span>
#include <string>
#include <utility>
#include <vector>

namespace upid_findings {
namespace {

constexpr std::size_t kSize = 72;
constexpr std::size_t kHeaderSize = 36;

struct Links {
  unsigned int upid, parent = 0, firstChild = 0, children = 0, sibling = 0;
};

OrvaneUpidNode nodeOf(const Links& links, const std::string& name = "") {
  OrvaneUpidNode node;
  node.setUpid(links.upid);
  node.setParentUpid(links.parent);
  node.setFirstChild(links.firstChild);
  node.setNumOfChildren(links.children);
  node.setSibling(links.sibling);
  std::string field = name;
  field.resize(32);
  node.setName(field.data());
  return node;
}

using Named = std::vector<std::pair<unsigned int, std::string>>;

std::string records(const Named& nodes) {
  OrvaneUpidArray array;
  for (const auto& [upid, name] : nodes) array.add(nodeOf({upid}, name));
  std::string buffer(array.size() * kSize, '\0');
  array.getBufferChecked(buffer);
  return buffer;
}

std::string withHeader(std::size_t count, const std::string& buffer) {
  std::string header(kHeaderSize, '\1');
  header.replace(0, 4, {static_cast<char>(count), 0, 0, 0});
  return header + buffer;
}

template <typename Nodes>
std::string written(const Nodes& nodes) {
  std::string buffer(nodes.size() * kSize, '\0');
  nodes.getBufferChecked(buffer);
  return buffer;
}

std::string show(const OrvaneFindings& findings) {
  std::string text;
  for (const OrvaneFinding& finding : findings) {
    text += std::to_string(finding.line) +
            (finding.severity == kOrvaneFindingNote ? " note " : " ") + finding.kind + " '" +
            finding.key + "' " + finding.message + "\n";
  }
  return text;
}

const std::string kHigh = "caf\xE9";
const Named kOdd = {{5, ""}, {2, kHigh}, {5, kHigh}, {9, ""}, {2, ""}, {5, ""}};

TEST(UpidFindings, OfRecordsThatATreeDoesNotTake) {
  const std::string name = ": the name is no 7-bit text: a flat list leaves the node out\n";
  const auto repeat = [](int line, const char* upid, const char* offset, const char* first) {
    return std::to_string(line) + " duplicate-upid '" + upid + "' record at offset " + offset +
           ": the UPID is that of the record at offset " + first + ", which a tree keeps\n";
  };
  const std::string kept = ": the UPID is that of a node which the tree keeps\n";
  const struct {
    Named held;
    std::string buffer;
    std::string findings;
  } cases[] = {
      {{}, withHeader(0, ""), ""},
      {{}, withHeader(2, records({{1, "a"}, {2, std::string("b\0\xE9", 3)}})), ""},
      {{},
       withHeader(6, records(kOdd)),
       "2 note name '2' record at offset 108" + name + repeat(3, "5", "180", "36") +
           "3 note name '5' record at offset 180" + name + repeat(5, "2", "324", "108") +
           repeat(6, "5", "396", "36")},
      {{{9, ""}},
       withHeader(4, records(kOdd) + "rest"),
       "2 note name '2' record at offset 108" + name + repeat(3, "5", "180", "36") +
           "3 note name '5' record at offset 180" + name +
           "4 duplicate-upid '9' record at offset 252" + kept +
           "0 note rest '' the 148 bytes from offset 324 on are ignored\n"},
      {{{5, ""}},
       withHeader(3, records(kOdd).substr(0, 3 * kSize)),
       "1 duplicate-upid '5' record at offset 36" + kept + "2 note name '2' record at offset 108" +
           name + "3 duplicate-upid '5' record at offset 180" + kept +
           "3 note name '5' record at offset 180" + name},
      {{{5, ""}}, "", "0 cut-short '' the header is cut short: there are 0 bytes\n"},
      {{{5, ""}},
       std::string(35, '\0'),
       "0 cut-short '' the header is cut short: there are 35 bytes\n"},
      {{{5, ""}},
       withHeader(2, records({{5, ""}, {6, ""}}).substr(1)),
       "0 cut-short '' the header at offset 0 counts 2 nodes, but there are 1\n"},
  };
  for (const auto& [held, buffer, expected] : cases) {
    SCOPED_TRACE(expected);
    OrvaneUpidTree plain;
    plain.addNodesChecked(records(held));
    OrvaneUpidTree reported = plain;
    OrvaneFindings findings;
    EXPECT_EQ(reported.setBufferReported(buffer, findings), plain.setBufferChecked(buffer));
    EXPECT_EQ(show(findings), expected);
    EXPECT_EQ(written(reported), written(plain));
    EXPECT_EQ(reported.getTCPUpid(), plain.getTCPUpid());
  }
}

TEST(UpidFindings, OfNodeBuffers) {
  const std::string name = ": the name is no 7-bit text: ";
  const struct {
    std::string buffer;
    std::string ofTree;
    std::string ofArray;
  } cases[] = {
      {"", "", ""},
      {records({{3, kHigh}, {1, ""}, {3, ""}}),
       "1 note name '3' record at offset 0" + name + "a flat list leaves the node out\n" +
           "3 duplicate-upid '3' record at offset 144: the UPID is that of the record at offset 0, "
           "which a tree keeps\n",
       "1 name '3' record at offset 0" + name + "the node is left out\n"},
      {records({{3, ""}, {1, kHigh}}) + "x",
       "3 cut-short '' the record at offset 144 is cut short\n",
       "3 cut-short '' the record at offset 144 is cut short\n"},
  };
  for (const auto& [buffer, ofTree, ofArray] : cases) {
    SCOPED_TRACE(ofTree);
    OrvaneUpidTree tree;
    OrvaneUpidTree plainTree;
    OrvaneFindings findings;
    EXPECT_EQ(tree.addNodesReported(buffer, findings), plainTree.addNodesChecked(buffer));
    EXPECT_EQ(show(findings), ofTree);
    EXPECT_EQ(written(tree), written(plainTree));
    EXPECT_EQ(tree.getTCPUpid(), 0);
    OrvaneUpidArray array;
    OrvaneUpidArray plainArray;
    for (int i = 0; i < 2; ++i) {
      findings.clear();
      EXPECT_EQ(array.setBufferReported(buffer, findings), plainArray.setBufferChecked(buffer));
      EXPECT_EQ(show(findings), ofArray);
      EXPECT_EQ(written(array), written(plainArray));
    }
  }
}

struct Structure {
  std::vector<Links> nodes;
  std::string outline;
  std::string findings;
};

// The UPIDs of an outline, one line each, indented by their depth and followed by their parent.
std::string outlineOf(const OrvaneUpidTree& tree) {
  std::string text;
  for (const OrvaneUpidPlace& place : tree.outline()) {
    text += std::string(place.depth, ' ') + std::to_string(place.node->upid);
    if (place.parent != nullptr) text += "<" + std::to_string(place.parent->upid);
    text += "\n";
  }
  return text;
}

TEST(UpidFindings, OfLinks) {
  const std::string twice = " is linked already: a cycle or a second parent\n";
  const Structure cases[] = {
      {{}, "", ""},
      {{{1, 0, 3, 2}, {3, 1, 6, 1, 2}, {2, 1}, {6, 3}, {4, 4}}, "1\n 3<1\n  6<3\n 2<1\n4\n", ""},
      {{{1, 0, 2, 1}, {2, 1, 0, 0, 9}}, "1\n 2<1\n", "broken-link '2' its sibling 9 is missing\n"},
      {{{1, 0, 9, 1}}, "1\n", "broken-link '1' its first child 9 is missing\n"},
      {{{1, 0, 2, 2}, {2, 1, 0, 0, 3}, {3, 1, 0, 0, 2}},
       "1\n 2<1\n 3<1\n",
       "cycle '3' its sibling 2" + twice},
      {{{1, 0, 1}}, "1\n", ""},  // it closes a chain of none
      {{{1, 1, 1, 1}}, "1\n", "cycle '1' its first child 1" + twice},
      {{{1, 0, 3, 1}, {2, 0, 3, 1}, {3, 1}}, "1\n 3<1\n2\n", "cycle '2' its first child 3" + twice},
      {{{1, 0, 2, 1}, {2, 7}},
       "1\n 2<1\n",
       "parent '2' its parent is 7, but it is a child of 1\n"
       "missing-parent '2' its parent 7 is missing\n"},
      {{{1, 0, 2, 1}, {2, 0, 3, 1}, {3, 2}},
       "1\n 2<1\n  3<2\n",
       "parent '2' its parent is 0, but it is a child of 1\n"},
      {{{1, 0, 0, 3}}, "1\n", "count '1' it counts 3 children, but 0 are linked\n"},
      {{{1, 0, 2, 1}, {2, 1, 0, 0, 3}, {3, 1}},
       "1\n 2<1\n",
       "count '1' it counts 1 children, but 2 are linked\n"
       "unreachable '3' no root reaches it\n"},
      // A link too many does not keep a root from being one.
      {{{1, 0, 2, 1}, {2, 1, 0, 0, 3}, {3, 0, 0, 0, 4}, {4, 1, 0, 0, 0}},
       "1\n 2<1\n3\n",
       "parent '3' its parent is 0, but it is a child of 1\n"
       "count '1' it counts 1 children, but 3 are linked\n"
       "unreachable '4' no root reaches it\n"},
      {{{1}, {2, 3, 3, 1}, {3, 2, 2, 1}},
       "1\n",
       "unreachable '2' no root reaches it\nunreachable '3' no root reaches it\n"},
      // Closing nodes, of a chain that is counted and of one that is not.
      {{{1, 0, 2}, {2, 1, 4, 1, 9}, {4, 2, 0, 0, 9}, {9, 99}}, "1\n 2<1\n  4<2\n", ""},
  };
  for (const Structure& c : cases) {
    SCOPED_TRACE(c.outline + c.findings);
    OrvaneUpidTree tree;
    for (const Links& links : c.nodes) tree.add(nodeOf(links));
    EXPECT_EQ(outlineOf(tree), c.outline);
    OrvaneFindings findings;
    tree.addFindings(findings);
    std::string found;
    for (const OrvaneFinding& finding : findings) {
      EXPECT_EQ(finding.severity, kOrvaneFindingError);
      EXPECT_EQ(finding.line, 0);
      found += std::string(finding.kind) + " '" + finding.key + "' " + finding.message + "\n";
    }
    EXPECT_EQ(found, c.findings);
  }
}

// Chains may be as long and as deep as the tree is large, and a list no longer than is asked for.
TEST(UpidFindings, TakeNoStackAndNoMoreRoomThanAskedFor) {
  constexpr unsigned int kCount = 100000;
  OrvaneUpidTree deep;
  OrvaneUpidTree apart;
  for (unsigned int upid = 1; upid <= kCount; ++upid) {
    deep.add(nodeOf({upid, upid - 1, upid < kCount ? upid + 1 : 0, upid < kCount ? 1U : 0}));
    apart.add(nodeOf({upid, kCount + 1}));
  }
  ASSERT_EQ(deep.outline().size(), kCount);
  EXPECT_EQ(deep.outline().back().depth, kCount - 1);
  OrvaneFindings findings(2);
  deep.addFindings(findings);
  EXPECT_TRUE(findings.empty());
  apart.addFindings(findings);
  EXPECT_EQ(
      show(findings),
      "0 missing-parent '1' its parent 100001 is missing\n0 unreachable '1' no root reaches it\n"
      "0 missing-parent '2' its parent 100001 is missing\n0 unreachable '2' no root reaches it\n");
  EXPECT_EQ(findings.getFound(kOrvaneFindingError), 2 * kCount);
}

// Whose UPID is changed where it lies keeps its place and is found by it.
TEST(UpidFindings, GoByTheUpidOfThePlace) {
  OrvaneUpidTree tree;
  tree.add(nodeOf({1, 0, 2, 1}));
  tree.add(nodeOf({2, 1, 9}));
  tree[2].setUpid(7);
  EXPECT_EQ(outlineOf(tree), "1\n 7<1\n");
  OrvaneFindings findings;
  tree.addFindings(findings);
  EXPECT_EQ(show(findings), "0 broken-link '2' its first child 9 is missing\n");
}

}  // namespace
}  // namespace upid_findings
