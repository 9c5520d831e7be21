// The services(5) file, and what becomes of it.

#include "exchange/services.h"

#include <gtest/gtest.h>

namespace orvane::exchange {
namespace {

std::string show(const OrvaneFindings& findings) {
  std::string text;
  for (const OrvaneFinding& finding : findings) {
    text += std::to_string(finding.line) + " " + finding.kind + " " + finding.message + "\n";
  }
  return text;
}

TEST(Services, JoinTheLinesOfAName) {
  OrvaneFindings findings;
  const auto services = readServices(
      "# a comment\n\ndomain  53/tcp  nameserver\t# an alias\nsyslog\t514/udp\r\ndomain 53/udp\n"
      "  domain 853/tcp\n#domain 9/tcp",
      findings);
  EXPECT_EQ(show(findings), "");
  ASSERT_EQ(services.size(), 2);
  EXPECT_EQ(services[0].name, "domain");
  EXPECT_EQ(services[0].line, 3);
  EXPECT_EQ(services[0].ports, (std::set<unsigned short>{53, 853}));
  EXPECT_EQ(services[1].ports, (std::set<unsigned short>{514}));
}

TEST(Services, ReportLinesThatAreNone) {
  OrvaneFindings findings;
  const auto services = readServices(
      "nothing\nword x/tcp\nzero 0/tcp\nlarge 65536/tcp\nopen 1/\nsigned +7/tcp\nlast 65535/sctp",
      findings);
  ASSERT_EQ(services.size(), 1);
  EXPECT_EQ(services[0].line, 7);
  const std::string noPort = " is no port from 1 to 65535 with a protocol\n";
  EXPECT_EQ(show(findings),
            "1 service skipped: 'nothing' has no port\n2 service skipped: 'x/tcp'" + noPort +
                "3 service skipped: '0/tcp'" + noPort + "4 service skipped: '65536/tcp'" + noPort +
                "5 service skipped: '1/'" + noPort + "6 service skipped: '+7/tcp'" + noPort);
}

TEST(Services, BecomeApplicationsAndEntries) {
  const std::vector<Service> services = {
      {"domain", 3, {53, 853}}, {std::string(40, 'n'), 4, {7}}, {std::string(300, 'n'), 5, {8}}};
  const std::string cut =
      "4 service-name '" + std::string(40, 'n') + "' is cut to '" + std::string(31, 'n') + "'\n";
  const std::string much = "5 service-name '" + std::string(80, 'n') + "...' is cut to '";
  OrvaneFindings findings;
  const OrvaneAppMapping applications = applicationsOf(services, 70, findings);
  EXPECT_EQ(show(findings), cut + much + std::string(31, 'n') + "'\n");
  std::string text;
  applications[0].appendSection(text, true);
  EXPECT_EQ(text,
            "PortRange=53,853\nIPv4=\nAction=1\nSelectorType=1\nUPID=70\nApplName=domain\n"
            "UniqueBlockNumber=4294967295\nSelectorTypeInfo=0\nGroupID=70\n;\n");
  EXPECT_EQ(applications[2].getUpid(), 72);

  const char* const before = OrvanePortMapping::PortArrayToString({1}).c_str();
  findings.clear();
  const OrvaneAppInfoArray catalogue = catalogueOf(services, 4294967292, findings);
  EXPECT_STREQ(before, "1");  // the texts of the process are left alone
  ASSERT_EQ(catalogue.size(), 3);
  EXPECT_EQ(catalogue.begin()[2].getUPID(), 4294967294);
  text.clear();
  catalogue.begin()[0].appendPorts(text);
  EXPECT_EQ(text, "53,853");
  EXPECT_EQ(show(findings).find(much + std::string(80, 'n')), 0);  // which have room for the other
}

}  // namespace
}  // namespace orvane::exchange
