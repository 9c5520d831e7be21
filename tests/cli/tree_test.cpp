#include <cstring>
#include <utility>

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
  const std::string columns = "upid,parentUpid,firstChild,numOfChildren,sibling,name\n";
  const std::string repeats =
      "1 'c', record at offset 180: the UPID is that of the record at offset 36, which a tree"
      " keeps\n";
  const std::string broken = "2 'b': its sibling 9 is missing\n";
  write("t.csv", columns + "1,0,2,1,0,a\n2,1,0,0,9,b\n1,0,0,0,0,c\n");
  run("tree pack t.csv --output t.tree");
  const Result text = run("tree t.tree");
  EXPECT_EQ(text.status, 1);
  EXPECT_EQ(text.out, "1 'a' flags 0, children 1\n  2 'b' flags 0, children 0\nFindings:\n  " +
                          repeats + "  " + broken);
  EXPECT_EQ(text.err, "");
  for (const std::string form : {"csv", "dot"}) {
    const Result other = run("tree --format " + form + " t.tree");
    EXPECT_EQ(other.status, 1);
    EXPECT_EQ(other.err, "t.tree: " + repeats + "t.tree: " + broken);
  }
  write("t.nodes", read("t.tree").substr(36));
  EXPECT_NE(run("tree t.nodes")
                .out.find("1 'c', record at offset 144: the UPID is that of the "
                          "record at offset 0"),
            std::string::npos);
  EXPECT_EQ(run("tree --upid 1 t.tree").status, 0);  // a part is not checked
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
  const std::pair<const char*, const char*> texts[] = {
      // the text, and the message, which begins with the name
      {"upid\n1,2\n", "t.csv:2: there are 2 cells instead of 1\n"},
      {"", "t.csv: there is no line of columns\n"},
      {"upid,\x1B[2J\n", "t.csv:1: unknown column '\\x1b[2J'\n"},
      {"{\"nodes\":[{\"upid\":1},{}]}", "t.json: node 2: there is no upid\n"},
      {"upid\n1\n", "t.txt: the name ends in neither .json nor .csv\n"},
  };
  for (const auto& [text, message] : texts) {
    const std::string file(message, std::strcspn(message, ":"));
    write(file, text);
    const Result result = run("tree pack " + file + " --output made");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, std::string("orvane tree pack: ") + message);
  }
  write("t.csv", kPlain);
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
