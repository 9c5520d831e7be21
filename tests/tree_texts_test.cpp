// Trees as files and texts.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "exchange/form_error.h"
#include "exchange/tree_csv.h"
#include "exchange/tree_json.h"

namespace orvane::exchange {
namespace {

// "line: message" of what a reader throws; "" when it throws nothing.
std::string errorOf(TreeFile (*read)(std::string_view, bool), std::string_view text,
                    bool nodesOnly = false) {
  try {
    read(text, nodesOnly);
  } catch (const FormError& error) {
    return std::to_string(error.line()) + ": " + error.what();
  }
  return "";
}

const std::string kColumns =
    "upid,parentUpid,firstChild,numOfChildren,sibling,PI,SPI,flags,currentChildIdx,name\n";

TEST(TreeTexts, SayWhatIsMalformed) {
  const std::string notAName = "' has more than 32 bytes or a backslash without xNN after it";
  const std::string none = "0: this is no object with an array \"nodes\"";
  const auto csv = readTreeCsv;
  const auto json = readTreeJson;
  const struct {
    TreeFile (*read)(std::string_view, bool);
    std::string text;
    std::string error;
  } cases[] = {
      {csv, "", "0: there is no line of columns"},
      {csv, "# nothing\r\n\n", "0: there is no line of columns"},
      {csv, "name\nx\n", "1: there is no column upid"},
      {csv, "# a\n\nupid,nam\n1,x\n", "3: unknown column 'nam'"},
      {csv, "name,upid,name\n", "1: a second column 'name'"},
      {csv, "upid\n1,2\n", "2: the line has 2 cells instead of 1"},
      {csv, "upid,name\n1\n", "2: the line has 1 cell instead of 2"},
      {csv, "upid\n-1\n", "2: upid '-1' is no number"},
      {csv, "upid\n1\r2\r\n", "2: upid '1\r2' is no number"},
      {csv, "upid\n" + std::string(80, 'x'), "2: upid '" + std::string(80, 'x') + "' is no number"},
      {csv, "upid,flags\n1,4294967296\n", "2: flags '4294967296' is no number"},
      {csv, "upid,name\n1,\"x", "2: a quote is not closed"},
      {csv, "upid,name\n1,\\x4\n", "2: name '\\x4" + notAName},
      {csv, "upid,name\n1,\\y41\n", "2: name '\\y41" + notAName},
      {csv, "upid,name\n1," + std::string(33, 'n'), "2: name '" + std::string(33, 'n') + notAName},
      {csv, "#header,1\nupid\n", "1: a header has eight words"},
      {csv, "upid\n\"#header\",1,2,3,4,5,6,7,8\n", "2: the line has 9 cells instead of 1"},
      {csv, "#header,1,2,3,4,5,6,7,x\nupid\n", "1: word 'x' is no number"},
      {csv, "#header,1,2,3,4,5,6,7,8\n#header,1,2,3,4,5,6,7,8\n", "2: this is a second header"},
      {csv, "upid\n" + std::string(79, 'x') + "\xC3\xA9y\n",  // cut before a character
       "2: upid '" + std::string(79, 'x') + "...' is no number"},
      {json, "[]", none},
      {json, "{\"nodes\":{}}", none},
      {json, "{\"nodes\":[],\"nodes\":[]}", "0: a second key 'nodes'"},
      {json, "{\"nodes\":[],\"head\":[]}", "0: unknown key 'head'"},
      {json, "{\"nodes\":[],\"header\":[1]}", "0: a header has eight words"},
      {json, "{\"nodes\":[],\"header\":[1,2,3,4,5,6,7,-8]}", "0: word is no number of 32 bits"},
      {json, "{\"nodes\":[],\"header\":[1,2,3,4,5,6,7,8,9]}", "0: a header has eight words"},
      {json, "{\"findings\":7,\"head\":[]}", "0: unknown key 'head'"},
      {json, "{\"nodes\":[{\"upid\":1},7]}", "0: node 2: there is no upid"},
      {json, "{\"nodes\":[{\"upid\":1},{\"upid\":1,\"upid\":2}]}",
       "0: node 2: a second key 'upid'"},
      {json, "{\"nodes\":[{\"upid\":4294967296}]}", "0: node 1: upid is no number of 32 bits"},
      {json, "{\"nodes\":[{\"upid\":1.0}]}", "0: node 1: upid is no number of 32 bits"},
      {json, "{\"nodes\":[{\"upid\":1,\"name\":5}]}", "0: node 1: name is no text"},
      {json, "{\"nodes\":[{\"upid\":1,\"port\":5}]}", "0: node 1: unknown key 'port'"},
  };
  for (const auto& [read, text, error] : cases) EXPECT_EQ(errorOf(read, text), error) << text;
  const std::string deep = "{\"nodes\":[],\"findings\":" + std::string(100000, '[');
  EXPECT_NE(errorOf(readTreeJson, deep).find("parse error"), std::string::npos);
  EXPECT_EQ(errorOf(readTreeJson, deep + std::string(100000, ']') + "}"), "");
}

TEST(TreeTexts, DeriveTheLinksThatTheyLeaveOut) {
  const struct {
    const char* text;
    const char* nodes;
  } cases[] = {
      // Parents and order alone, a repeat left aside.
      {"upid,parentUpid\n1,0\n# 19\" rack\n3,1\n2,1\n3,2\n4,4\n5,9\n",
       "1,0,3,2,0\n3,1,0,0,2\n2,1,0,0,0\n3,2,0,0,0\n4,4,0,0,0\n5,9,0,0,0\n"},
      // Whatever is given stays, also where it is 0.
      {"upid,parentUpid,sibling\n1,0,0\n3,1,7\n2,1,0\n", "1,0,3,2,0\n3,1,0,0,7\n2,1,0,0,0\n"},
      {"upid,parentUpid,firstChild\n1,0,0\n3,1,0\n2,1,0\n", "1,0,0,2,0\n3,1,0,0,2\n2,1,0,0,0\n"},
      {"upid,parentUpid,numOfChildren\n1,0,0\n3,1,0\n", "1,0,3,0,0\n3,1,0,0,0\n"},
  };
  for (const auto& [text, expected] : cases) {
    std::string nodes;
    for (const OrvaneUpidNode& node : readTreeCsv(text, false).nodes) {
      for (const unsigned int word :
           {node.upid, node.parentUpid, node.firstChild, node.numOfChildren, node.sibling}) {
        nodes += std::to_string(word) + ",";
      }
      nodes.back() = '\n';
    }
    EXPECT_EQ(nodes, expected) << text;
  }
  const TreeFile file = readTreeCsv("\xEF\xBB\xBFupid,name\r\n8,\"TCP\"\r\n9,udp", false);
  ASSERT_TRUE(file.header.has_value());
  EXPECT_EQ(std::vector(file.header->begin(), file.header->begin() + 4),
            (std::vector<unsigned int>{2, 8, 9, 0}));
  EXPECT_FALSE(readTreeCsv("#header,1,2,3,4,5,6,7,8\nupid\n1\n", true).header.has_value());
}

TEST(TreeTexts, GiveBackTheSameFile) {
  const std::string header = "#header,1,2,3,4,5,6,7,4294967295\n";
  const std::string rows =
      "7,1,2,3,4,5,6,7,8,\"a,\"\"b\"\"\\x5c\\x00\\xe9\"\n7,0,0,0,0,0,0,4294967295,0,\"\"\n"
      "9,0,0,0,0,0,0,0,0,\"" +
      std::string(31, 'n') + "\\x5c\"\n";
  for (const std::string& text : {header + kColumns + rows, kColumns + rows, kColumns}) {
    SCOPED_TRACE(text);
    const bool nodesOnly = !text.starts_with('#');
    const TreeFile file = readTreeCsv(text, nodesOnly);
    EXPECT_EQ(csvOf(file), text);
    EXPECT_EQ(csvOf(readTreeJson(jsonOf(file, {"a finding"}), nodesOnly)), text);
    EXPECT_EQ(csvOf(readTreeBuffer(bufferOf(file), nodesOnly)), text);
  }
}

TEST(TreeFiles, AreToldApartByTheirLengths) {
  const std::string tree = bufferOf(readTreeCsv("upid\n5\n5\n", false));
  const std::string nodes = tree.substr(36);
  const struct {
    std::string bytes;
    bool nodesOnly;
    std::string error;
  } cases[] = {
      {"", false, ""},
      {tree, false, ""},
      {nodes, false, ""},
      {nodes, true, ""},
      {tree, true,
       "0: the record at offset 144 is cut short: this is no node buffer (the file has 180 bytes)"},
      {nodes + "x", false,
       "0: the record at offset 144 is cut short: this is no tree buffer or node buffer (the file"
       " has 145 bytes)"},
      {tree + nodes, false,
       "0: the header at offset 0 counts 2 nodes instead of 4 (the file has 324 bytes)"},
      {std::string(4, '\xFF') + tree.substr(4), false,
       "0: the header at offset 0 counts 4294967295 nodes instead of 2 (the file has 180"
       " bytes)"},
  };
  for (std::size_t size = 1; size < tree.size(); ++size) {
    EXPECT_EQ(errorOf(readTreeBuffer, tree.substr(0, size)).empty(), size % 72 == 0) << size;
  }
  for (const auto& [bytes, nodesOnly, error] : cases) {
    EXPECT_EQ(errorOf(readTreeBuffer, bytes, nodesOnly), error);
    if (!error.empty()) continue;
    const TreeFile file = readTreeBuffer(bytes, nodesOnly);
    EXPECT_EQ(bufferOf(file), bytes);
    OrvaneFindings findings;
    EXPECT_EQ(treeOf(file, findings).size(), bytes.empty() ? 0 : 1);
    EXPECT_EQ(findings.size(), bytes.empty() ? 0 : 1);
  }
}

}  // namespace
}  // namespace orvane::exchange
