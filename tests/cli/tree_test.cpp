#include <cstring>

#include "command_test.h"

namespace orvane::cli {
namespace {

class TreeTest : public CommandTest {
 protected:
  // Packs a CSV text; returns the status and, when it was 0, what the tree then shows.
  Result packed(const std::string& csv, const std::string& options = {}) {
    write("t.csv", csv);
    const Result pack = run("tree pack t.csv --output t.tree " + options);
    return pack.status == 0 ? run("tree t.tree") : pack;
  }
};

constexpr const char* kPlain =
    "upid,parentUpid,name\n1,0,Ethernet\n3,1,IP\n2,1,\"a,\"\"b\"\"\"\n6,3,tcp\n17,3,UDP\n4,4,own\n";

TEST_F(TreeTest, PacksAndDrawsWhatItDerives) {
  const Result result = packed(kPlain);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out,
            "1 'Ethernet' flags 0, children 2\n  3 'IP' flags 0, children 2\n"
            "    6 'tcp' flags 0, children 0\n    17 'UDP' flags 0, children 0\n"
            "  2 'a,\"b\"' flags 0, children 0\n4 'own' flags 0, children 0\n");
  const std::string buffer = read("t.tree");
  EXPECT_EQ(buffer.size(), 36U + 6 * 72);
  EXPECT_EQ(buffer.substr(0, 12), std::string("\6\0\0\0\6\0\0\0\21\0\0\0", 12));
  EXPECT_EQ(run("tree --children 1 t.tree").out,
            "3 'IP' flags 0, children 2\n2 'a,\"b\"' flags 0, children 0\n");
  EXPECT_EQ(run("tree --upid 3 --format csv t.tree").out,
            "upid,parentUpid,firstChild,numOfChildren,sibling,PI,SPI,flags,currentChildIdx,name\n"
            "3,1,6,2,2,0,0,0,0,\"IP\"\n");
  const std::string dot = run("tree --format dot t.tree").out;
  EXPECT_NE(dot.find("  2 [label=\"a,\\\"b\\\"\\n2\"];\n  1 -> 2;\n"), std::string::npos);
}

TEST_F(TreeTest, UnpacksAndPacksTheSameBytes) {
  packed(kPlain);
  std::string odd = read("t.tree");
  odd[15] = '\x7F';                                          // a header word that nothing reads
  odd.replace(36 + 36, 32, std::string(31, '\xE9') + "\\");  // a name that fills its field
  odd[36 + 72 + 37] = '\0';                                  // and one with a NUL inside
  odd[36 + 72 + 38] = 'x';
  write("odd.tree", odd);
  write("odd.nodes", odd.substr(36));
  for (const std::string form : {"csv", "json"}) {
    for (const std::string kind : {"tree", "nodes"}) {
      SCOPED_TRACE(form + kind);
      const Result shown = run("tree --format " + form + " odd." + kind);
      EXPECT_EQ(shown.status, 1);  // the name is no 7-bit text
      write("x." + form, shown.out);
      const std::string option = kind == "nodes" ? " --nodes" : "";
      EXPECT_EQ(run("tree pack x." + form + " --output x" + option).err, "");
      EXPECT_EQ(read("x"), kind == "nodes" ? odd.substr(36) : odd);
    }
  }
}

TEST_F(TreeTest, FindsWhatIsWrong) {
  const std::string head = "upid,parentUpid,firstChild,numOfChildren,sibling\n";
  const struct {
    const char* rows;
    const char* findings;
  } cases[] = {
      {"1,0,2,1,0\n2,1,0,0,9\n", "  2 '', record at offset 108: its sibling 9 is missing\n"},
      {"1,0,2,2,0\n2,1,0,0,3\n3,1,0,0,2\n",
       "  3 '', record at offset 180: its sibling 2 is linked already: a cycle or a second "
       "parent\n"},
      {"1,0,2,1,0\n2,7,0,0,0\n",
       "  2 '', record at offset 108: its parent is 7, but it is a child of 1\n"
       "  2 '', record at offset 108: its parent 7 is missing\n"},
      {"1,0,0,3,0\n", "  1 '', record at offset 36: it counts 3 children, but 0 are linked\n"},
      {"1,0,0,0,0\n2,3,3,1,0\n3,2,2,1,0\n",
       "  2 '', record at offset 108: no root reaches it\n"
       "  3 '', record at offset 180: no root reaches it\n"},
      {"1,0,0,0,0\n1,0,0,0,0\n",
       "  1 '', record at offset 108: the UPID is that of the record at offset 36, which a tree"
       " keeps\n"},
      {"1,0,2,1,0\n2,0,3,1,0\n3,2,0,0,0\n",
       "  2 '', record at offset 108: its parent is 0, but it is a child of 1\n"},
      {"2,0,3,1,0\n1,0,2,1,0\n3,2,0,0,0\n",
       "  1 '', record at offset 108: its first child 2 is linked already: a cycle or a second "
       "parent\n"},
      {"1,0,2,1,0\n2,1,0,0,3\n3,1,0,0,0\n",
       "  1 '', record at offset 36: it counts 1 children, but 2 are linked\n"},
  };
  for (const auto& [rows, findings] : cases) {
    SCOPED_TRACE(rows);
    const Result result = packed(head + rows);
    EXPECT_EQ(result.status, 1);
    const std::size_t heading = result.out.find("Findings:\n");
    ASSERT_NE(heading, std::string::npos);
    EXPECT_EQ(result.out.substr(heading + 10), findings);
    const std::string drawn = result.out.substr(0, heading);
    EXPECT_EQ(drawn.find("2 ''"), drawn.rfind("2 ''"));  // at most once
  }
}

TEST_F(TreeTest, ClosingNodesAreNoChildren) {
  const Result result = packed(
      "upid,parentUpid,firstChild,numOfChildren,sibling\n"
      "1,0,2,0,0\n2,1,4,1,9\n4,2,0,0,9\n9,99,0,0,0\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out,
            "1 '' flags 0, children 0\n  2 '' flags 0, children 1\n"
            "    4 '' flags 0, children 0\n");
  EXPECT_EQ(run("tree --children 1 t.tree").out, "2 '' flags 0, children 1\n");
  EXPECT_EQ(run("tree --children 2 t.tree").out, "4 '' flags 0, children 0\n");
}

TEST_F(TreeTest, PacksAroundMarksCommentsAndRepeats) {
  const Result plain = packed("upid,parentUpid\n1,0\n2,1\n3,1\n");
  EXPECT_EQ(packed("\xEF\xBB\xBFupid,parentUpid\n# 19\" rack\n1,0\n2,1\n3,1\n").out, plain.out);
  EXPECT_EQ(packed("upid,parentUpid\n1,0\n2,1\n3,1\n2,1\n").out.find(plain.out + "Findings"), 0U);
}

TEST_F(TreeTest, StaysInsideTheFile) {
  packed(kPlain);
  const std::string buffer = read("t.tree");
  for (std::size_t size = 1; size < buffer.size(); ++size) {
    if (size % 72 == 0 || size % 7 != 0) continue;  // a node buffer; and a sample is enough
    write("cut", buffer.substr(0, size));
    EXPECT_EQ(run("tree cut").status, 2) << size;
  }
  write("many", std::string("\xFF\xFF\xFF\xFF", 4) + buffer.substr(4));
  EXPECT_EQ(run("tree many").err,
            "orvane tree: many: the header at offset 0 counts 4294967295 nodes, but there are 6"
            " (the file has 468 bytes)\n");
}

TEST_F(TreeTest, RefusesWhatItCannotUse) {
  packed(kPlain);
  const struct {
    const char* name;
    const char* text;
  } texts[] = {
      // the name, and what the message goes on with
      {"a.csv", "name\nx\n"},
      {"b.csv", "upid,nam\n1,x\n"},
      {"c.csv", "upid\n1,2\n"},
      {"d.csv", "upid\n-1\n"},
      {"e.csv", "upid,name\n1,\"x"},
      {"f.csv", "upid,name\n1,\\x4\n"},
      {"g.csv", "#header,1\nupid\n"},
      {"g.csv:2", "upid\n\"#header\",1,2,3,4,5,6,7,8\n"},
      {"g.csv:1", "upid,upid\n"},
      {"g.csv:2", "#header,1,2,3,4,5,6,7,8\n#header,1,2,3,4,5,6,7,8\n"},
      {"g.csv", ""},
      {"g.json: node 2: a second key 'upid'", "{\"nodes\":[{\"upid\":1},{\"upid\":1,\"upid\":2}]}"},
      {"g.json: node 1: name is no text", "{\"nodes\":[{\"upid\":1,\"name\":5}]}"},
      {"g.json: unknown key 'head'", "{\"nodes\":[],\"head\":[]}"},
      {"a.json", "{"},
      {"b.json", "[]"},
      {"c.json", "{\"nodes\":[{}]}"},
      {"d.json", "{\"nodes\":[{\"upid\":4294967296}]}"},
      {"e.json", "{\"nodes\":[{\"upid\":1,\"name\":\"0123456789abcdef0123456789abcdef0\"}]}"},
      {"f.json", "{\"nodes\":[],\"header\":[1]}"},
      {"x.txt", "upid\n1\n"},
  };
  for (const auto& [name, text] : texts) {
    const std::string file(name, std::strcspn(name, ":"));
    write(file, text);
    const Result result = run("tree pack " + file + " --output made");
    EXPECT_EQ(result.status, 2) << name;
    EXPECT_NE(result.err.find(name), std::string::npos) << result.err;
  }
  EXPECT_FALSE(std::filesystem::exists(path("made")));
  for (const std::string arguments :
       {"tree", "tree --upid 9 t.tree", "tree --children x t.tree", "tree --nodes t.tree",
        "tree pack t.csv", "tree --upid '' t.tree", "tree --children '' t.tree",
        "tree t.tree pack t.csv --output made"}) {
    EXPECT_EQ(run(arguments).status, 2) << arguments;
  }
}

TEST_F(TreeTest, LongChainsTakeNoStack) {
  std::string rows = "upid,parentUpid\n";
  for (int upid = 1; upid <= 200000; ++upid) {
    rows += std::to_string(upid) + "," + std::to_string(upid - 1) + "\n";
  }
  EXPECT_EQ(packed(rows).status, 0);
}

}  // namespace
}  // namespace orvane::cli
