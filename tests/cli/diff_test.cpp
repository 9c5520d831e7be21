#include <nlohmann/json.hpp>

#include "command_test.h"

namespace orvane::cli {
namespace {

using DiffTest = CommandTest;

std::string upid(int number, const std::string& lines) {
  return group("UPID=" + std::to_string(number) + "/GroupID=1/" + lines);
}

TEST_F(DiffTest, Summary) {
  struct Case {
    std::string older;
    std::string newer;
    std::string summary;
  };
  const Case cases[] = {
      {upid(1, "PortRange=1"), upid(1, "PortRange=1"), ""},
      {upid(1, "PortRange=1"), group("UPID=1/GroupID=2/PortRange=1"), ""},
      {upid(2, "PortRange=1") + upid(1, ""), upid(1, "") + upid(2, "PortRange=1"), ""},
      {upid(1, "PortRange=1"), "", "removed 1 ''\n  no address: item removed: 1\n"},
      {"", upid(1, "IPv4=1.2.3.4"), "added 1 ''\n  1.2.3.4: item added: no ports\n"},
      {upid(1, "PortRange=80,443,10-20,30-40,50-60"),
       upid(1, "PortRange=80,8080,10-20,35-40,70-79"),
       "changed 1 ''\n  no address: ports removed: 443,50-60\n"
       "  no address: ports added: 8080,70-79\n  no address: range 30-40 -> 35-40\n"},
      {upid(1, "ApplName=Web/SelectorType=1/Action=1/SelectorTypeInfo=0/UniqueBlockNumber=1"),
       upid(1, "ApplName=\x1b/SelectorType=2/Action=4/SelectorTypeInfo=2/UniqueBlockNumber=2"),
       "changed 1 'Web'\n  name 'Web' -> '\\x1b'\n  type 1 -> 2\n  category 0 -> 1\n"
       "  action 1 -> 4\n  no address: block number 1 -> 2\n"
       "  no address: selector info 0 -> 2\n"},
      {upid(1, "IPv4=1/PortRange=1") + upid(1, "IPv4=2/PortRange=2"),
       upid(1, "IPv4=2/PortRange=2") + upid(1, "IPv4=3/PortRange=3"),
       "changed 1 ''\n  0.0.0.1: item removed: 1\n  0.0.0.3: item added: 3\n"},
      // New applications are matched by name, several of one name in their order.
      {group("GroupID=1/ApplName=B/PortRange=1") + group("GroupID=2/ApplName=C/PortRange=2"),
       group("GroupID=8/ApplName=C/PortRange=2") + group("GroupID=9/ApplName=A/PortRange=1"),
       "added new 'A'\n  no address: item added: 1\n"
       "removed new 'B'\n  no address: item removed: 1\n"},
      {group("GroupID=1/ApplName=A/PortRange=1") + group("GroupID=2/ApplName=A/PortRange=2"),
       group("GroupID=3/ApplName=A/PortRange=2") + group("GroupID=4/ApplName=A/PortRange=1"), ""},
  };
  for (const Case& test : cases) {
    write("old", test.older);
    write("new", test.newer);
    const Result result = run("diff --summary old new");
    EXPECT_EQ(result.out, test.summary);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, test.summary.empty() ? 0 : 1);
    EXPECT_EQ(run("diff old new").status, result.status) << test.summary;
  }
}

TEST_F(DiffTest, NotesWhatChangeSectionsLeaveOut) {
  const std::string unwritten = "note: 1 application left out because of the action code";
  const std::string halved = "1 application written without the old state";
  const std::string unlooked = "changed in nothing that change sections tell; --summary";
  struct Case {
    std::string options;
    std::string older;
    std::string newer;
    int groups;  // written
    std::string notes;
  };
  const Case cases[] = {
      {"", upid(1, "Action=1/PortRange=1"), upid(1, "Action=1/PortRange=2"), 2, ""},
      {"", upid(1, "PortRange=1"), upid(1, "PortRange=2"), 0, unwritten},
      {"--assume-action 1", upid(1, "PortRange=1"), upid(1, "PortRange=2"), 2, ""},
      {"", upid(1, "PortRange=1"), upid(1, "Action=1/PortRange=2"), 1, halved},
      {"", upid(1, "PortRange=1"), upid(1, "Action=4/PortRange=2"), 0, unwritten},
      {"", upid(1, "Action=1/PortRange=1"), upid(1, "PortRange=2"), 2, ""},
      {"", upid(1, "PortRange=1"), "", 0, unwritten},
      {"", upid(1, "") + upid(2, ""), "", 0, "note: 2 applications left out because"},
      {"--assume-action 1", upid(1, "PortRange=1"), upid(1, "Action=1/PortRange=2"), 2, ""},
      {"", "", upid(1, "Action=4/PortRange=1"), 0, unwritten},
      {"", "", upid(1, "Action=1/PortRange=1"), 1, ""},
      {"", upid(1, "PortRange=1-9"), upid(1, "PortRange=2-9"), 0, unlooked},
      {"", upid(1, "Action=1"), upid(1, "Action=4"), 0, unlooked},
  };
  for (const Case& test : cases) {
    write("old", test.older);
    write("new", test.newer);
    const Result result = run("diff old new " + test.options);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), ';'), test.groups) << test.newer;
    EXPECT_EQ(result.err.empty(), test.notes.empty()) << result.err;
    EXPECT_NE(result.err.find(test.notes), std::string::npos) << result.err;
  }
}

TEST_F(DiffTest, AssumedActionTakesThePlaceOfNoneAlone) {
  const std::string texts[] = {upid(1, ""), upid(1, "Action=1"), upid(1, "Action=4")};
  for (const std::string& older : texts) {
    write("old", older);
    for (const std::string& newer : texts) {
      EXPECT_EQ(run("diff --assume-action 1 old -", newer).status,
                (older == texts[2]) == (newer == texts[2]) ? 0 : 1);
    }
  }
}

TEST_F(DiffTest, JsonSummary) {
  write("old", upid(1, "ApplName=Web/IPv4=1.2.3.4/PortRange=80"));
  const Result result =
      run("diff --summary --json old -",
          upid(1, "ApplName=7/Action=1/IPv4=1.2.3.4/PortRange=81-82") + upid(1, "IPv4=1.2.3.5"));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(nlohmann::json::parse(result.out), nlohmann::json::parse(R"([
    {"change": "changed", "upid": 1, "name": "Web", "facts": [
      {"fact": "name", "before": "Web", "after": "7"},
      {"fact": "action", "before": 0, "after": 1},
      {"address": "1.2.3.4", "fact": "ports", "before": "80", "after": null},
      {"address": "1.2.3.4", "fact": "ports", "before": null, "after": "81-82"},
      {"address": "1.2.3.5", "fact": "item", "before": null, "after": ""}]}])"));
}

}  // namespace
}  // namespace orvane::cli
