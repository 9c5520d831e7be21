#include <nlohmann/json.hpp>

#include "command_test.h"

namespace orvane::cli {
namespace {

using AppsTest = CommandTest;

const std::string kText =
    group(
        "PortRange=80,443,1000-2000/IPv4=167772161/Action=1/UPID=7000/ApplName=Web/"
        "UniqueBlockNumber=12/SelectorTypeInfo=3/GroupID=5") +
    group("PortRange=8080/IPv4=167772162/UPID=7000") +
    group("ApplName=Caf\xc3\xa9 \x1b[2J\xff/GroupID=9");

TEST_F(AppsTest, Table) {
  const Result result = run("apps -", kText);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out,
            "UPID  NAME              TYPE  ACTION  CATEGORY  ITEMS\n"
            "7000  Web               1     1       1         10.0.0.1:80,443,1000-2000\n"
            "                                                10.0.0.2:8080\n"
            "new   Caf\xc3\xa9 \\x1b[2J\\xff  1     0       0         (no ports)\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(AppsTest, Json) {
  const auto applications = nlohmann::json::parse(run("apps --json -", kText).out);
  ASSERT_EQ(applications.size(), 2);
  EXPECT_EQ(applications[0], nlohmann::json::parse(R"({
    "upid": 7000, "id": 5, "name": "Web", "type": 1, "action": 1, "category": 1, "items": [
      {"address": "10.0.0.1", "ports": [80, 443], "ranges": [[1000, 2000]],
       "blockNumber": 12, "selectorInfo": 3},
      {"address": "10.0.0.2", "ports": [8080], "ranges": [],
       "blockNumber": 4294967295, "selectorInfo": 0}]})"));
  EXPECT_EQ(applications[1]["upid"], nullptr);
  EXPECT_EQ(applications[1]["items"][0]["address"], nullptr);
  EXPECT_EQ(applications[1]["name"], "Caf\xc3\xa9 \x1b[2J\xef\xbf\xbd");
  EXPECT_EQ(run("apps --json -", "").out, "[]\n");
}

// Byte for byte what a library for it writes.
TEST_F(AppsTest, JsonOfNamesThatAreNoUtf8) {
  const auto written = [](const std::string& text) {
    return nlohmann::ordered_json(text).dump(-1, ' ', false,
                                             nlohmann::ordered_json::error_handler_t::replace);
  };
  const std::string names[] = {
      "\"\\\b\f\t\x01\x1f",                    // escapes
      "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x99\x82",  // two to four bytes
      "a\xC3",                                 // cut short
      "\xE2\x82",
      "\xF0\x9F\x99x",
      "\xE2\x82\xC3\xA9",
      "\xF0\x9F\xE2\x82\xAC",
      "\x80\xBF\xC0\x80\xC1\xBF\xF5\xFF",  // never begins a character
      "\xE0\x80\x80\xE0\xA0\x80",          // longer than needed, and just not
      "\xF0\x80\x80\x80\xF0\x90\x80\x80",
      "\xED\xA0\x80\xED\x9F\xBF",  // a surrogate, and the last before them
      "\xF4\x90\x80\x80\xF4\x8F\xBF\xBF",
      "\xF1\x80\x80\xF3\x80",
  };
  std::string text;
  for (const std::string& name : names) text += group("ApplName=" + name);
  std::istringstream lines(run("apps --json -", text).out);
  std::size_t found = 0;
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("    \"name\": ")) continue;
    ASSERT_LT(found, std::size(names));
    EXPECT_EQ(line, "    \"name\": " + written(names[found++]) + ",");
  }
  EXPECT_EQ(found, std::size(names));

  const std::string json = run("apps --json -", kText).out;
  EXPECT_EQ(nlohmann::ordered_json::parse(json).dump(2) + "\n", json);
}

TEST_F(AppsTest, CanonicalSectionReadsBackAndHasNoFindings) {
  const std::string canonical = run("apps --section -", kText).out;
  EXPECT_EQ(canonical.substr(0, canonical.find(';')),
            "PortRange=80,443,1000-2000\nIPv4=167772161\nAction=1\nSelectorType=1\nUPID=7000\n"
            "ApplName=Web\nUniqueBlockNumber=12\nSelectorTypeInfo=3\nGroupID=5\n");
  EXPECT_EQ(run("apps --section -", canonical).out, canonical);
  EXPECT_EQ(run("lint -", canonical).status, 0);
}

TEST_F(AppsTest, ReportsWhatIsNotReadButNoNotes) {
  write("f", group("PortRange=80,x,2000-1000/IPv4=1.2.3"));
  const Result result = run("apps f");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "f:1: 'x' is skipped: it is no port or range\n"
            "f:2: IPv4 '1.2.3' is ignored: it has 3 parts instead of 4\n");
}

}  // namespace
}  // namespace orvane::cli
