#include <nlohmann/json.hpp>

#include "command_test.h"

namespace orvane::cli {
namespace {

using LintTest = CommandTest;

TEST_F(LintTest, Findings) {
  struct Case {
    std::string text;
    std::string findings;  // without "f:"
  };
  const Case cases[] = {
      {"", ""},
      {group("PortRange= 80 ,,+443,1000 - 2000,080/IPv4=/upid=7/ApplName="), ""},
      {group("PortRange=0,65536,4294967297,8a,8-"),
       "1: port '0' is skipped: it is outside 1 to 65535\n"
       "1: port '65536' is skipped: it is outside 1 to 65535\n"
       "1: '4294967297' is read as port 1\n"
       "1: '8a' is read as port 8\n"
       "1: '8-' is read as port 8\n"},
      {group("PortRange=a,0-9,1-2-3,-4-5,60000-70000,9-8"),
       "1: 'a' is skipped: it is no port or range\n"
       "1: '0-9' is skipped: it is no port or range\n"
       "1: '1-2-3' is read as 1-2\n"
       "1: '-4-5' is read as 4-5\n"
       "1: range 60000-70000 goes beyond port 65535\n"
       "1: note: '9-8' is read as 8-9\n"},
      {group("PortRange=15,99,10-20,18-30,25"),
       "1: note: single ports before range 10-20 are swallowed by it: 15\n"
       "1: note: range 18-30 is merged with an earlier one into 10-30\n"},
      // A widened range moves to its new end, or becomes one with the range that ends there.
      {group("PortRange=1-2,5-6,9-10,2-7,7-7,6-10"),
       "1: note: range 2-7 is merged with an earlier one into 1-7\n"
       "1: note: range 7-7 is merged with an earlier one into 1-7\n"
       "1: note: range 6-10 is merged with an earlier one into 5-10\n"},
      // The search for overlaps misses 5-6, and the end of 4-6 is taken.
      {group("PortRange=1-2,5-6,10-11,20-21,30-31,4-6"),
       "1: range 4-6 is skipped: another range ends at its last port\n"},
      {group("IPv4=1.2.3/UPID=1") + group("IPv4=1.2.3.256/UPID=2") + group("IPv4=1..x.4y/UPID=3") +
           group("IPv4=x/UPID=4"),
       "1: IPv4 '1.2.3' is ignored: it has 3 parts instead of 4\n"
       "4: IPv4 '1.2.3.256': part '256' is read as 0\n"
       "7: IPv4 '1..x.4y': part '' is read as 0\n"
       "7: IPv4 '1..x.4y': part 'x' is read as 0\n"
       "7: IPv4 '1..x.4y': part '4y' is read as 4\n"
       "10: IPv4 'x' has no digits: read as 0\n"},
      {group("Action=/SelectorType=x/UPID=4294967296/UniqueBlockNumber=-1/SelectorTypeInfo=-2/"
             "GroupID=4294967295"),
       "1: Action is empty: read as 0\n"
       "2: SelectorType 'x' has no digits: read as 0\n"
       "3: UPID '4294967296' is beyond 32 bits: read as 0\n"
       "4: note: UniqueBlockNumber '-1' is read as 4294967295\n"
       "6: note: GroupID '4294967295' is read as -1\n"},
      {group("GroupID=-2147483649/Action=1 2"),
       "1: GroupID '-2147483649' is beyond 32 bits: read as 2147483647\n"
       "2: Action '1 2' is no plain number: read as 1\n"},
      {group("UPID=1/Colour=red/upid=2/=3"),
       "2: unknown key 'Colour' is ignored\n"
       "3: UPID is ignored: the group has it at line 1\n"
       "4: unknown key '' is ignored\n"},
      {group("ApplName=" + std::string(31, 'a')) + group("ApplName=" + std::string(32, 'b')),
       "3: ApplName '" + std::string(32, 'b') + "' is cut to 31 characters: '" +
           std::string(31, 'b') + "'\n"},
      {"UPID=1\r\n;\r\n",
       "1: carriage return at the end of 2 lines, this one first: it counts as part of the line\n"},
      {"UPID=2\n", "1: no terminator line follows: the text from here on is dropped\n"},
      {group("UPID=1") + "UPID=2\n\nAction=1",
       "3: no terminator line follows: the text from here on is dropped\n"},
      {";\nUPID=1\nthe \x1b"
       "end\n",
       "1: the group closed here has no known key: it is read as a nameless application without"
       " ports\n"
       "3: note: 'the \\x1b"
       "end' has no \"=\" and so closes the group\n"},
      {group("UPID=1/ApplName=A/Action=1/IPv4=1/PortRange=1-9/UniqueBlockNumber=1") +
           group("UPID=1/ApplName=B/SelectorType=2/IPv4=2") +
           group("UPID=1/ApplName=A/Action=2/IPv4=1/PortRange=2-9/UniqueBlockNumber=2"),
       "9: ApplName 'B' is ignored: the first group of the application makes it 'A'\n"
       "10: SelectorType 2 is ignored: the first group of the application makes it 1\n"
       "15: Action 2 is ignored: the first group of the application makes it 1\n"
       "17: range 2-9 is ignored: an earlier group of the address has 1-9\n"
       "18: UniqueBlockNumber 2 is ignored: the first group of the address makes it 1\n"},
      // Without UPID the GroupID tells applications apart; without both each group is one.
      {group("GroupID=1/ApplName=A") + group("GroupID=2/ApplName=B") + group("ApplName=C") +
           group("ApplName=D") + group("GroupID=2/ApplName=E"),
       "12: ApplName 'E' is ignored: the first group of the application makes it 'B'\n"},
      {group("UPID=7/ApplName=Web/GroupID=500") +
           group("ApplName=Mail/SelectorType=4/GroupID=500/UniqueBlockNumber=3"),
       "5: ApplName 'Mail' is ignored: the first group of the application makes it 'Web'\n"
       "6: SelectorType 4 is ignored: the first group of the application makes it 1\n"
       "7: GroupID 500 is that of UPID 7: this group without UPID becomes part of that"
       " application\n"
       "8: UniqueBlockNumber 3 is ignored: the first group of the address makes it 4294967295\n"},
      {group("GroupID=1") + group("UPID=7") + group("UPID=7/GroupID=1/IPv4=2/SelectorTypeInfo=2") +
           group("GroupID=1"),
       "6: GroupID 1 is ignored: the first group of the application makes it a fresh one\n"
       "8: SelectorTypeInfo 2 leaves the category at 0: the first group of the application"
       " decides it\n"},
  };
  for (const Case& test : cases) {
    write("f", test.text);
    std::string expected = test.findings;
    for (std::size_t start = 0; start < expected.size(); start = expected.find('\n', start) + 1) {
      expected.insert(start, "f:");
    }
    const Result result = run("lint f");
    EXPECT_EQ(result.out, expected);
    EXPECT_EQ(result.status, expected.empty() ? 0 : 1) << test.text;
    EXPECT_EQ(result.err, "");
  }
}

TEST_F(LintTest, Json) {
  const Result result = run("lint --json -", group("PortRange=9-8,x"));
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(nlohmann::json::parse(result.out), nlohmann::json::parse(R"([
    {"file": "standard input", "line": 1, "severity": "note", "kind": "range",
     "message": "'9-8' is read as 8-9"},
    {"file": "standard input", "line": 1, "severity": "error", "kind": "token",
     "message": "'x' is skipped: it is no port or range"}])"));
}

}  // namespace
}  // namespace orvane::cli
