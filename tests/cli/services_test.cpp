#include "command_test.h"

namespace orvane::cli {
namespace {

using ServicesTest = CommandTest;

TEST_F(ServicesTest, OneApplicationPerName) {
  write("services",
        "# a comment\n"
        "\n"
        "domain  53/tcp  nameserver\t# an alias\n"
        "syslog\t514/udp\r\n"
        "domain 53/udp\n"
        "  domain 853/tcp\n");
  const Result result = run("import services services --first-upid 70");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err, "");
  const std::string fields = "IPv4=\nAction=1\nSelectorType=1\n";
  const std::string itemFields = "UniqueBlockNumber=4294967295\nSelectorTypeInfo=0\n";
  EXPECT_EQ(result.out, "PortRange=53,853\n" + fields + "UPID=70\nApplName=domain\n" + itemFields +
                            "GroupID=70\n;\n" + "PortRange=514\n" + fields +
                            "UPID=71\nApplName=syslog\n" + itemFields + "GroupID=71\n;\n");
}

TEST_F(ServicesTest, ReportsMalformedLinesAndCutNames) {
  const std::string name(40, 'n');
  write("services", "nothing\nword x/tcp\nzero 0/tcp\nlarge 65536/tcp\nopen 1/\n" + name +
                        " 7/tcp\nsigned +7/tcp\n");
  const Result result = run("import services services");
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.out.find("UPID=1000\nApplName=" + name.substr(0, 31) + "\n"), std::string::npos);
  const std::string noPort = " is no port from 1 to 65535 with a protocol\n";
  EXPECT_EQ(result.err,
            "services:1: skipped: 'nothing' has no port\n"
            "services:2: skipped: 'x/tcp'" +
                noPort + "services:3: skipped: '0/tcp'" + noPort +
                "services:4: skipped: '65536/tcp'" + noPort + "services:5: skipped: '1/'" + noPort +
                "services:7: skipped: '+7/tcp'" + noPort + "services:6: '" + name +
                "' is cut to '" + name.substr(0, 31) + "'\n");
}

TEST_F(ServicesTest, KeepsUpidsBelowTheOneThatMeansNone) {
  const std::string two = "a 1/tcp\nb 2/tcp\n";
  EXPECT_NE(run("import services - --first-upid 4294967293", two).out.find("UPID=4294967294\n"),
            std::string::npos);
  for (const std::string upid : {"4294967294", "4294967295", "4294967296", "0", "-1", "1x", "''"}) {
    const Result result = run("import services - --first-upid " + upid, two);
    EXPECT_EQ(result.status, 2) << upid;
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("--first-upid"), std::string::npos) << result.err;
  }
  EXPECT_EQ(run("import services -", "# none\n").status, 2);
}

}  // namespace
}  // namespace orvane::cli
