#include <algorithm>

#include "command_test.h"

namespace orvane::cli {
namespace {

// What goes to standard error, how much of it, and what it does to the result.
class ReportsTest : public CommandTest {
 protected:
  ReportsTest() {
    write("good", group("UPID=1/GroupID=1/Action=1/PortRange=80/IPv4=1"));
    write("other", group("UPID=1/GroupID=1/Action=1/PortRange=81/IPv4=1"));
    write("bad", group("UPID=1/GroupID=1/Action=1/PortRange=80,x/IPv4=1"));
    write("noted", group("UPID=1/GroupID=1/Action=1/PortRange=80,9-8/IPv4=1"));
    write("idle", group("UPID=1/GroupID=1/PortRange=80/IPv4=1"));
  }

  // Groups with `tokens` port list elements that are none and `addresses` such addresses.
  static std::string faulty(int tokens, int addresses) {
    std::string text;
    for (int i = 0; i < tokens; ++i) text += group("PortRange=\\x/UPID=1/GroupID=1");
    for (int i = 0; i < addresses; ++i) text += group("UPID=1/GroupID=1/IPv4=1.2");
    return text;
  }
};

TEST_F(ReportsTest, ManyOfOneKindAreCounted) {
  const struct {
    int tokens;
    int addresses;
    std::string rest;
  } cases[] = {
      {100, 100, ""},
      {101, 1, "f: 1 more of kind 'token' (--all shows them)\n"},
      {123, 300,
       "f: 200 more of kind 'address' (--all shows them)\n"
       "f: 23 more of kind 'token' (--all shows them)\n"},
  };
  for (const auto& test : cases) {
    write("f", faulty(test.tokens, test.addresses));
    for (const std::string command : {"apps f", "diff f f", "check --each f"}) {
      SCOPED_TRACE(command + " with " + std::to_string(test.tokens));
      const std::ptrdiff_t files = command == "diff f f" ? 2 : 1;
      const std::string shown = run(command).err;
      const std::string all = run(command + " --all").err;
      EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), files * (test.tokens + test.addresses));
      EXPECT_TRUE(shown.ends_with(test.rest));
      const auto counts = std::count(test.rest.begin(), test.rest.end(), '\n');
      EXPECT_EQ(std::count(shown.begin(), shown.end(), '\n'),
                files * (std::min(test.tokens, 100) + std::min(test.addresses, 100) + counts));
      EXPECT_NE(shown.find("f:1: '\\\\x' is skipped: it is no port or range\n"), std::string::npos);
    }
  }
  std::string tokens = "x";
  for (int i = 1; i < 101; ++i) tokens += ",x";
  write("cat", group("UPID=1/PortRange=" + tokens));
  EXPECT_TRUE(
      run("catalogue cat").err.ends_with("\ncat: 1 more of kind 'token' (--all shows them)\n"));
  const std::string all = run("catalogue cat --all").err;
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 101);

  std::string services = "ssh 22/tcp\n";
  std::string nodes = "upid,parentUpid\n1,0\n";
  std::string entries;
  for (int i = 0; i < 102; ++i) {
    services += "none\n";
    nodes += std::to_string(i + 2) + ",999\n";
    entries += group("UPID=5/FQN=again");
  }
  write("services", services);
  write("t.csv", nodes);
  write("entries", entries);
  run("tree pack t.csv --output t");
  const std::pair<std::string, std::string> more[] = {
      {"import services services 2>&1 >o", "2 more of kind 'service'"},
      {"tree t", "2 more of kind 'missing-parent'"},
      {"catalogue entries --with good 2>&1 >o", "1 more of kind 'repeated-upid'"},
      {"lint entries", "note: 1 more of kind 'repeated-upid'"},
  };
  for (const auto& [command, rest] : more) {
    const std::string few = run(command).out;
    EXPECT_NE(few.find(rest + " (--all shows them)\n"), std::string::npos) << command << few;
    EXPECT_GT(run(command + " --all").out.size(), few.size());
  }
}

TEST_F(ReportsTest, StrictWritesNothingWhenAnythingIsReported) {
  const struct {
    std::string arguments;
    int status;  // with --strict; 2 only there
  } cases[] = {
      {"diff good good", 0},
      {"diff good other", 1},
      {"diff noted good", 1},  // notes of texts are not reported
      {"diff bad good", 2},
      {"diff good bad", 2},
      {"diff --summary good bad", 2},
      {"diff idle other", 2},  // a note on what change sections leave out
      {"diff --summary idle other", 1},
      {"check --ports 1 good", 0},
      {"check --ports 80 good", 1},
      {"check --ports 80 bad", 2},
      {"check --against bad good", 2},
      {"check --ports 80,x good", 2},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.arguments);
    const Result free = run(test.arguments);
    EXPECT_NE(free.status, 2);
    const Result strict = run(test.arguments + " --strict --output o");
    EXPECT_EQ(strict.status, test.status);
    EXPECT_EQ(std::filesystem::exists(path("o")), test.status != 2);
    EXPECT_EQ(free.err.empty(), test.status != 2);
    const std::string command = test.arguments.substr(0, test.arguments.find(' '));
    EXPECT_EQ(strict.err, test.status != 2 ? ""
                                           : free.err + "orvane " + command +
                                                 ": nothing is written: --strict allows nothing to"
                                                 " be reported\n");
    std::filesystem::remove(path("o"));
  }
}

}  // namespace
}  // namespace orvane::cli
