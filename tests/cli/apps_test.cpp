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
