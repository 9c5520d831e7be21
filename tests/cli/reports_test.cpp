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

  static std::string repeated(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
  }
};

TEST_F(ReportsTest, ManyOfOneKindAreCounted) {
  write("f", repeated(101, group("PortRange=x/UPID=1/GroupID=1")) +
                 repeated(300, group("UPID=1/GroupID=1/IPv4=1.2")) +
                 repeated(100, group("UPID=1/GroupID=1/Action=x")));
  write("cat", group("UPID=1/PortRange=" + repeated(101, "x,")));
  write("services", "ssh 22/tcp\n" + repeated(102, "none\n"));
  write("entries", repeated(103, group("UPID=5/FQN=again")));
  std::string nodes = "upid,parentUpid\n1,0\n";
  for (int i = 0; i < 102; ++i) nodes += std::to_string(i + 2) + ",999\n";
  write("t.csv", nodes);
  run("tree pack t.csv --output t");
  const std::string more = " (--all shows them)\n";
  const std::string ofText =
      "f: 200 more of kind 'address'" + more + "f: 1 more of kind 'token'" + more;
  const struct {
    std::string arguments;
    int shown;  // lines, with those that count the rest
    int all;
    std::string rest;
  } cases[] = {
      {"apps f", 302, 501, ofText},
      {"diff f f", 604, 1002, ofText},
      {"check --against f good", 302, 501, ofText},
      {"catalogue --with f /dev/null", 302, 501, ofText},
      {"catalogue --add f /dev/null", 302, 501, ofText},
      {"catalogue cat", 101, 101, "cat: 1 more of kind 'token'" + more},
      {"catalogue entries --with good", 101, 102, "entries: 2 more of kind 'repeated-upid'" + more},
      {"import services services", 101, 102, "services: 2 more of kind 'service'" + more},
      {"lint entries >&2", 101, 102, "entries: note: 2 more of kind 'repeated-upid'" + more},
      // After the only node that a root reaches and a heading.
      {"tree t >&2", 204, 206,
       "  2 more of kind 'missing-parent'" + more + "  2 more of kind 'unreachable'" + more},
      // JSON has all of them.
      {"lint --json f >&2", 2 + 7 * 501, 2 + 7 * 501, "]\n"},
      {"tree --format json t >&2", 16 + 12 * 103 + 204, 16 + 12 * 103 + 204, "]\n}\n"},
  };
  for (const auto& [arguments, shown, all, rest] : cases) {
    SCOPED_TRACE(arguments);
    const std::string few = run(arguments).err;
    EXPECT_TRUE(few.ends_with(rest)) << few;
    EXPECT_EQ(std::count(few.begin(), few.end(), '\n'), shown);
    const std::string whole = run(arguments + " --all").err;
    EXPECT_EQ(std::count(whole.begin(), whole.end(), '\n'), all);
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
      {"diff idle other", 2},  // a note on what change sections leave out
      {"diff --summary idle other", 1},
      {"check --ports 1 good", 0},
      {"check --ports 80 good", 1},
      {"check --against bad good", 2},
      {"check --ports 80,x good", 2},
  };
  for (const auto& [arguments, status] : cases) {
    SCOPED_TRACE(arguments);
    const Result free = run(arguments);
    EXPECT_NE(free.status, 2);
    const Result strict = run(arguments + " --strict --output o");
    EXPECT_EQ(strict.status, status);
    EXPECT_NE(std::filesystem::remove(path("o")), status == 2);
    EXPECT_NE(free.err.empty(), status == 2);
    const std::string refusal = "orvane " + arguments.substr(0, arguments.find(' ')) +
                                ": nothing is written: --strict allows nothing to be reported\n";
    EXPECT_EQ(strict.err, status == 2 ? free.err + refusal : "");
  }
}

}  // namespace
}  // namespace orvane::cli
