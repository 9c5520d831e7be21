#include "command_test.h"

namespace orvane::cli {
namespace {

using PortsTest = CommandTest;

TEST_F(PortsTest, ReadsListsAndDifferences) {
  struct Case {
    std::string arguments;
    int status;
    std::string out;
    std::string err;
  };
  const Case cases[] = {
      {"8080,20-21,443", 0, "20-21,443,8080\n", ""},
      {"80,80 '' 1500,1000-2000", 0, "80\n\n1000-2000\n", ""},
      {"80 81,x,70000", 0, "80\n81\n",
       "orvane ports: list 2: 'x' is skipped: it is no port or range\n"
       "orvane ports: list 2: port '70000' is skipped: it is outside 1 to 65535\n"},
      {"80 0,x", 2, "",
       "orvane ports: list 2: port '0' is skipped: it is outside 1 to 65535\n"
       "orvane ports: list 2: 'x' is skipped: it is no port or range\n"
       "orvane ports: list 2: nothing in '0,x' is a port or range\n"},
      {"', '", 2, "",
       "orvane ports: list 1: ' ' is skipped: it is no port or range\n"
       "orvane ports: list 1: nothing in ', ' is a port or range\n"},
      {"--diff 80,443,10-20 80,8080,15-20,30-40", 1, "8080,30-40\n", ""},
      {"80,443 80 --diff", 0, "", ""},
  };
  for (const Case& test : cases) {
    const Result result = run("ports " + test.arguments);
    EXPECT_EQ(result.status, test.status) << test.arguments;
    EXPECT_EQ(result.out, test.out) << test.arguments;
    EXPECT_EQ(result.err, test.err) << test.arguments;
  }
}

}  // namespace
}  // namespace orvane::cli
