#include "command_test.h"

namespace orvane::cli {
namespace {

using ServicesTest = CommandTest;

TEST_F(ServicesTest, JoinsTheLinesOfANameAndReportsOthers) {
  const std::string name(40, 'n');
  write("services",
        "# a comment\n\r\ndomain  53/tcp  nameserver\t# an alias\nsyslog\t514/udp\r\n"
        "domain 53/udp\n" +
            name +
            " 65535/sctp\nnothing # 9/tcp\nword x/tcp\nzero 0/tcp\nlarge 65536/tcp\nopen 1/\n"
            "signed +7/tcp\n  domain 853/tcp\n#domain 9/tcp");
  const Result result = run("import services services --first-upid 70");
  EXPECT_EQ(result.status, 0);
  const auto application = [](const std::string& ports, const std::string& upid,
                              const std::string& shown) {
    return group("PortRange=" + ports + "/IPv4=/Action=1/SelectorType=1/UPID=" + upid +
                 "/ApplName=" + shown +
                 "/UniqueBlockNumber=4294967295/SelectorTypeInfo=0/GroupID=" + upid);
  };
  EXPECT_EQ(result.out, application("53,853", "70", "domain") + application("514", "71", "syslog") +
                            application("65535", "72", name.substr(0, 31)));
  std::string reports = "services:7: skipped: 'nothing' has no port\n";
  int line = 8;
  for (const std::string port : {"x/tcp", "0/tcp", "65536/tcp", "1/", "+7/tcp"}) {
    reports += "services:" + std::to_string(line++) + ": skipped: '" + port +
               "' is no port from 1 to 65535 with a protocol\n";
  }
  EXPECT_EQ(result.err,
            reports + "services:6: '" + name + "' is cut to '" + name.substr(0, 31) + "'\n");
  EXPECT_EQ(run("import services -", "# none\n").status, 2);
}

}  // namespace
}  // namespace orvane::cli
