// What the readers of node and tree buffers report, and what is wrong with the links of a tree.

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "upid_sample.h"

namespace {

struct Links {
  unsigned int upid, parent = 0, firstChild = 0, children = 0, sibling = 0;
};

OrvaneUpidNode nodeOf(const Links& of) {
  return node(record(of.upid, "", of.firstChild, of.children, of.sibling, of.parent));
}

using Named = std::vector<std::pair<unsigned int, std::string>>;

std::string records(const Named& nodes) {
  std::string text;
  for (const auto& [upid, name] : nodes) text += record(upid, name);
  return text;
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

// Reads with both twins, which return and leave the same; shows what the reported one tells.
template <auto read, auto readPlainly, typename Nodes>
std::string told(const Named& held, const std::string& buffer) {
  Nodes reported;
  for (const auto& [upid, name] : held) reported.add(node(record(upid, name)));
  Nodes plain = reported;
  OrvaneFindings findings;
  EXPECT_EQ((reported.*read)(buffer, findings), (plain.*readPlainly)(buffer));
  EXPECT_EQ(written(reported), written(plain));
  if constexpr (std::is_same_v<Nodes, OrvaneUpidTree>) {
    EXPECT_EQ(reported.getTCPUpid(), plain.getTCPUpid());
  }
  return show(findings);
}

TEST(UpidFindings, OfRecords) {
  const auto trees =
      told<&OrvaneUpidTree::setBufferReported, &OrvaneUpidTree::setBufferChecked, OrvaneUpidTree>;
  const auto nodes =
      told<&OrvaneUpidTree::addNodesReported, &OrvaneUpidTree::addNodesChecked, OrvaneUpidTree>;
  const auto array = told<&OrvaneUpidArray::setBufferReported, &OrvaneUpidArray::setBufferChecked,
                          OrvaneUpidArray>;
  const auto name = [](const char* upid, const char* offset) {
    return std::string("name '") + upid + "' record at offset " + offset +
           ": the name is no 7-bit text: ";
  };
  const auto repeat = [](int line, const char* upid, const char* offset, const char* first) {
    return std::to_string(line) + " duplicate-upid '" + upid + "' record at offset " + offset +
           ": the UPID is that of " +
           (first == nullptr
                ? std::string("a node which the tree keeps\n")
                : std::string("the record at offset ") + first + ", which a tree keeps\n");
  };
  const std::string unlisted = "a flat list leaves the node out\n";
  const std::string cut = "0 cut-short '' the header ";
  const std::string cutRecord = "3 cut-short '' the record at offset 144 is cut short\n";
  const std::string high = "caf\xE9";
  const std::string odd = records({{5, ""}, {2, high}, {5, high}, {9, ""}, {2, ""}, {5, ""}});
  const std::string few = records({{3, high}, {1, ""}, {3, ""}});
  const struct {
    std::string (*read)(const Named&, const std::string&);
    Named held;
    std::string buffer;
    std::string findings;
  } cases[] = {
      {trees, {}, tree(0, 6, ""), ""},
      {trees, {}, tree(2, 6, records({{1, "a"}, {2, std::string("b\0\xE9", 3)}})), ""},
      {trees,
       {},
       tree(6, 6, odd),
       "2 note " + name("2", "108") + unlisted + repeat(3, "5", "180", "36") + "3 note " +
           name("5", "180") + unlisted + repeat(5, "2", "324", "108") +
           repeat(6, "5", "396", "36")},
      {trees,
       {{9, ""}, {2, ""}},
       tree(5, 6, odd + "rest"),
       repeat(2, "2", "108", nullptr) + "2 note " + name("2", "108") + unlisted +
           repeat(3, "5", "180", "36") + "3 note " + name("5", "180") + unlisted +
           repeat(4, "9", "252", nullptr) + repeat(5, "2", "324", nullptr) +
           "0 note rest '' the 76 bytes from offset 396 on are ignored\n"},
      {trees, {{5, ""}}, "", cut + "is cut short: there are 0 bytes\n"},
      {trees, {}, std::string(35, '\0'), cut + "is cut short: there are 35 bytes\n"},
      {trees,
       {},
       tree(2, 6, odd.substr(0, 143)),
       cut + "at offset 0 counts 2 nodes, but there are 1\n"},
      {nodes, {}, few, "1 note " + name("3", "0") + unlisted + repeat(3, "3", "144", "0")},
      {nodes, {}, few.substr(0, 145), cutRecord},
      {array, {{3, ""}}, few, "1 " + name("3", "0") + "the node is left out\n"},
      {array, {}, few.substr(0, 145), cutRecord},
  };
  for (const auto& [read, held, buffer, expected] : cases) EXPECT_EQ(read(held, buffer), expected);
}

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
  const struct {
    std::vector<Links> nodes;
    std::string outline;
    std::string findings;
  } cases[] = {
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
  for (const auto& [nodes, outline, expected] : cases) {
    SCOPED_TRACE(outline + expected);
    OrvaneUpidTree tree;
    for (const Links& links : nodes) tree.add(nodeOf(links));
    EXPECT_EQ(outlineOf(tree), outline);
    OrvaneFindings findings;
    tree.addFindings(findings);
    std::string found = show(findings);
    for (std::size_t i = 0; i < found.size(); i = found.find('\n', i) + 1) found.erase(i, 2);
    EXPECT_EQ(found, expected);
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
