#include <cstring>
#include <utility>

#include "command_test.h"

namespace orvane::cli {
namespace {

class TreeTest : public CommandTest {
 protected:
  // Packs a CSV text; returns what the tree then shows.
  Result packed(const std::string& csv) {
    write("t.csv", csv);
    EXPECT_EQ(run("tree pack t.csv --output t.tree").status, 0);
    return run("tree t.tree");
  }
};

constexpr const char* kPlain =
    "upid,parentUpid,name\n1,0,Ethernet\n3,1,IP\n2,1,\"a\"\"\\x5c\"\n6,3,tcp\n17,3,UDP\n4,4,own\n";

TEST_F(TreeTest, PacksAndDrawsWhatItDerives) {
  const Result result = packed(kPlain);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out,
            "1 'Ethernet' flags 0, children 2\n  3 'IP' flags 0, children 2\n"
            "    6 'tcp' flags 0, children 0\n    17 'UDP' flags 0, children 0\n"
            "  2 'a\"\\x5c' flags 0, children 0\n4 'own' flags 0, children 0\n");
  const std::string buffer = read("t.tree");
  EXPECT_EQ(buffer.size(), 36U + 6 * 72);
  EXPECT_EQ(buffer.substr(0, 12), std::string("\6\0\0\0\6\0\0\0\21\0\0\0", 12));
  EXPECT_EQ(run("tree --upid 3 --format csv t.tree").out,
            "upid,parentUpid,firstChild,numOfChildren,sibling,PI,SPI,flags,currentChildIdx,name\n"
            "3,1,6,2,2,0,0,0,0,\"IP\"\n");
  EXPECT_EQ(run("tree --children 1 --format dot t.tree").out,
            "digraph protocols {\n  rankdir=LR;\n  node [shape=box];\n  3 [label=\"IP\\n3\"];\n"
            "  2 [label=\"a\\\"\\\\x5c\\n2\"];\n}\n");
  EXPECT_NE(run("tree --format dot t.tree").out.find("\"];\n  1 -> 2;\n"), std::string::npos);
}

TEST_F(TreeTest, UnpacksAndPacksTheSameBytes) {
  packed(kPlain);
  std::string buffer = read("t.tree");
  buffer[15] = '\x7F';  // a header word that nothing reads
  write("t.tree", buffer);
  write("t.nodes", buffer.substr(36));
  for (const std::string form : {"csv", "json"}) {
    for (const std::string kind : {"tree", "nodes"}) {
      SCOPED_TRACE(form + kind);
      run("tree --format " + form + " t." + kind + " --output x." + form);
      const std::string option = kind == "nodes" ? " --nodes" : "";
      EXPECT_EQ(run("tree pack x." + form + " --output x" + option).err, "");
      EXPECT_EQ(read("x"), read("t." + kind));
    }
  }
}

TEST_F(TreeTest, FindsWhatIsWrong) {
  const std::string repeats =
      "1 'c', record at offset 180: the UPID is that of the record at offset 36, which a tree"
      " keeps\n";
  const std::string broken = "2 'b': its sibling 9 is missing\n";
  const Result text = packed(
      "upid,parentUpid,firstChild,numOfChildren,sibling,name\n"
      "1,0,2,1,0,a\n2,1,0,0,9,b\n1,0,0,0,0,c\n");
  EXPECT_EQ(text.status, 1);
  EXPECT_EQ(text.out, "1 'a' flags 0, children 1\n  2 'b' flags 0, children 0\nFindings:\n  " +
                          repeats + "  " + broken);
  EXPECT_EQ(text.err, "");
  for (const std::string form : {"csv", "dot"}) {
    const Result other = run("tree --format " + form + " t.tree");
    EXPECT_EQ(other.status, 1);
    EXPECT_EQ(other.err, "t.tree: " + repeats + "t.tree: " + broken);
  }
  EXPECT_EQ(run("tree --upid 1 t.tree").status, 0);  // a part is not checked
}

TEST_F(TreeTest, RefusesWhatItCannotUse) {
  packed(kPlain);
  const std::pair<const char*, const char*> texts[] = {
      // the text, and the message, which begins with the name
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
  for (const std::string arguments : {"tree", "tree --nodes t.tree", "tree pack t.csv"}) {
    EXPECT_EQ(run(arguments).status, 2) << arguments;
  }
}

}  // namespace
}  // namespace orvane::cli
