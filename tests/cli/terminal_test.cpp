#include "command_test.h"

namespace orvane::cli {
namespace {

// What only a terminal is shown.
class TerminalTest : public CommandTest {
 protected:
  TerminalTest() {
    ::unsetenv("NO_COLOR");
    ::setenv("TERM", "xterm", 1);
    write("f", group("UPID=7/ApplName=Web/PortRange=80,443,8000-8099/IPv4=1.2.3.4"));
  }

  const std::string head_ = "UPID  NAME  TYPE  ACTION  CATEGORY  ITEMS";
  const std::string row_ = "7     Web   1     0       0         ";
};

TEST_F(TerminalTest, WrapsListsToTheWidth) {
  const std::string indent(row_.size(), ' ');
  const struct {
    unsigned short columns;
    std::string items;
  } cases[] = {
      {62, "1.2.3.4:80,443,8000-8099\n"},
      {59, "1.2.3.4:80,443,\n" + indent + "8000-8099\n"},
      {50, "1.2.3.4:80,\n" + indent + "443,8000-8099\n"},
      {48, "1.2.3.4:80,\n" + indent + "443,\n" + indent + "8000-8099\n"},
      {40, "1.2.3.4:80,443,8000-8099\n"},  // hardly any room
      {0, "1.2.3.4:80,443,8000-8099\n"},   // a terminal that does not know its width
  };
  for (const auto& test : cases) {
    EXPECT_EQ(runOnTerminal("apps f --color never", test.columns),
              head_ + "\n" + row_ + test.items);
  }
  EXPECT_EQ(run("apps f").out, head_ + "\n" + row_ + "1.2.3.4:80,443,8000-8099\n");
}

TEST_F(TerminalTest, ColoursWhereTheyAreSeen) {
  const std::string bold = "\033[1m" + head_ + "\033[0m\n";
  const auto shows = [&](const std::string& shown) { return shown.starts_with(bold); };
  EXPECT_TRUE(shows(runOnTerminal("apps f")));
  EXPECT_TRUE(shows(run("apps f --color always").out));
  EXPECT_TRUE(shows(runOnTerminal("--version >v; NO_COLOR= " ORVANE_COMMAND " apps f")));
  for (const std::string setting : {"NO_COLOR=1", "TERM=dumb"}) {
    EXPECT_FALSE(shows(runOnTerminal("--version >v; " + setting + " " ORVANE_COMMAND " apps f")));
  }
  EXPECT_FALSE(shows(run("apps f").out));
  EXPECT_FALSE(shows(runOnTerminal("apps f --output o; cat o")));
  write("g", "");
  EXPECT_NE(runOnTerminal("diff --summary f g").find("\033[31mremoved 7 'Web'\033[0m\n"),
            std::string::npos);
  EXPECT_EQ(run("apps --json --color always f").out.find('\033'), std::string::npos);
}

TEST_F(TerminalTest, TellsHowFarReadingIs) {
  write("large", std::string(2U << 20U, '\n'));
  const std::string slow =
      "--version > v; { cat f large; sleep 1.3; } | " ORVANE_COMMAND " apps - > o";
  const std::string line = "\r\033[KReading standard input, 2 MiB so far";
  EXPECT_EQ(runOnTerminal(slow), line + "\r\033[K");
  EXPECT_EQ(runOnTerminal(slow + " 2>err"), "");
  EXPECT_EQ(read("err"), "");
  EXPECT_EQ(runOnTerminal("--version > v; { cat f; sleep 1.3; } | " ORVANE_COMMAND " apps - > o"),
            "");
}

}  // namespace
}  // namespace orvane::cli
